#include "device/ListColumns.h"

#include <algorithm>

namespace inspector::device {

std::vector<int> ScaleColumns(std::span<const ListColumn> columns, int available) {
  std::vector<int> widths(columns.size());
  int left = available;
  int units = 0;
  std::size_t last = columns.size();
  for (std::size_t n = 0; n < columns.size(); ++n) {
    if (columns[n].isMark) {
      widths[n] =
          std::clamp(columns[n].units * available / kDrawnScreenWidth, kSmallestTarget, 2 * kSmallestTarget);
      left -= widths[n];
    } else {
      units += columns[n].units;
      last = n;
    }
  }
  const int shared = std::max(left, 0);
  for (std::size_t n = 0; n < columns.size(); ++n) {
    if (columns[n].isMark || units == 0) continue;
    widths[n] = shared * columns[n].units / units;
    left -= widths[n];
  }
  // What rounding left over, so that no strip at the edge belongs to no column.
  if (last < columns.size()) widths[last] += std::max(left, 0);
  return widths;
}

int ColumnAt(std::span<const int> widths, int x) {
  int sum = 0;
  for (std::size_t n = 0; n < widths.size(); ++n) {
    sum += widths[n];
    if (sum >= x) return static_cast<int>(n);
  }
  return -1;
}

}  // namespace inspector::device
