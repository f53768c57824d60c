// Whole tables as they are stored, for what copies a table instead of working with its rows.
#pragma once

#include <cstdint>
#include <variant>
#include <vector>

#include "data/ColumnDef.h"
#include "data/Connection.h"
#include "data/TableLayout.h"

namespace inspector::data {

// Unlike a bound member it tells a NULL (monostate) from a neutral value. Yes/no is 0 or -1; a date is the
// text that stands in the database.
using RawValue = std::variant<std::monostate, std::int32_t, double, Text, ByteArray>;
// One value per column of the layout, by ordinal.
using RawRow = std::vector<RawValue>;

RawValue NeutralValue(ValueType type);
RawRow NeutralRow(const TableLayout& layout);

// Fills `rows` in stored order; a missing table has none. False on a failure, which has been reported.
// SQLite stores any value in any column; one that would not come back the same from a RawRow is read as the
// program reads it everywhere. `misfit`, when given, tells where the first of them stands and what it is.
bool ReadRawRows(Connection& connection, const TableLayout& layout, std::vector<RawRow>& rows,
                 Text* misfit = nullptr);
// Deletes every row of the table and stores these, in one transaction (or inside the one that is open).
// False on a failure, which has been reported.
bool ReplaceRawRows(Connection& connection, const TableLayout& layout, const std::vector<RawRow>& rows);

}  // namespace inspector::data
