// What a person of the office enters: fields by their names, and whether a device can be sent the values.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "server/Storage.h"

namespace inspector::server {

// What a terminal would obey, line ends and tabs among them.
inline bool IsControl(char16_t unit) {
  return unit < u' ' || (unit >= 0x7F && unit < 0xA0);
}

// "InspectionNum", the other names of columns, and the shorter names that the device's own command line has
// ("number", "client"), without regard to case. In the order of OfficeInspection, then the date and the type.
enum class FieldKind { OfText, OfDate, OfType };
struct Field {
  FieldKind kind;
  std::size_t text = 0;  // index into OfficeInspection::texts
};
// Sets `problem` when there is none of that name, with what there is.
std::optional<Field> FindField(std::string_view name, std::string& problem);

// Takes a value into a change. Why it cannot be taken, in a sentence; empty when it was. A date is
// 2026-05-31 or 5/31/2026.
std::string Enter(Change& change, const Field& field, std::string_view utf8);

// Each word is FIELD=VALUE, or a number alone, which is InspectionNum. Problems are sentences, one for each
// word.
Change ReadChange(const std::vector<std::string>& words, std::vector<std::string>& problems);

}  // namespace inspector::server
