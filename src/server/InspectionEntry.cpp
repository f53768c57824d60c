#include "server/InspectionEntry.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

#include "device/CodePage.h"

namespace inspector::server {
namespace {

constexpr std::size_t kGeneralInformation = 5;

// Short names, in the order of kTextNames.
constexpr std::array<std::string_view, kTexts> kShortNames = {
    "number",       "address", "client",       "clientaddress", "clientcitystatezip", "general", "doctype",
    "citystatezip", "agent",   "listingagent", "company"};
// Columns of the device that are none of the office's.
constexpr std::array<std::string_view, 8> kAtHome = {"InspectionID", "Reserve8", "Reserve9",     "Reserve10",
                                                     "ClientPhone",  "phone",    "PrivateNotes", "notes"};

bool IsName(std::string_view typed, std::string_view name) {
  return device::EqualIgnoringCase(device::FromUtf8(typed), device::FromUtf8(name));
}

std::string InHexadecimal(char16_t unit) {
  std::array<char, 8> digits{};
  std::snprintf(digits.data(), digits.size(), "U+%04X", static_cast<unsigned>(unit));
  return digits.data();
}

std::string WhyNotSent(TextView text, bool mayHaveLines) {
  const auto isControl = [mayHaveLines](char16_t unit) {
    if (mayHaveLines && (unit == u'\r' || unit == u'\n' || unit == u'\t')) return false;
    return IsControl(unit);
  };
  const auto control = std::find_if(text.begin(), text.end(), isControl);
  if (control != text.end()) return "has the control character " + InHexadecimal(*control) + ".";
  const auto strange = std::find_if(text.begin(), text.end(), [](char16_t unit) {
    return !device::FitsCodePage({&unit, 1});
  });
  if (strange != text.end()) {
    const auto at = static_cast<std::size_t>(strange - text.begin());
    return "has a character that devices cannot show: " +
           device::ToUtf8(text.substr(at, device::IsHighSurrogate(*strange) ? 2 : 1)) + ".";
  }
  if (text.size() > protocol::kMaxValueBytes)
    return "has " + std::to_string(text.size()) + " characters; " + std::to_string(protocol::kMaxValueBytes) +
           " can be sent.";
  return {};
}

std::optional<device::CalendarTime> ReadDay(TextView typed) {
  if (const auto day = protocol::DateFromWire(typed)) return day;
  const auto time = device::FromIso(device::ToUtf8(typed));
  if (!time) return std::nullopt;
  return device::MakeCalendarTime(time->year, time->month, time->day);
}

}  // namespace

std::optional<Field> FindField(std::string_view name, std::string& problem) {
  for (std::size_t at = 0; at < kTexts; ++at)
    if (IsName(name, kTextNames[at]) || IsName(name, kShortNames[at])) return Field{FieldKind::OfText, at};
  if (IsName(name, kDateName) || IsName(name, "date")) return Field{FieldKind::OfDate};
  if (IsName(name, kTypeName) || IsName(name, "type")) return Field{FieldKind::OfType};
  if (std::any_of(kAtHome.begin(), kAtHome.end(),
                  [name](std::string_view known) { return IsName(name, known); })) {
    problem = std::string(name) + " does not travel between office and device.";
    return std::nullopt;
  }
  problem = "There is no field \"" + std::string(name) + "\". There are";
  for (const std::string_view known : kTextNames) problem += " " + std::string(known);
  problem += " " + std::string(kDateName) + " " + std::string(kTypeName) + ".";
  return std::nullopt;
}

std::string Enter(Change& change, const Field& field, std::string_view utf8) {
  const Text text = device::FromUtf8(utf8);
  if (field.kind == FieldKind::OfDate) {
    change.day = ReadDay(text);
    return change.day ? ""
                      : std::string(kDateName) + ": \"" + std::string(utf8) +
                            "\" is no date; 2026-05-31 and 5/31/2026 are.";
  }
  if (field.kind == FieldKind::OfType) {
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(utf8.data(), utf8.data() + utf8.size(), number);
    if (error != std::errc() || end != utf8.data() + utf8.size())
      return std::string(kTypeName) + ": \"" + std::string(utf8) + "\" is no number.";
    change.type = number;
    return {};
  }
  const std::string why = WhyNotSent(text, field.text == kGeneralInformation);
  if (!why.empty()) return std::string(kTextNames[field.text]) + " " + why;
  if (field.text == 0)
    change.number = text;
  else
    change.texts[field.text] = text;
  return {};
}

Change ReadChange(const std::vector<std::string>& words, std::vector<std::string>& problems) {
  Change change;
  for (const std::string& word : words) {
    const std::size_t equals = word.find('=');
    const bool isNumber = equals == std::string::npos;
    std::string problem;
    const auto field =
        FindField(isNumber ? kTextNames[0] : std::string_view(word).substr(0, equals), problem);
    if (field) problem = Enter(change, *field, isNumber ? word : word.substr(equals + 1));
    if (!problem.empty()) problems.push_back(problem);
  }
  return change;
}

}  // namespace inspector::server
