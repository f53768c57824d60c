// Rows of a table as the text of a library file.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "data/RowDump.h"
#include "data/TableLayout.h"

namespace inspector::library {

using device::Text;
using device::TextView;

// A shorthand key with its IDs.
using LinkList = std::pair<TextView, std::vector<std::int32_t>>;

// Adds one row: its keys in the order of the columns, then `links`, then the columns that hold NULL. Neutral
// values are left out, except the ID and all of Options, where a key that is missing means "as it was".
void WriteLibraryRow(const data::TableLayout& table, const data::RawRow& row,
                     const std::vector<LinkList>& links, std::string& lines);

}  // namespace inspector::library
