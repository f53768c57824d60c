#include "spell/WordTable.h"

#include "spell/SoundKey.h"

namespace inspector::spell {

WordTable::LetterSet WordTable::LettersOf(std::string_view word) {
  constexpr unsigned kOther = 26;
  LetterSet letters = 0;
  for (const char byte : word) {
    const char letter = PlainLetter(byte);
    letters |=
        LetterSet{1} << (letter >= 'a' && letter <= 'z' ? static_cast<unsigned>(letter - 'a') : kOther);
  }
  return letters;
}

WordTable::WordTable(const DictionaryFile& dictionary) {
  dictionary.ForEachWord([this](std::string_view word) {
    if (word.size() >= m_ByLength.size()) m_ByLength.resize(word.size() + 1);
    Group& group = m_ByLength[word.size()];
    m_BySound.emplace(
        std::hash<std::string>()(SoundKey(word)),
        Place{static_cast<std::uint32_t>(word.size()), static_cast<std::uint32_t>(group.letters.size())});
    group.words += word;
    group.letters.push_back(LettersOf(word));
  });
}

}  // namespace inspector::spell
