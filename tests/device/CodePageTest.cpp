#include "device/CodePage.h"

#include <gtest/gtest.h>

namespace inspector::device {
namespace {

TEST(CodePageTest, EveryByteHasOneCharacterAndComesBack) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.push_back(static_cast<char>(byte));
  const Text text = FromCodePage(bytes);
  EXPECT_EQ(ToCodePage(text), bytes);
  EXPECT_TRUE(FitsCodePage(text));
  EXPECT_EQ(
      text.substr(0x80, 0x20),
      u"\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u008D\u017D\u008F"
      u"\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u009D\u017E\u0178");
  for (std::size_t unit = 0; unit < 256; unit += unit == 0x7F ? 0x21 : 1) EXPECT_EQ(text[unit], unit);
}

TEST(CodePageTest, WhatItLacksIsOneQuestionMarkPerUnit) {
  int lacking = 0;
  for (int unit = 0; unit <= 0xFFFF; ++unit) {
    const Text text(1, static_cast<char16_t>(unit));
    lacking += !FitsCodePage(text);
    ASSERT_EQ(FitsCodePage(text), FromCodePage(ToCodePage(text)) == text) << unit;
  }
  EXPECT_EQ(lacking, 65536 - 256);
  EXPECT_EQ(ToCodePage(u"\U0001F3E0 \u0080\u0142"), "?? ??");

  // At every position within the blocks that are converted at once.
  for (std::size_t before = 0; before <= 17; ++before) {
    const std::size_t after = 17 - before;
    for (const auto& [unit, byte] : {std::pair{u'\u00E9', '\xE9'}, {u'\u2019', '\x92'}, {u'\u0080', '?'}}) {
      std::string out(1, '{');
      AppendCodePage(out, Text(before, u'x') + unit + Text(after, u'y'));
      EXPECT_EQ(out, std::string(1, '{').append(before, 'x').append(1, byte).append(after, 'y'));
    }
  }
}

}  // namespace
}  // namespace inspector::device
