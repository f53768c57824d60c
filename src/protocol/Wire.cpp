#include "protocol/Wire.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "device/CodePage.h"

namespace inspector::protocol {
namespace {

constexpr std::array<std::string_view, 3> kPeriods = {"today", "week", "all"};

// A number in front of `rest`, which is left behind it; -1 when there is none or it is longer than any
// date's.
int TakeNumber(TextView& rest) {
  int value = 0;
  std::size_t digits = 0;
  for (; digits < rest.size() && rest[digits] >= u'0' && rest[digits] <= u'9'; ++digits) {
    if (digits == 4) return -1;
    value = value * 10 + (rest[digits] - u'0');
  }
  rest.remove_prefix(digits);
  return digits > 0 ? value : -1;
}

bool TakeSlash(TextView& rest) {
  if (!rest.starts_with(u'/')) return false;
  rest.remove_prefix(1);
  return true;
}

}  // namespace

std::string_view NameOf(Period period) {
  return kPeriods[static_cast<std::size_t>(period)];
}

std::optional<Period> PeriodOf(std::string_view name) {
  const auto found = std::find(kPeriods.begin(), kPeriods.end(), name);
  if (found == kPeriods.end()) return std::nullopt;
  return static_cast<Period>(found - kPeriods.begin());
}

std::string ToWire(TextView text) {
  return device::ToCodePage(text);
}

Text FromWire(std::string_view reply) {
  if (reply.size() == 1 && reply.front() == kEot) return {};
  return device::FromCodePage(reply);
}

std::string Terminated(std::string_view value) {
  return std::string(value) + kEot;
}

std::string Reply(std::string_view value) {
  return value.empty() ? std::string(1, kEot) : std::string(value);
}

std::array<char, 4> Int32ToWire(std::int32_t value) {
  const auto bits = static_cast<std::uint32_t>(value);
  std::array<char, 4> bytes{};
  for (std::size_t at = 0; at < bytes.size(); ++at) bytes[at] = static_cast<char>(bits >> (8 * at) & 0xFF);
  return bytes;
}

std::int32_t Int32FromWire(const std::array<char, 4>& bytes) {
  std::uint32_t bits = 0;
  for (std::size_t at = bytes.size(); at-- > 0;) bits = bits << 8 | static_cast<unsigned char>(bytes[at]);
  return static_cast<std::int32_t>(bits);
}

std::string CountReply(int count) {
  return std::string(kCount) + ' ' + std::to_string(count) + kEndOfCommand;
}

std::optional<int> CountOf(std::string_view reply) {
  if (!reply.starts_with(kCount)) return std::nullopt;
  reply.remove_prefix(std::min(reply.size(), kCount.size() + 1));
  if (reply.empty() || reply.front() < '0' || reply.front() > '9') return 0;  // "-1" is no count either
  int count = 0;
  const auto [end, error] = std::from_chars(reply.data(), reply.data() + reply.size(), count);
  return error == std::errc::result_out_of_range ? std::numeric_limits<int>::max() : count;
}

std::string DateToWire(const device::CalendarTime& date) {
  return ToWire(device::FormatDate(date));
}

std::optional<device::CalendarTime> DateFromWire(TextView text) {
  while (!text.empty() && text.front() <= u' ') text.remove_prefix(1);
  const int month = TakeNumber(text);
  if (!TakeSlash(text)) return std::nullopt;
  const int day = TakeNumber(text);
  if (!TakeSlash(text)) return std::nullopt;
  const int year = TakeNumber(text);
  if (!text.empty() && text.front() > u' ') return std::nullopt;
  if (year < 0 || month < 1 || month > 12 || day < 1) return std::nullopt;
  const device::CalendarTime date = device::MakeCalendarTime(year, month, day);
  if (!device::IsValid(date)) return std::nullopt;
  return date;
}

}  // namespace inspector::protocol
