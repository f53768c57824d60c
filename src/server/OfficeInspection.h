// An inspection as the office keeps it: what travels of the device's row, and nothing else.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "protocol/Wire.h"

namespace inspector::server {

using device::Text;
using device::TextView;

// The number and the ten texts, in the order in which a device sends them (protocol::kSentOrdinals).
inline constexpr std::size_t kTexts = protocol::kSentOrdinals.size();
using InspectionTexts = std::array<Text, kTexts>;

// Their names, which are those of the table's columns, in the same order.
inline constexpr std::array<std::string_view, kTexts> kTextNames = {
    "InspectionNum",      "DwellingAddress",    "ClientName",       "ClientAddress",
    "ClientCityStateZip", "GeneralInformation", "DocType",          "CityStateZip",
    "ClientAgent",        "ListingAgent",       "RealEstateCompany"};
inline constexpr std::string_view kDateName = "InspectionDate";
inline constexpr std::string_view kTypeName = "InspectionTypeID";

inline constexpr std::int32_t kNoType = -1;

struct OfficeInspection {
  const Text& Number() const { return texts[0]; }
  // Of a column that travels as text.
  const Text& OfOrdinal(int ordinal) const;
  bool operator==(const OfficeInspection&) const = default;

  InspectionTexts texts;
  device::CalendarTime day;  // at 0:00
  std::int32_t type = kNoType;
};

// A reply to each question about an inspection: the number, then the twelve columns as they are asked for.
using InspectionReplies = std::array<std::string, 1 + protocol::kReceivedOrdinals.size()>;
InspectionReplies RepliesOf(const OfficeInspection& inspection);

}  // namespace inspector::server
