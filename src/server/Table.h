// Rows for a person, aligned below their headings, or for a program, as an array in JSON.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <variant>
#include <vector>

namespace inspector::server {

class Table {
public:
  using Value = std::variant<std::string, std::int64_t>;  // texts in UTF-8

  explicit Table(std::vector<std::string> headings) : m_Headings(std::move(headings)) {}

  void Add(std::vector<Value> row) { m_Rows.push_back(std::move(row)); }
  bool IsEmpty() const { return m_Rows.empty(); }
  void Print(std::ostream& out, bool asJson) const;
  // Of a single row: a line for each value, or an object in JSON.
  void PrintUpright(std::ostream& out, bool asJson) const;

private:
  std::vector<std::string> m_Headings;
  std::vector<std::vector<Value>> m_Rows;
};

}  // namespace inspector::server
