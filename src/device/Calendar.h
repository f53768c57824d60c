// Calendar date-times with their seven fields, the variant date of older files, and ISO 8601 text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "device/Text.h"

namespace inspector::device {

struct CalendarTime {
  int year = 0;       // 100 to 9999; 0 in the zero date
  int month = 0;      // 1 to 12
  int dayOfWeek = 0;  // 0 = Sunday
  int day = 0;        // 1 to 31
  int hour = 0;
  int minute = 0;
  int second = 0;
  int milliseconds = 0;

  bool IsZero() const { return year == 0; }
  bool operator==(const CalendarTime&) const = default;
};

// A day of the Gregorian calendar (carried back to the year 100) with a time of day. The day of the week is
// not looked at; the zero date is not valid.
bool IsValid(const CalendarTime& time);
// Fills dayOfWeek from the date.
CalendarTime MakeCalendarTime(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);

// Days since 1899-12-30, the fraction being the time of day (negative days count the fraction upwards too:
// -1.25 is six in the morning of 1899-12-29). To the second: milliseconds are dropped on the way there, the
// nearest second is taken on the way back. What is not valid is written as 0; what lies outside the years
// above is read as the zero date.
double ToVariantTime(const CalendarTime& time);
CalendarTime FromVariantTime(double days);

// "2026-05-31T14:05:00", empty for what is not valid (the zero date among them). Reading takes a blank or T,
// lets the seconds or the whole time be left out, and refuses anything that is no calendar date.
std::string ToIso(const CalendarTime& time);
std::optional<CalendarTime> FromIso(std::string_view text);

// "%d/%d/%d" (month/day/year) and "%d:%d" without leading zeros; a zero date is an empty text in both.
Text FormatDate(const CalendarTime& time);
Text FormatTime(const CalendarTime& time);

class Clock {
public:
  virtual ~Clock() = default;
  virtual CalendarTime Now() = 0;  // local time
};

class SystemClock : public Clock {
public:
  CalendarTime Now() override;
};

}  // namespace inspector::device
