// One column of a table class: where it stands in the row and which member it is bound to.
#pragma once

#include <cstdint>
#include <variant>
#include <vector>

#include "data/TableLayout.h"
#include "device/Calendar.h"
#include "device/Text.h"

namespace inspector::data {

using ByteArray = std::vector<std::uint8_t>;

// Integers and yes/no are 32-bit (yes/no 0 or -1); a zero date stands for none.
using BoundMember = std::variant<std::int32_t*, double*, device::CalendarTime*, Text*, ByteArray*>;

struct ColumnDef {
  int ordinal = 0;
  ValueType type = ValueType::Integer;
  BoundMember member;
  Text sqlType;  // both empty for a positional column
  Text sqlName;
};

}  // namespace inspector::data
