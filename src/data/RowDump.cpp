#include "data/RowDump.h"

#include <sqlite3.h>

#include <algorithm>

#include "data/FreshDatabase.h"
#include "device/Format.h"

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

bool IsUtf8(sqlite3_stmt* statement, int place) {
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement, place));
  const std::string_view stored(bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement, place)));
  return device::ToUtf8(device::FromUtf8(stored)) == stored;
}

// True when a RawRow can hold what is stored. A NULL is a value of its own, and every number says yes or no.
bool Fits(sqlite3_stmt* statement, int place, ValueType type) {
  const int stored = sqlite3_column_type(statement, place);
  const bool isNumber = stored == SQLITE_INTEGER || stored == SQLITE_FLOAT;
  if (stored == SQLITE_NULL) return true;
  switch (type) {
    case ValueType::Integer:
      return isNumber && sqlite3_column_double(statement, place) == sqlite3_column_int(statement, place);
    case ValueType::YesNo:
      return isNumber;
    case ValueType::Double: {
      if (stored != SQLITE_INTEGER) return isNumber;
      constexpr std::int64_t kLargestExact = std::int64_t{1} << 53;
      const std::int64_t whole = sqlite3_column_int64(statement, place);
      return whole >= -kLargestExact && whole <= kLargestExact;
    }
    case ValueType::Date:
    case ValueType::String:
      return stored == SQLITE_INTEGER || (stored == SQLITE_TEXT && IsUtf8(statement, place));
    case ValueType::Binary:
      return stored == SQLITE_BLOB;
  }
  return true;
}

Text DescribeMisfit(sqlite3_stmt* statement, int place, const TableLayout& layout, TextView column,
                    ValueType type) {
  constexpr std::size_t kMostShown = 40;
  const bool isBlock = sqlite3_column_type(statement, place) == SQLITE_BLOB;
  TextView wanted = u"a text in UTF-8";
  if (type == ValueType::Integer) wanted = u"a whole number of 32 bits";
  if (type == ValueType::YesNo) wanted = u"yes or no";
  if (type == ValueType::Double) wanted = u"a number";
  if (type == ValueType::Binary) wanted = u"a block of bytes";
  Text shown =
      isBlock ? Text(u"a block of bytes") : std::get<Text>(ReadValue(statement, place, ValueType::String));
  if (shown.size() > kMostShown) shown = shown.substr(0, kMostShown) + u"...";
  const auto row = sqlite3_column_int64(statement, sqlite3_column_count(statement) - 1);
  return device::Format(u"table %s, column %s, row %s: %s is not %s", layout.name, column,
                        device::FromUtf8(std::to_string(row)), shown, wanted);
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

bool ReadRawRows(Connection& connection, const TableLayout& layout, std::vector<RawRow>& rows, Text* misfit) {
  rows.clear();
  if (misfit) misfit->clear();
  if (!connection.IsOpen()) return false;
  const std::vector<StoredColumn>* const stored = connection.ColumnsOf(layout.name);
  if (!stored) return true;
  const ColumnList columns = StoredColumns(*stored, layout);
  sqlite3_stmt* const select = connection.Prepare("SELECT " + columns.names + ", rowid FROM " +
                                                  QuotedName(layout.name) + " ORDER BY rowid");
  if (!select) return false;
  int code = SQLITE_ROW;
  while ((code = sqlite3_step(select)) == SQLITE_ROW) {
    RawRow row = NeutralRow(layout);
    for (std::size_t at = 0; at < columns.count; ++at) {
      const int place = static_cast<int>(at);
      const ValueType type = layout.columns[at].type;
      if (misfit && misfit->empty() && !Fits(select, place, type))
        *misfit = DescribeMisfit(select, place, layout, (*stored)[at].name, type);
      row[at] = ReadValue(select, place, type);
    }
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
