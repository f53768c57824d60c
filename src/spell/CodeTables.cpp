#include "spell/CodeTables.h"

#include <algorithm>
#include <array>
#include <set>

#include "spell/DictionaryFormat.h"
#include "spell/Letters.h"
#include "spell/WordCodes.h"

namespace inspector::spell {
namespace {

// Several pairs are chosen between two counts; more would make the tables worse, fewer the building slower.
constexpr std::size_t kPairsAtOnce = 8;

class Tables {
public:
  explicit Tables(const std::set<char>& characters) : m_Side(characters.size()) {
    m_Bytes.resize(kDecodeBytes, '\0');
    m_Bytes.resize(kDecodeBytes + kEncodeBytes + m_Side * m_Side, static_cast<char>(kNoCode));
    for (const char character : characters) {
      Encode(character, m_Codes);
      Encode(Letters::Upper(character), m_Codes);
      if (character == kApostrophe) Encode(kTypographicApostrophe, m_Codes);
      m_Bytes[2 * m_Codes++] = character;
    }
  }

  bool IsFull() const { return m_Codes >= kNoCode; }
  std::size_t Side() const { return m_Side; }
  char Character(std::size_t code) const { return m_Bytes[2 * code]; }
  void AddPair(std::size_t first, std::size_t second) {
    m_Bytes[kDecodeBytes + kEncodeBytes + first * m_Side + second] = static_cast<char>(m_Codes);
    m_Bytes[2 * m_Codes] = Character(first);
    m_Bytes[2 * m_Codes + 1] = Character(second);
    ++m_Codes;
  }
  WordCodes Codes() const {
    return WordCodes(reinterpret_cast<const std::uint8_t*>(m_Bytes.data()),
                     static_cast<std::uint32_t>(m_Side));
  }
  CodeTables Take() && { return {std::move(m_Bytes), static_cast<std::uint32_t>(m_Side)}; }

private:
  void Encode(char character, std::size_t code) {
    m_Bytes[kDecodeBytes + static_cast<std::uint8_t>(character)] = static_cast<char>(code);
  }

  std::size_t m_Side;
  std::size_t m_Codes = 0;
  std::string m_Bytes;
};

// How often two single characters stand beside each other once the words are compressed.
std::vector<std::pair<std::size_t, std::size_t>> CountPairs(const std::vector<std::string>& words,
                                                            const Tables& tables) {
  const std::size_t side = tables.Side();
  std::vector<std::pair<std::size_t, std::size_t>> counts(side * side);
  for (std::size_t n = 0; n < counts.size(); ++n) counts[n].second = n;
  const WordCodes table = tables.Codes();
  std::string codes;
  for (const std::string& word : words) {
    codes.clear();
    table.AppendEncoded(word, codes);
    for (std::size_t at = 0; at + 1 < codes.size(); ++at) {
      const auto first = static_cast<std::uint8_t>(codes[at]);
      const auto second = static_cast<std::uint8_t>(codes[at + 1]);
      if (first < side && second < side) ++counts[first * side + second].first;
    }
  }
  std::sort(counts.begin(), counts.end(), [](const auto& one, const auto& other) {
    return one.first != other.first ? one.first > other.first : one.second < other.second;
  });
  return counts;
}

}  // namespace

std::optional<CodeTables> MakeCodeTables(const std::vector<std::string>& words, std::string_view others) {
  std::set<char> characters(others.begin(), others.end());
  for (const std::string& word : words) characters.insert(word.begin(), word.end());
  if (characters.size() > kNoCode) return std::nullopt;
  Tables tables(characters);
  while (!tables.IsFull()) {
    const auto counts = CountPairs(words, tables);
    for (std::size_t n = 0; n < std::min(kPairsAtOnce, counts.size()); ++n) {
      if (counts[n].first < 2 || tables.IsFull()) return std::move(tables).Take();
      tables.AddPair(counts[n].second / tables.Side(), counts[n].second % tables.Side());
    }
    if (counts.empty()) break;
  }
  return std::move(tables).Take();
}

}  // namespace inspector::spell
