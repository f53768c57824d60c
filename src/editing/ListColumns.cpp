#include "editing/ListColumns.h"

namespace inspector::editing {

int ColumnAt(std::span<const ListColumn> columns, int x) {
  int reached = 0;
  for (std::size_t column = 0; column < columns.size(); ++column) {
    reached += columns[column].width;
    if (reached >= x) return static_cast<int>(column);
  }
  return -1;
}

}  // namespace inspector::editing
