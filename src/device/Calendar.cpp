#include "device/Calendar.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <ctime>

#include "device/Format.h"

namespace inspector::device {
namespace {

constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;
constexpr std::int64_t kSecondsPerDay = 86400;

bool IsLeapYear(int year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int DaysInMonth(int year, int month) {
  constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && IsLeapYear(year) ? 29 : kDays[static_cast<std::size_t>(month - 1)];
}

// Days before January 1st of `year`, counted from year 1 of the Gregorian calendar carried backwards.
constexpr int DaysBeforeYear(int year) {
  const int past = year - 1;
  return past * 365 + past / 4 - past / 100 + past / 400;
}

// 1899-12-30, two days before the year ends.
constexpr int kDayZero = DaysBeforeYear(1900) - 2;

int DayNumber(int year, int month, int day) {
  int days = DaysBeforeYear(year) - kDayZero + day - 1;
  for (int earlier = 1; earlier < month; ++earlier) days += DaysInMonth(year, earlier);
  return days;
}

// 1899-12-30 was a Saturday.
int DayOfWeek(int dayNumber) {
  return ((dayNumber + 6) % 7 + 7) % 7;
}

bool IsDate(int year, int month, int day) {
  return year >= kFirstYear && year <= kLastYear && month >= 1 && month <= 12 && day >= 1 &&
         day <= DaysInMonth(year, month);
}

// Exactly `count` digits at the front of `text`, which are taken off; -1 when they are not there.
int TakeDigits(std::string_view& text, std::size_t count) {
  if (text.size() < count) return -1;
  int value = 0;
  for (const char digit : text.substr(0, count)) {
    if (digit < '0' || digit > '9') return -1;
    value = value * 10 + (digit - '0');
  }
  text.remove_prefix(count);
  return value;
}

bool TakeOneOf(std::string_view& text, std::string_view characters) {
  if (text.empty() || characters.find(text.front()) == std::string_view::npos) return false;
  text.remove_prefix(1);
  return true;
}

}  // namespace

bool IsValid(const CalendarTime& time) {
  return IsDate(time.year, time.month, time.day) && time.hour >= 0 && time.hour < 24 && time.minute >= 0 &&
         time.minute < 60 && time.second >= 0 && time.second < 60 && time.milliseconds >= 0 &&
         time.milliseconds < 1000;
}

CalendarTime MakeCalendarTime(int year, int month, int day, int hour, int minute, int second) {
  CalendarTime time;
  time.year = year;
  time.month = month;
  time.day = day;
  time.hour = hour;
  time.minute = minute;
  time.second = second;
  if (IsDate(year, month, day)) time.dayOfWeek = DayOfWeek(DayNumber(year, month, day));
  return time;
}

double ToVariantTime(const CalendarTime& time) {
  if (!IsValid(time)) return 0;
  const int days = DayNumber(time.year, time.month, time.day);
  const double timeOfDay =
      (time.hour * 3600 + time.minute * 60 + time.second) / static_cast<double>(kSecondsPerDay);
  return days < 0 ? days - timeOfDay : days + timeOfDay;
}

CalendarTime FromVariantTime(double days) {
  constexpr double kBeyond = 3000000;  // past the last year either way; NaN fails the comparison as well
  if (!(std::abs(days) < kBeyond)) return {};
  double wholeDays = 0;
  const double timeOfDay = std::abs(std::modf(days, &wholeDays));
  const std::int64_t seconds =
      static_cast<std::int64_t>(wholeDays) * kSecondsPerDay +
      static_cast<std::int64_t>(std::llround(timeOfDay * static_cast<double>(kSecondsPerDay)));
  // Rounding may have carried into the next day, so day and time are taken from the seconds again.
  const std::int64_t second = ((seconds % kSecondsPerDay) + kSecondsPerDay) % kSecondsPerDay;
  const int dayNumber = static_cast<int>((seconds - second) / kSecondsPerDay);
  if (dayNumber < DayNumber(kFirstYear, 1, 1) || dayNumber > DayNumber(kLastYear, 12, 31)) return {};

  constexpr int kDaysIn400Years = DaysBeforeYear(401);
  int year = static_cast<int>((dayNumber + kDayZero) * std::int64_t{400} / kDaysIn400Years) + 1;
  while (DayNumber(year, 1, 1) > dayNumber) --year;
  while (DayNumber(year + 1, 1, 1) <= dayNumber) ++year;
  int month = 1;
  int day = dayNumber - DayNumber(year, 1, 1) + 1;
  for (; day > DaysInMonth(year, month); ++month) day -= DaysInMonth(year, month);
  const int ofDay = static_cast<int>(second);
  return MakeCalendarTime(year, month, day, ofDay / 3600, ofDay / 60 % 60, ofDay % 60);
}

std::string ToIso(const CalendarTime& time) {
  if (!IsValid(time)) return {};
  char text[32];
  const int length = std::snprintf(text, sizeof(text), "%04d-%02d-%02dT%02d:%02d:%02d", time.year, time.month,
                                   time.day, time.hour, time.minute, time.second);
  return std::string(text, static_cast<std::size_t>(length));
}

std::optional<CalendarTime> FromIso(std::string_view text) {
  const int year = TakeDigits(text, 4);
  if (!TakeOneOf(text, "-")) return std::nullopt;
  const int month = TakeDigits(text, 2);
  if (!TakeOneOf(text, "-")) return std::nullopt;
  const int day = TakeDigits(text, 2);
  int hour = 0;
  int minute = 0;
  int second = 0;
  if (!text.empty()) {
    if (!TakeOneOf(text, "T ")) return std::nullopt;
    hour = TakeDigits(text, 2);
    if (!TakeOneOf(text, ":")) return std::nullopt;
    minute = TakeDigits(text, 2);
    if (!text.empty()) {
      if (!TakeOneOf(text, ":")) return std::nullopt;
      second = TakeDigits(text, 2);
    }
  }
  const CalendarTime time = MakeCalendarTime(year, month, day, hour, minute, second);
  if (!text.empty() || !IsValid(time)) return std::nullopt;
  return time;
}

Text FormatDate(const CalendarTime& time) {
  return time.IsZero() ? Text() : Format(u"%d/%d/%d", time.month, time.day, time.year);
}

Text FormatTime(const CalendarTime& time) {
  return time.IsZero() ? Text() : Format(u"%d:%d", time.hour, time.minute);
}

CalendarTime SystemClock::Now() {
  const auto now = std::chrono::system_clock::now();
  const auto seconds = std::chrono::floor<std::chrono::seconds>(now);
  const std::time_t stamp = std::chrono::system_clock::to_time_t(seconds);
  std::tm local{};
  if (localtime_r(&stamp, &local) == nullptr) return {};
  CalendarTime time = MakeCalendarTime(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                                       local.tm_min, local.tm_sec);
  if (time.second > 59) time.second = 59;  // a leap second
  time.milliseconds =
      static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(now - seconds).count());
  return time;
}

}  // namespace inspector::device
