#include "spell/WordCodes.h"

namespace inspector::spell {

bool WordCodes::AppendDecoded(std::uint8_t code, std::string& word) const {
  const std::uint8_t* const characters = m_Decode + 2 * code;
  if (characters[0] == 0) return false;
  word.push_back(static_cast<char>(characters[0]));
  if (characters[1] != 0) word.push_back(static_cast<char>(characters[1]));
  return true;
}

bool WordCodes::AppendEncoded(std::string_view word, std::string& codes) const {
  for (std::size_t at = 0; at < word.size(); ++at) {
    const std::uint8_t single = CodeOf(word[at]);
    if (single == kNoCode) return false;
    const std::uint8_t next = at + 1 < word.size() ? CodeOf(word[at + 1]) : kNoCode;
    const std::uint8_t pair = PairOf(single, next);
    codes.push_back(static_cast<char>(pair == kNoCode ? single : pair));
    if (pair != kNoCode) ++at;
  }
  return true;
}

}  // namespace inspector::spell
