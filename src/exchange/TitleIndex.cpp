#include "exchange/TitleIndex.h"

namespace inspector::exchange {

void TitleIndex::Add(const Text& title, TextView number, int row) {
  m_Rows[title].emplace(device::ToUtf8(number), row);
}

std::optional<int> TitleIndex::First(const Text& title) const {
  const auto rows = m_Rows.find(title);
  return rows == m_Rows.end() ? std::nullopt : std::optional(rows->second.begin()->second);
}

void TitleIndex::Renumber(const Text& title, int row, TextView from, TextView to) {
  const auto rows = m_Rows.find(title);
  if (rows == m_Rows.end() || from == to) return;
  rows->second.erase({device::ToUtf8(from), row});
  rows->second.emplace(device::ToUtf8(to), row);
}

}  // namespace inspector::exchange
