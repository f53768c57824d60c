// The misspelt words of a text, as every screen and the command line mark them.
#pragma once

#include <vector>

#include "spell/WordScanner.h"

namespace inspector::spell {

struct MisspeltWord {
  TextRange range;
  Text word;
};

class TextCheck {
public:
  TextCheck(const SpellChecker& checker, const std::vector<Text>& shortcuts = {})
      : m_Checker(checker), m_Scanner(checker, shortcuts) {}

  // In the order of the text. Where a hyphen or a blank stands in the middle of a word ("sof-fit"), the range
  // has all of it. Empty without a dictionary.
  std::vector<MisspeltWord> FindMisspelt(TextView text) const;
  // Those that begin in [from, to): what is seen of a long text.
  std::vector<MisspeltWord> FindMisspelt(TextView text, std::size_t from, std::size_t to) const;

private:
  // The part of the word that is misspelt; length 0 when none is. It is less than the word behind an elision
  // ("l'eau": a dictionary that has "l'" as a word takes it as one).
  TextRange MisspeltPart(TextView text, const ScannedWord& word) const;
  // `next` is the word behind it, or null.
  TextRange WithTornPart(TextView text, const ScannedWord& word, TextRange part,
                         const ScannedWord* next) const;

  const SpellChecker& m_Checker;
  WordScanner m_Scanner;
};

}  // namespace inspector::spell
