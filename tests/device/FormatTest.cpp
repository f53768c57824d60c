#include "device/Format.h"

#include <gtest/gtest.h>

#include <limits>

namespace inspector::device {
namespace {

TEST(FormatTest, FillsNumbersTextsAndCharacters) {
  EXPECT_EQ(Format(u"%d-%d", 17, -4), u"17--4");
  EXPECT_EQ(Format(u"%d", std::numeric_limits<std::int64_t>::min()), u"-9223372036854775808");
  EXPECT_EQ(Format(u"%s. %s", Text(u"2"), u"Roof \u00E9"), u"2. Roof \u00E9");
  EXPECT_EQ(Format(u"%c%c", u'A', 0x20AC), u"A\u20AC");
  EXPECT_EQ(Format(u"\\'%02x%02x%02x", 0xE9, 7, 0x1AB), u"\\'e9071ab");
  EXPECT_EQ(Format(u"100%% of %d% %", 3), u"100% of 3% %");
  EXPECT_EQ(Format(u"%s", TextView(u"%d %s")), u"%d %s");
}

TEST(FormatTest, AValueBetweenQuotesCannotEndItsStatement) {
  const Text value = u"2\" pipe; \"x\"";
  EXPECT_EQ(Format(u"SELECT * FROM %s WHERE Title = \"%s\" AND ID = %d", u"Step", value, 7),
            u"SELECT * FROM Step WHERE Title = \"2\"\" pipe; \"\"x\"\"\" AND ID = 7");
  // Only directly between two double quotes.
  EXPECT_EQ(Format(u"'%s' \"%s ", value, value), u"'" + value + u"' \"" + value + u" ");
  EXPECT_EQ(Format(u"%s\"", value), value + u"\"");
}

TEST(FormatTest, AMissingOrWrongArgumentIsLoudInDebugBuildsAndWritesNothing) {
  EXPECT_DEBUG_DEATH(EXPECT_EQ(Format(u"[%d]"), u"[]"), "Format");
  EXPECT_DEBUG_DEATH(EXPECT_EQ(Format(u"[%s]", 5), u"[]"), "Format");
  EXPECT_DEBUG_DEATH(EXPECT_EQ(Format(u"[%d|%d]", u"x", 6), u"[|6]"), "Format");
}

}  // namespace
}  // namespace inspector::device
