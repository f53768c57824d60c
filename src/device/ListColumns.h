// The columns of a list, whose widths were drawn for a screen 240 units wide.
#pragma once

#include <span>
#include <vector>

#include "device/Text.h"

namespace inspector::device {

inline constexpr int kDrawnScreenWidth = 240;
// In logical pixels: what a finger hits without aiming.
inline constexpr int kSmallestTarget = 48;

struct ListColumn {
  enum class Align { Left, Centre };

  Text heading;
  int units = 0;  // of a screen of kDrawnScreenWidth
  Align align = Align::Left;
  bool isMark = false;  // holds a check image, and a finger must hit it
};

// The widths in logical pixels that fill `available`. A mark column keeps to its drawn share, but is never
// below kSmallestTarget nor above twice that; the others share what is left in the drawn proportions.
std::vector<int> ScaleColumns(std::span<const ListColumn> columns, int available);

// The column under x, found by adding the widths from the left until the sum reaches x; -1 beyond the last.
int ColumnAt(std::span<const int> widths, int x);

}  // namespace inspector::device
