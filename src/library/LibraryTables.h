// Which tables a library is made of, and the keys that stand for rows of its link tables.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "data/RowDump.h"
#include "data/TableLayout.h"

namespace inspector::library {

using device::Text;
using device::TextView;

// `key` = [1, 2] on a row of `owner` makes the rows (1, its ID) and (2, its ID) of `links`.
struct LinkShorthand {
  TextView key;
  TextView owner;
  TextView links;
};

std::span<const LinkShorthand> LinkShorthands();
// Null when the table has no such key.
const LinkShorthand* FindShorthand(TextView owner, TextView key);
// A row of a link table. The third column, where there is one, takes the text of both keys ("2001-4003").
data::RawRow MakeLink(const data::TableLayout& links, std::int32_t linked, std::int32_t owner);

// Every table of the Template database, in a fixed order.
const std::vector<const data::TableLayout*>& LibraryTables();
// By the exact name; null when the library has no such table.
const data::TableLayout* FindLibraryTable(TextView name);

inline constexpr TextView kOptions = u"Options";
inline constexpr TextView kUniqueID = u"UniqueID";
// The key that lists the columns of a row which hold NULL.
inline constexpr TextView kNulls = u"Nulls";

// The login for the synchronisation server belongs to the device: it is never written and never replaced.
bool StaysOnDevice(const data::TableLayout& table, TextView column);

}  // namespace inspector::library
