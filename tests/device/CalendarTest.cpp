#include "device/Calendar.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <ctime>
#include <limits>

namespace inspector::device {
namespace {

TEST(CalendarTest, VariantTimesOfKnownMoments) {
  const std::tuple<CalendarTime, double, int> kCases[] = {
      {MakeCalendarTime(1899, 12, 30), 0, 6},        {MakeCalendarTime(1899, 12, 29), -1, 5},
      {MakeCalendarTime(1899, 12, 29, 6), -1.25, 5}, {MakeCalendarTime(2000, 2, 29, 18), 36585.75, 2},
      {MakeCalendarTime(100, 1, 1), -657434, 5},     {MakeCalendarTime(9999, 12, 31, 12), 2958465.5, 5}};
  for (const auto& [time, days, dayOfWeek] : kCases) {
    EXPECT_EQ(ToVariantTime(time), days) << ToIso(time);
    EXPECT_EQ(FromVariantTime(days), time) << days;
    EXPECT_EQ(time.dayOfWeek, dayOfWeek) << ToIso(time);
  }
}

TEST(CalendarTest, EveryDayOfTwoCenturiesComesBackToTheSecond) {
  constexpr std::chrono::sys_days kDayZero = std::chrono::year(1899) / 12 / 30;
  for (int number = 2; number < 201 * 365; ++number) {
    const std::chrono::year_month_day date = kDayZero + std::chrono::days(number);
    const int month = static_cast<int>(static_cast<unsigned>(date.month()));
    const int day = static_cast<int>(static_cast<unsigned>(date.day()));
    for (const int second : {0, 1, number * 7919 % 86400, 86399}) {
      const auto time = MakeCalendarTime(static_cast<int>(date.year()), month, day, second / 3600,
                                         second / 60 % 60, second % 60);
      ASSERT_TRUE(IsValid(time)) << ToIso(time);
      ASSERT_EQ(std::floor(ToVariantTime(time)), number) << ToIso(time);
      ASSERT_EQ(FromVariantTime(ToVariantTime(time)), time) << ToIso(time);
      ASSERT_EQ(FromIso(ToIso(time)), time);
      ASSERT_EQ(time.dayOfWeek, (number + 6) % 7) << ToIso(time);
    }
  }
  // Before day zero the fraction counts away from it.
  for (int second = 0; second < 2 * 86400; ++second) {
    const CalendarTime time =
        MakeCalendarTime(1899, 12, 28 + second / 86400, second / 3600 % 24, second / 60 % 60, second % 60);
    ASSERT_EQ(FromVariantTime(ToVariantTime(time)), time) << ToIso(time);
  }
}

TEST(CalendarTest, VariantTimesAreRoundedIntoTheNextDayAndRefusedOutsideTheCalendar) {
  EXPECT_EQ(FromVariantTime(36585.9999999), MakeCalendarTime(2000, 3, 1));
  EXPECT_EQ(FromVariantTime(-1.9999999), MakeCalendarTime(1899, 12, 30));
  EXPECT_EQ(FromVariantTime(-0.25), MakeCalendarTime(1899, 12, 30, 6));
  for (const double days : {-657435.0, 2958466.0, 2958465.9999999, 1e300, -1e300, std::nan(""),
                            std::numeric_limits<double>::infinity()}) {
    EXPECT_TRUE(FromVariantTime(days).IsZero()) << days;
  }
  EXPECT_EQ(ToVariantTime(CalendarTime()), 0);
  EXPECT_EQ(ToVariantTime(MakeCalendarTime(2026, 2, 30)), 0);
}

TEST(CalendarTest, IsoTextIsReadStrictly) {
  EXPECT_EQ(FromIso("2026-05-31T14:05:09"), MakeCalendarTime(2026, 5, 31, 14, 5, 9));
  EXPECT_EQ(FromIso("2026-05-31 14:05"), MakeCalendarTime(2026, 5, 31, 14, 5));
  EXPECT_EQ(FromIso("0100-01-01"), MakeCalendarTime(100, 1, 1));
  const TextView wrong =
      u";2026;2026-5-31;2026-05-31T;2026-05-31T14;2026-05-31T14:5;2026-05-31T14:05:;2026-05-31T14:05:09Z;"
      u"2026-05-31T14:05:09.5;2026-05-31x14:05; 2026-05-31;2026-05-31 ;2026-13-01;2026-00-01;2026-04-31;"
      u"2026-02-29;1900-02-29;2026-05-00;2026-05-31T24:00;2026-05-31T14:60;2026-05-31T14:05:60;"
      u"0099-12-31;-026-05-31;2026/05/31;2026-05-+1";
  for (const Text& each : Split(wrong, u';')) EXPECT_EQ(FromIso(ToUtf8(each)), std::nullopt) << ToUtf8(each);
  EXPECT_EQ(ToIso(MakeCalendarTime(987, 1, 2, 3, 4, 5)), "0987-01-02T03:04:05");
  EXPECT_EQ(ToIso(CalendarTime()), "");
  EXPECT_EQ(ToIso(MakeCalendarTime(2026, 1, 1, 24)), "");
}

TEST(CalendarTest, TheClockTellsLocalTime) {
  const auto local = [] {
    const std::time_t now = std::time(nullptr);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S %w", std::localtime(&now));
    return std::string(text);
  };
  const std::string before = local();
  const CalendarTime now = SystemClock().Now();
  const std::string told = ToIso(now) + " " + std::to_string(now.dayOfWeek);
  EXPECT_TRUE(before <= told && told <= local()) << told;
}

}  // namespace
}  // namespace inspector::device
