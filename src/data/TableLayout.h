// The tables of both databases: their columns in ordinal order, with the names that statements use.
#pragma once

#include <span>
#include <string_view>

#include "device/Text.h"

namespace inspector::data {

using device::Text;
using device::TextView;

enum class DatabaseKind { Template = 0, Inspection = 1 };

enum class ValueType { Integer, Double, Date, String, YesNo, Binary };

// A column's place in the row is its index in TableLayout::columns, its ordinal.
struct ColumnLayout {
  TextView name;
  ValueType type;
  // Set for a column that declares its name and SQL type; empty for a positional one, which a table that the
  // program creates in an existing database gets under a generated name.
  TextView sqlType = {};

  bool IsPositional() const { return sqlType.empty(); }
};

struct TableLayout {
  TextView name;
  DatabaseKind database;
  std::span<const ColumnLayout> columns;
  // Columns that fresh databases index, none of them unique.
  std::span<const TextView> indexed;
  bool isLink = false;  // connects two tables; its row order is the order of what it links
};

// "integer", "varchar (255)" and so on; empty for a value that is none of the six types.
TextView GeneratedSqlType(ValueType type);
// "Number%d", "String%d", "Double%d", "DateTime%d", "YesNo%d", "Binary%d" with the position.
Text GeneratedName(ValueType type, int position);

// All tables, in a fixed order. UniqueID stands there twice, once for each database.
std::span<const TableLayout> AllLayouts();
// The layout of a table by its name, without regard to case; null for a table that is not the program's.
// MERGE_InspectionCategory is MERGE_Category.
const TableLayout* FindLayout(TextView table);
TextView RealTableName(TextView table);
// MERGE_Inspection, MERGE_Category and MERGE_Step, which receive an imported inspection.
bool IsStagingTable(TextView table);

}  // namespace inspector::data
