// Which parts of a text are words to be checked.
#pragma once

#include <unordered_set>
#include <vector>

#include "device/TextMarks.h"
#include "spell/SpellChecker.h"

namespace inspector::spell {

using device::TextRange;

struct ScannedWord {
  TextRange range;  // the word itself: letters, with apostrophes inside
  // What stands between blanks around it, without punctuation at its ends: "on-site" for "site". The same
  // range for most words.
  TextRange whole;
};

// No words are: picture tags, gaps ("^...^"), the label of a default comment ("[*...]" at its beginning),
// whatever has a digit in it ("2x4", "20A"), addresses of pages and of mail, shortcuts. Everything else that
// is made of the checker's word characters is; a hyphen, a slash and a period part words.
class WordScanner {
public:
  // The names of shortcuts; they count without regard to case.
  WordScanner(const SpellChecker& checker, const std::vector<Text>& shortcuts = {});

  std::vector<ScannedWord> Scan(TextView text) const;
  // The words that begin in [from, to), for a text of which a part is visible. Both are moved to blanks.
  std::vector<ScannedWord> Scan(TextView text, std::size_t from, std::size_t to) const;

private:
  void ScanToken(TextView text, TextRange token, std::vector<ScannedWord>& words) const;
  bool IsWordUnit(char16_t unit) const;
  bool IsShortcut(TextView token) const;

  const SpellChecker& m_Checker;
  std::unordered_set<Text> m_Shortcuts;  // in small letters
};

}  // namespace inspector::spell
