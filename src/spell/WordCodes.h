// The compression of words: each code byte stands for one character or for a pair of them. Whether a letter
// is a capital is lost on purpose; an entry of the dictionary keeps that apart.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "spell/DictionaryFormat.h"

namespace inspector::spell {

// Points into the tables of a file, or of one that is being built. From the left, a pair that has a code
// takes it, else a character stands alone; so a word has one compressed form.
class WordCodes {
public:
  WordCodes() = default;
  // `tables` are those of the file, `side` is that of the table of pairs; they must outlive this.
  WordCodes(const std::uint8_t* tables, std::uint32_t side)
      : m_Decode(tables),
        m_Encode(tables + kDecodeBytes),
        m_Pairs(tables + kDecodeBytes + kEncodeBytes),
        m_Side(side) {}

  // kNoCode for a character that no word of the dictionary has.
  std::uint8_t CodeOf(char character) const { return m_Encode[static_cast<std::uint8_t>(character)]; }
  // kNoCode when the pair has none. Both are codes of single characters.
  std::uint8_t PairOf(std::uint8_t first, std::uint8_t second) const {
    return first < m_Side && second < m_Side ? m_Pairs[static_cast<std::size_t>(first) * m_Side + second]
                                             : kNoCode;
  }
  // False for a code without meaning.
  bool AppendDecoded(std::uint8_t code, std::string& word) const;
  // False when a character has no code.
  bool AppendEncoded(std::string_view word, std::string& codes) const;
  std::uint32_t Side() const { return m_Side; }

private:
  const std::uint8_t* m_Decode = nullptr;
  const std::uint8_t* m_Encode = nullptr;
  const std::uint8_t* m_Pairs = nullptr;
  std::uint32_t m_Side = 0;
};

}  // namespace inspector::spell
