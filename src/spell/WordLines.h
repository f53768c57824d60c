// Lists of words as bytes, line by line.
#pragma once

#include <algorithm>
#include <string_view>

namespace inspector::spell {

// Calls `visit` with what stands between any of `ends`, which is empty between two of them.
template <typename Visit>
void ForEachLine(std::string_view content, std::string_view ends, Visit visit) {
  while (!content.empty()) {
    const std::size_t end = std::min(content.find_first_of(ends), content.size());
    visit(content.substr(0, end));
    content.remove_prefix(std::min(end + 1, content.size()));
  }
}

// Without those at its beginning and at its end, a carriage return among them.
inline std::string_view WithoutBlanks(std::string_view line) {
  constexpr std::string_view kBlanks = " \t\r";
  const std::size_t begin = line.find_first_not_of(kBlanks);
  return begin == line.npos ? "" : line.substr(begin, line.find_last_not_of(kBlanks) + 1 - begin);
}

}  // namespace inspector::spell
