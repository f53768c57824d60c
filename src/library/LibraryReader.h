// One TOML file of a library, as rows of the Template database.
#pragma once

#include <string_view>
#include <vector>

#include "data/RowDump.h"
#include "data/TableLayout.h"

namespace inspector::library {

using device::Text;
using device::TextView;

struct LibraryRow {
  const data::TableLayout* table = nullptr;
  data::RawRow values;
  std::vector<bool> isNamed;  // per column: the file gives it, rather than leaving it neutral
  int line = 0;
};

// Adds the rows of a file in the order of their lines, each followed by the link rows that its shorthand keys
// make. Returns what is wrong, with `name`, line and key, or an empty text; `rows` then is of no use.
Text ReadLibraryFile(std::string_view content, TextView name, std::vector<LibraryRow>& rows);

}  // namespace inspector::library
