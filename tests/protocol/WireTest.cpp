#include "protocol/Wire.h"

#include <gtest/gtest.h>

#include <limits>

namespace inspector::protocol {
namespace {

using namespace std::string_view_literals;

TEST(WireTest, TextsTravelAsOneByteForEachUnit) {
  EXPECT_EQ(ToWire(u"Zo\u00EB \u20AC5"),
            "Zo\xEB \x80"
            "5");
  EXPECT_EQ(FromWire("Zo\xEB \x80"
                     "5"),
            u"Zo\u00EB \u20AC5");
  EXPECT_EQ(ToWire(u"\u0142"), "?");
  EXPECT_EQ(FromWire("\x04"), u"");
  EXPECT_EQ(FromWire("a\x04"), u"a\x04") << "only EOT alone stands for nothing";
  EXPECT_EQ(FromWire("CNFM\r"), u"CNFM\r");
  EXPECT_EQ(Terminated(""), "\x04");
  EXPECT_EQ(Reply(""), "\x04");
  EXPECT_EQ(Reply("12 Elm Street"), "12 Elm Street");
}

TEST(WireTest, NumbersAreLittleEndian) {
  EXPECT_EQ(Int32ToWire(0x01020304), (std::array<char, 4>{4, 3, 2, 1}));
  for (const std::int32_t value : {0, -1, 1003, std::numeric_limits<std::int32_t>::min()})
    EXPECT_EQ(Int32FromWire(Int32ToWire(value)), value);
}

TEST(WireTest, CountsAreTheLeadingDigitsBehindOneSeparator) {
  const std::pair<std::string_view, std::optional<int>> cases[] = {
      {"CONT 3\r", 3},  {"CONT 0\r", 0},  {"CONT\t12 rows", 12},
      {"CONTx7", 7},    {"CONT", 0},      {"CONT ", 0},
      {"CONT abc", 0},  {"CONT -4\r", 0}, {"CONT 99999999999\r", std::numeric_limits<int>::max()},
      {"cont 3\r", {}}, {"CON", {}},      {"", {}},
  };
  for (const auto& [reply, count] : cases) EXPECT_EQ(CountOf(reply), count) << reply;
  EXPECT_EQ(CountReply(20), "CONT 20\r");
}

TEST(WireTest, DatesAreDaysOfTheCalendar) {
  for (const TextView text : {u"5/31/2026", u" 05/31/2026\r", u"5/31/2026 14:05"})
    EXPECT_EQ(DateFromWire(text), device::MakeCalendarTime(2026, 5, 31));
  for (const TextView text :
       {u"", u"5/32/2026", u"2/29/2027", u"13/1/2026", u"5/31/26", u"5/31", u"5-31-2026", u"5/31/20266",
        u"5/31/2026x", u"0/1/2026", u"5//2026", u"-5/1/2026"})
    EXPECT_FALSE(DateFromWire(text)) << device::ToUtf8(text);
  EXPECT_EQ(DateToWire(device::MakeCalendarTime(2026, 5, 31, 14, 5)), "5/31/2026");
  EXPECT_EQ(DateToWire({}), "");
}

TEST(WireTest, PeriodsHaveTheNumbersOfTheirModes) {
  for (const auto& [period, name] :
       {std::pair{Period::Today, "today"sv}, {Period::Week, "week"sv}, {Period::All, "all"sv}}) {
    EXPECT_EQ(NameOf(period), name);
    EXPECT_EQ(PeriodOf(name), period);
  }
  EXPECT_FALSE(PeriodOf("Today"));
}

}  // namespace
}  // namespace inspector::protocol
