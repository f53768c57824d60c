// What somebody may have meant by a misspelt word.
#pragma once

#include <memory>
#include <vector>

#include "spell/SpellChecker.h"
#include "spell/WordCounts.h"
#include "spell/WordTable.h"

namespace inspector::spell {

class Suggestions {
public:
  static constexpr std::size_t kMost = 8;

  // `common` tells which words are meant more often than others: those of the comment library.
  explicit Suggestions(const SpellChecker& checker, WordCounts common = {})
      : m_Checker(checker), m_Common(std::move(common)) {}

  // The likeliest first, each spelt correctly and in the case of the misspelt word; none without a
  // dictionary. The first call for a dictionary takes some hundredths of a second longer.
  std::vector<Text> For(TextView misspelt, std::size_t most = kMost);

private:
  class Search;

  const SpellChecker& m_Checker;
  WordCounts m_Common;
  std::unique_ptr<const WordTable> m_Table;
  int m_Generation = 0;  // of the dictionary in the table
};

}  // namespace inspector::spell
