#include "server/Periods.h"

namespace inspector::server {
namespace {

constexpr int kDaysOfWeek = 7;

}  // namespace

std::optional<DayRange> DaysOf(protocol::Period period, const device::CalendarTime& today) {
  const device::CalendarTime day = device::MakeCalendarTime(today.year, today.month, today.day);
  switch (period) {
    case protocol::Period::Today:
      return DayRange{day, day};
    case protocol::Period::Week: {
      const int sinceMonday = (day.dayOfWeek + kDaysOfWeek - 1) % kDaysOfWeek;
      const double monday = device::ToVariantTime(day) - sinceMonday;
      return DayRange{device::FromVariantTime(monday), device::FromVariantTime(monday + kDaysOfWeek - 1)};
    }
    case protocol::Period::All:
      break;
  }
  return std::nullopt;
}

}  // namespace inspector::server
