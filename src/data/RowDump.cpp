#include "data/RowDump.h"

#include <sqlite3.h>

#include <algorithm>

#include "data/FreshDatabase.h"

namespace inspector::data {
namespace {

// The stored names of the layout's columns, separated by commas; an older table may have fewer of them, one
// of another program more.
struct ColumnList {
  std::string names;
  std::size_t count = 0;
};

ColumnList StoredColumns(const std::vector<StoredColumn>& stored, const TableLayout& layout) {
  ColumnList list;
  list.count = std::min(stored.size(), layout.columns.size());
  for (std::size_t at = 0; at < list.count; ++at)
    list.names += (at == 0 ? "" : ", ") + QuotedName(stored[at].name);
  return list;
}

RawValue ReadValue(sqlite3_stmt* statement, int place, ValueType type) {
  if (sqlite3_column_type(statement, place) == SQLITE_NULL) return {};
  switch (type) {
    case ValueType::Integer:
      return static_cast<std::int32_t>(sqlite3_column_int(statement, place));
    case ValueType::YesNo:
      return sqlite3_column_double(statement, place) != 0 ? -1 : 0;
    case ValueType::Double:
      return sqlite3_column_double(statement, place);
    case ValueType::Date:
    case ValueType::String: {
      const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement, place));
      const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, place));
      return bytes ? device::FromUtf8({bytes, size}) : Text();
    }
    case ValueType::Binary: {
      const auto* bytes = static_cast<const std::uint8_t*>(sqlite3_column_blob(statement, place));
      const int size = sqlite3_column_bytes(statement, place);
      return bytes ? ByteArray(bytes, bytes + size) : ByteArray();
    }
  }
  return {};
}

void BindValue(sqlite3_stmt* statement, int place, const RawValue& value, ValueType type) {
  if (const auto* number = std::get_if<std::int32_t>(&value)) {
    const bool isYes = type == ValueType::YesNo && *number != 0;
    sqlite3_bind_int(statement, place, isYes ? 1 : *number);
  } else if (const auto* real = std::get_if<double>(&value)) {
    sqlite3_bind_double(statement, place, *real);
  } else if (const auto* text = std::get_if<Text>(&value)) {
    const std::string bytes = device::ToUtf8(*text);
    sqlite3_bind_text64(statement, place, bytes.data(), bytes.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  } else if (const auto* block = std::get_if<ByteArray>(&value)) {
    // A null pointer would store NULL in place of no bytes.
    const void* const bytes = block->empty() ? "" : static_cast<const void*>(block->data());
    sqlite3_bind_blob64(statement, place, bytes, block->size(), SQLITE_TRANSIENT);
  } else {
    sqlite3_bind_null(statement, place);
  }
}

}  // namespace

RawValue NeutralValue(ValueType type) {
  switch (type) {
    case ValueType::Integer:
    case ValueType::YesNo:
      return 0;
    case ValueType::Double:
      return 0.0;
    case ValueType::Date:
      return {};
    case ValueType::String:
      return Text();
    case ValueType::Binary:
      return ByteArray(1, 0);
  }
  return {};
}

RawRow NeutralRow(const TableLayout& layout) {
  RawRow row;
  for (const ColumnLayout& column : layout.columns) row.push_back(NeutralValue(column.type));
  return row;
}

bool ReadRawRows(Connection& connection, const TableLayout& layout, std::vector<RawRow>& rows) {
  rows.clear();
  if (!connection.IsOpen()) return false;
  const std::vector<StoredColumn>* const stored = connection.ColumnsOf(layout.name);
  if (!stored) return true;
  const ColumnList columns = StoredColumns(*stored, layout);
  sqlite3_stmt* const select =
      connection.Prepare("SELECT " + columns.names + " FROM " + QuotedName(layout.name) + " ORDER BY rowid");
  if (!select) return false;
  int code = SQLITE_ROW;
  while ((code = sqlite3_step(select)) == SQLITE_ROW) {
    RawRow row = NeutralRow(layout);
    for (std::size_t at = 0; at < columns.count; ++at)
      row[at] = ReadValue(select, static_cast<int>(at), layout.columns[at].type);
    rows.push_back(std::move(row));
  }
  if (code != SQLITE_DONE) connection.ReportFailure();
  sqlite3_reset(select);
  return code == SQLITE_DONE;
}

bool ReplaceRawRows(Connection& connection, const TableLayout& layout, const std::vector<RawRow>& rows) {
  Transaction transaction(connection);
  if (!transaction.IsOpen() || !CreateIfMissing(connection, layout.name)) return false;
  const std::vector<StoredColumn>* const stored = connection.ColumnsOf(layout.name);
  if (!stored || !connection.ExecuteNative("DELETE FROM " + QuotedName(layout.name))) return false;
  const ColumnList columns = StoredColumns(*stored, layout);
  std::string places = "?";
  for (std::size_t at = 1; at < columns.count; ++at) places += ", ?";
  sqlite3_stmt* const insert = connection.Prepare("INSERT INTO " + QuotedName(layout.name) + " (" +
                                                  columns.names + ") VALUES (" + places + ")");
  if (!insert) return false;
  for (const RawRow& row : rows) {
    for (std::size_t at = 0; at < columns.count; ++at)
      BindValue(insert, static_cast<int>(at) + 1, row[at], layout.columns[at].type);
    if (!connection.Run(insert)) return false;
  }
  return transaction.Commit();
}

}  // namespace inspector::data
