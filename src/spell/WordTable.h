// The words of a dictionary in memory, for who must look at all of them: suggestions. Made when the first is
// asked for, since checking a text needs none of it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "spell/DictionaryFile.h"

namespace inspector::spell {

class WordTable {
public:
  // Which letters a word has, a bit for each; accents do not count.
  using LetterSet = std::uint32_t;
  static LetterSet LettersOf(std::string_view word);

  explicit WordTable(const DictionaryFile& dictionary);

  // Calls `visit(word)` for each word of so many bytes for which at most four letters are in one of the two
  // words only.
  template <typename Visit>
  void ForEachLike(LetterSet typed, std::size_t length, Visit visit) const {
    if (length >= m_ByLength.size()) return;
    const Group& group = m_ByLength[length];
    for (std::size_t n = 0; n < group.letters.size(); ++n)
      if (HasFourAtMost(group.letters[n] ^ typed))
        visit(std::string_view(group.words).substr(n * length, length));
  }
  // The words with this key (SoundKey).
  template <typename Visit>
  void ForEachSounding(const std::string& key, Visit visit) const {
    const auto [first, last] = m_BySound.equal_range(std::hash<std::string>()(key));
    for (auto at = first; at != last; ++at)
      visit(std::string_view(m_ByLength[at->second.length].words)
                .substr(at->second.number * at->second.length, at->second.length));
  }

private:
  // Words of the same length, one behind the other.
  struct Group {
    std::string words;
    std::vector<LetterSet> letters;
  };
  struct Place {
    std::uint32_t length;
    std::uint32_t number;
  };

  static bool HasFourAtMost(LetterSet letters) {
    for (int n = 0; n < 4; ++n) letters &= letters - 1;
    return letters == 0;
  }

  std::vector<Group> m_ByLength;
  std::unordered_multimap<std::size_t, Place> m_BySound;
};

}  // namespace inspector::spell
