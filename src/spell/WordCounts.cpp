#include "spell/WordCounts.h"

namespace inspector::spell {

void WordCounts::Add(TextView text) {
  const std::string bytes = Letters::LowerAll(WordBytes(text));
  for (std::size_t at = 0; at < bytes.size();) {
    std::size_t end = at;
    while (end < bytes.size() &&
           (Letters::IsLetter(bytes[end]) || (bytes[end] == kApostrophe && end > at &&
                                              end + 1 < bytes.size() && Letters::IsLetter(bytes[end + 1]))))
      ++end;
    if (end > at) ++m_Counts[bytes.substr(at, end - at)];
    at = end + 1;
  }
}

unsigned WordCounts::Of(const std::string& word) const {
  const auto found = m_Counts.find(word);
  return found == m_Counts.end() ? 0 : found->second;
}

}  // namespace inspector::spell
