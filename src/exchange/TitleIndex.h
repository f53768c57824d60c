// Which of some rows comes first under a title.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <unordered_map>

#include "device/Text.h"

namespace inspector::exchange {

using device::Text;
using device::TextView;

// In the order that the databases give rows of one title: by their number, byte for byte, then as they were
// stored. Titles are the same when their letters are, case and blanks included.
class TitleIndex {
public:
  // `row` is the row's place among all as they were stored.
  void Add(const Text& title, TextView number, int row);
  std::optional<int> First(const Text& title) const;
  // A row of this title gets another number, and with it another place in the order.
  void Renumber(const Text& title, int row, TextView from, TextView to);

private:
  using Place = std::pair<std::string, int>;
  std::unordered_map<Text, std::set<Place>> m_Rows;
};

}  // namespace inspector::exchange
