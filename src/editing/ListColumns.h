// The columns of the lists, and which of them a finger meets.
#pragma once

#include <span>

#include "device/Text.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

struct ListColumn {
  TextView heading;
  int width = 0;  // of a screen that is 240 wide; a screen scales all columns of a list alike
};

// The first column at which the widths, added from the left, reach `x`, a distance from the left edge in the
// same unit. -1 to the right of all.
int ColumnAt(std::span<const ListColumn> columns, int x);

}  // namespace inspector::editing
