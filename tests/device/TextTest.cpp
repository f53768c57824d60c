#include "device/Text.h"

#include <gtest/gtest.h>

#include <limits>

namespace inspector::device {
namespace {

// Converts `bytes` behind and before runs of ASCII of every length, so that each of them meets every position
// within the blocks that the conversion takes at once.
void ExpectDecoded(std::string_view bytes, TextView expected) {
  for (std::size_t before = 0; before <= 17; ++before) {
    for (std::size_t after = 0; after <= 17; ++after) {
      const std::string input = std::string(before, 'x').append(bytes).append(after, 'y');
      const Text wanted = Text(before, u'x').append(expected).append(after, u'y');
      ASSERT_EQ(FromUtf8(input), wanted) << before << " before, " << after << " after";
    }
  }
}

TEST(TextTest, EveryCharacterSurvivesTheWayToUtf8AndBack) {
  Text units;
  for (char32_t point = 0; point <= 0x10FFFF; point += point < 0x3000 || point > 0xD000 ? 1 : 7) {
    if (point >= 0x10000) {
      units.push_back(static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10)));
      units.push_back(static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF)));
    } else if (point < 0xD800 || point > 0xDFFF) {
      units.push_back(static_cast<char16_t>(point));
    }
  }
  EXPECT_TRUE(FromUtf8(ToUtf8(units)) == units);
  EXPECT_EQ(ToUtf8(u"a\u00E9\u20AC\U0001F3E0z"), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8F\xA0z");
  ExpectDecoded("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8F\xA0", u"\u00E9\u20AC\U0001F3E0");
  EXPECT_EQ(FromUtf8(std::string_view("a\0b", 3)), Text(u"a\0b", 3));
}

TEST(TextTest, BytesThatAreNoUtf8BecomeReplacementCharacters) {
  const auto replaced = [](std::size_t count) { return Text(count, u'\uFFFD'); };
  // Overlong forms, surrogates, beyond the last character: no byte of them could begin a character.
  ExpectDecoded("\xC0\xAF\xE0\x80\xBF\xF0\x81\x82", replaced(8));
  ExpectDecoded("\xED\xA0\x80\xED\xBF\xBF\xED\xAF", replaced(8));
  ExpectDecoded("\xF4\x91\x92\x93\xFF", replaced(5));
  ExpectDecoded("\xC1\x81\xF5\xF8\x88", replaced(5));
  // Sequences that break off, by another character or by the end.
  ExpectDecoded("\xE1\x80\xE2\xF0\x91\x92\xF1\xBF", replaced(4));
  ExpectDecoded("\xF1\x80\x80\xE1\x80\xC2", replaced(3));
  ExpectDecoded("\xF0\x9F\x8F", replaced(1));
  ExpectDecoded("\x80\xBF", replaced(2));
  ExpectDecoded("\xC3Z\xE2\x82Z", u"\uFFFDZ\uFFFDZ");
}

TEST(TextTest, LoneSurrogatesBecomeReplacementCharacters) {
  const char16_t high = 0xD83C;
  const char16_t low = 0xDFE0;
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(ToUtf8(Text{high}), replacement);
  EXPECT_EQ(ToUtf8(TextView(u"\U0001F3E0").substr(0, 1)), replacement);  // what follows is not part of it
  EXPECT_EQ(ToUtf8(Text{low, u'a'}), replacement + "a");
  EXPECT_EQ(ToUtf8(Text{low, high}), replacement + replacement);
  EXPECT_EQ(ToUtf8(Text{high, high, low}), replacement + "\xF0\x9F\x8F\xA0");
  EXPECT_EQ(ToUtf8(Text{u'a', high} + u"bcdefghi"), "a" + replacement + "bcdefghi");
}

TEST(TextTest, CaseIsFoldedInTheAlphabetsOfToday) {
  EXPECT_TRUE(EqualIgnoringCase(u"4 COLUMN", u"4 Column"));
  EXPECT_TRUE(EqualIgnoringCase(u"ÀÉÎÕÖØÞŸ ĀĮĲĹŇŊŶŹŽ ƠƯǍȘȚẔẠỸ", u"àéîõöøþÿ āįĳĺňŋŷźž ơưǎșțẕạỹ"));
  EXPECT_TRUE(EqualIgnoringCase(u"ΆΈΊΌΎΏΑΡΣΫ", u"άέίόύώαρσϋ"));
  EXPECT_TRUE(EqualIgnoringCase(u"ΟΙΚΟΣ", u"οικος"));
  EXPECT_TRUE(EqualIgnoringCase(u"ЀЏАЯѠҀҊҾӀӁӍӐԮ", u"ѐџаяѡҁҋҿӏӂӎӑԯ"));
  for (const TextView pair : {u"×÷", u"ßs", u"İi", u"ıi", u"@`", u"[{", u"ŁL"})
    EXPECT_FALSE(EqualIgnoringCase(pair.substr(0, 1), pair.substr(1))) << ToUtf8(pair);
  EXPECT_FALSE(EqualIgnoringCase(u"ab", u"abc"));
  for (int unit = 0; unit <= 0xFFFF; ++unit) {
    const char16_t folded = FoldCase(static_cast<char16_t>(unit));
    ASSERT_EQ(FoldCase(folded), folded) << unit;
  }
}

TEST(TextTest, LeadingIntegerReadsWhatStandsInFront) {
  for (const auto* const none : {u"", u"- 3", u"--3", u"x1", u"\u00A05", u"\uFF11"})
    EXPECT_EQ(LeadingInteger(none), 0) << ToUtf8(none);
  for (const auto* const twelve : {u"12", u" \t\r\n12b", u"+12", u"0012;", u"12.9"})
    EXPECT_EQ(LeadingInteger(twelve), 12) << ToUtf8(twelve);
  for (const auto* const large : {u"2147483648", u"99999999999999999999999999"})
    EXPECT_EQ(LeadingInteger(large), std::numeric_limits<int>::max()) << ToUtf8(large);
  EXPECT_EQ(LeadingInteger(u"-2147483649"), std::numeric_limits<int>::min());
  EXPECT_EQ(LeadingInteger(u"-7b"), -7);
  for (const int value : {0, -1, 1000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
    EXPECT_EQ(LeadingInteger(Decimal(value)), value);
}

TEST(TextTest, TextsAreTakenApartAndReplaced) {
  const Text house = u"a\U0001F3E0b";  // two units between two letters
  EXPECT_EQ(Shortened(house, 4), house);
  EXPECT_EQ(Shortened(house, 3), house.substr(0, 3));
  EXPECT_EQ(Shortened(house, 2), u"a") << "no half of a character";
  EXPECT_EQ(Shortened(house, 0), u"");
  EXPECT_EQ(Split(u"a;b;", u';'), (std::vector<Text>{u"a", u"b", u""}));
  EXPECT_EQ(Split(u"", u';'), (std::vector<Text>{u""}));
  EXPECT_EQ(ReplaceAll(u"a<p>b<p>", u"<p>", u"<p><p>"), u"a<p><p>b<p><p>");
  EXPECT_EQ(ReplaceAll(u"aaa", u"aa", u"a"), u"aa");
  EXPECT_EQ(ReplaceAll(u"abc", u"", u"x"), u"abc");
  EXPECT_TRUE(Contains(u"roof", u"") && Contains(u"roof", u"of"));
  EXPECT_FALSE(Contains(u"roof", u"off"));
  EXPECT_EQ(StripLeadingControls(u"\r\n\t Good\r\n"), u" Good\r\n");
  EXPECT_EQ(StripLeadingControls(u"\x1F"), u"");
}

}  // namespace
}  // namespace inspector::device
