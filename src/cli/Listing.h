// Rows for people or for programs: an aligned table, or a JSON array of objects.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <variant>
#include <vector>

#include "device/Text.h"

namespace inspector::cli {

class Listing {
public:
  using Value = std::variant<std::int32_t, device::Text>;

  // `names` are the keys in JSON and, in capitals, the headings of the table.
  explicit Listing(std::vector<std::string> names) : m_Names(std::move(names)) {}

  // `shown` replaces values in the table where a person reads something else than a program; empty means
  // none.
  void Add(std::vector<Value> values, std::vector<Value> shown = {});
  void Print(std::ostream& out, bool asJson) const;

private:
  void PrintTable(std::ostream& out) const;
  void PrintJson(std::ostream& out) const;

  std::vector<std::string> m_Names;
  std::vector<std::vector<Value>> m_Values;
  std::vector<std::vector<Value>> m_Shown;
};

}  // namespace inspector::cli
