#include "data/RowSnapshot.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>

namespace inspector::data {
namespace {

bool IsSame(sqlite3_value* left, sqlite3_value* right) {
  if (sqlite3_value_type(left) != sqlite3_value_type(right)) return false;
  switch (sqlite3_value_type(left)) {
    case SQLITE_NULL:
      return true;
    case SQLITE_INTEGER:
      return sqlite3_value_int64(left) == sqlite3_value_int64(right);
    case SQLITE_FLOAT:
      return sqlite3_value_double(left) == sqlite3_value_double(right);
    default: {
      const void* const leftBytes = sqlite3_value_blob(left);
      const void* const rightBytes = sqlite3_value_blob(right);
      const int size = sqlite3_value_bytes(left);
      return size == sqlite3_value_bytes(right) &&
             (size == 0 || std::memcmp(leftBytes, rightBytes, static_cast<std::size_t>(size)) == 0);
    }
  }
}

std::string KeyColumn(Connection& connection, const Text& table, int ordinal) {
  const std::vector<StoredColumn>* const stored = connection.ColumnsOf(table);
  const auto at = static_cast<std::size_t>(ordinal);
  return stored && at < stored->size() ? QuotedName((*stored)[at].name) : std::string();
}

// Every stored column, ", " before each.
std::string AllColumns(Connection& connection, const Text& table) {
  std::string names;
  if (const std::vector<StoredColumn>* const stored = connection.ColumnsOf(table))
    for (const StoredColumn& column : *stored) names += ", " + QuotedName(column.name);
  return names;
}

}  // namespace

void RowSnapshot::Release::operator()(sqlite3_value* value) const {
  sqlite3_value_free(value);
}

bool RowSnapshot::Take(Connection& connection) {
  m_Rows.clear();
  const std::string key = KeyColumn(connection, m_Table, m_Ordinal);
  if (key.empty()) return !connection.ColumnsOf(m_Table);
  sqlite3_stmt* const select =
      connection.Prepare("SELECT rowid" + AllColumns(connection, m_Table) + " FROM " + QuotedName(m_Table) +
                         " WHERE " + key + " = ? ORDER BY rowid");
  if (!select) return false;
  for (const std::int32_t each : m_Keys) {
    sqlite3_bind_int(select, 1, each);
    int code = SQLITE_ROW;
    while ((code = sqlite3_step(select)) == SQLITE_ROW) {
      Row row{sqlite3_column_int64(select, 0), {}};
      for (int place = 1; place < sqlite3_column_count(select); ++place)
        row.values.emplace_back(sqlite3_value_dup(sqlite3_column_value(select, place)));
      m_Rows.push_back(std::move(row));
    }
    if (code != SQLITE_DONE) connection.ReportFailure();
    sqlite3_reset(select);
    if (code != SQLITE_DONE) return false;
  }
  return true;
}

bool RowSnapshot::PutBack(Connection& connection) const {
  const std::string key = KeyColumn(connection, m_Table, m_Ordinal);
  if (key.empty()) return m_Rows.empty();
  sqlite3_stmt* const remove =
      connection.Prepare("DELETE FROM " + QuotedName(m_Table) + " WHERE " + key + " = ?");
  if (!remove) return false;
  for (const std::int32_t each : m_Keys) {
    sqlite3_bind_int(remove, 1, each);
    if (!connection.Run(remove)) return false;
  }
  const std::string names = AllColumns(connection, m_Table);
  return std::all_of(m_Rows.begin(), m_Rows.end(),
                     [&](const Row& row) { return Insert(connection, row, names); });
}

bool RowSnapshot::Insert(Connection& connection, const Row& row, const std::string& names) const {
  sqlite3_stmt* const find = connection.Prepare("SELECT 1 FROM " + QuotedName(m_Table) + " WHERE rowid = ?");
  if (!find) return false;
  sqlite3_bind_int64(find, 1, row.place);
  const bool isTaken = sqlite3_step(find) == SQLITE_ROW;
  sqlite3_reset(find);

  std::string marks = "?";
  for (std::size_t i = 0; i < row.values.size(); ++i) marks += ", ?";
  sqlite3_stmt* const insert = connection.Prepare("INSERT INTO " + QuotedName(m_Table) + " (rowid" + names +
                                                  ") VALUES (" + marks + ")");
  if (!insert) return false;
  // Another row may have got the place meanwhile; then this one goes behind the last.
  isTaken ? sqlite3_bind_null(insert, 1) : sqlite3_bind_int64(insert, 1, row.place);
  for (std::size_t i = 0; i < row.values.size(); ++i)
    sqlite3_bind_value(insert, static_cast<int>(i) + 2, row.values[i].get());
  return connection.Run(insert);
}

bool RowSnapshot::operator==(const RowSnapshot& other) const {
  const auto isSameRow = [](const Row& left, const Row& right) {
    const auto isSameValue = [](const Value& one, const Value& two) { return IsSame(one.get(), two.get()); };
    return left.place == right.place && std::equal(left.values.begin(), left.values.end(),
                                                   right.values.begin(), right.values.end(), isSameValue);
  };
  return m_Table == other.m_Table &&
         std::equal(m_Rows.begin(), m_Rows.end(), other.m_Rows.begin(), other.m_Rows.end(), isSameRow);
}

std::vector<std::int32_t> RowSnapshot::Numbers(int ordinal) const {
  std::vector<std::int32_t> numbers;
  for (const Row& row : m_Rows)
    numbers.push_back(sqlite3_value_int(row.values[static_cast<std::size_t>(ordinal)].get()));
  return numbers;
}

}  // namespace inspector::data
