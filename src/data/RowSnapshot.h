// Some rows of a table as they stood at one moment, byte for byte, to be put back later.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "data/Connection.h"

struct sqlite3_value;

namespace inspector::data {

// The rows whose column `ordinal` holds one of `keys`. Columns that the program does not know are kept too.
class RowSnapshot {
public:
  RowSnapshot(Text table, int ordinal, std::vector<std::int32_t> keys)
      : m_Table(std::move(table)), m_Ordinal(ordinal), m_Keys(std::move(keys)) {}

  // Rows of this key, none of which was there when the others were taken.
  void AddKey(std::int32_t key) { m_Keys.push_back(key); }
  // Reads the rows. False on a failure, which has been reported; a missing table has no rows.
  bool Take(Connection& connection);
  // Deletes what the same keys have now and stores the rows that were taken, in the places they had where
  // those are free. Inside the caller's transaction. False on a failure, which has been reported.
  bool PutBack(Connection& connection) const;
  // The same rows with the same content in the same places.
  bool operator==(const RowSnapshot& other) const;

  int RowCount() const { return static_cast<int>(m_Rows.size()); }
  // The whole number in a column, of every row.
  std::vector<std::int32_t> Numbers(int ordinal) const;

private:
  struct Release {
    void operator()(sqlite3_value* value) const;
  };
  using Value = std::unique_ptr<sqlite3_value, Release>;
  struct Row {
    std::int64_t place = 0;  // SQLite's row id
    std::vector<Value> values;
  };
  bool Insert(Connection& connection, const Row& row, const std::string& names) const;

  Text m_Table;
  int m_Ordinal;
  std::vector<std::int32_t> m_Keys;
  std::vector<Row> m_Rows;
};

}  // namespace inspector::data
