// Which words share a beginning: "house", "houses" and "housing" are "hous" with a set of three endings. The
// dictionary stores beginnings and the number of their set.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace inspector::spell {

struct WordStem {
  std::string stem;  // with its capitals
  std::size_t set = 0;
};

struct EndingSets {
  std::vector<std::string> endings;
  std::vector<std::vector<std::size_t>> sets;  // of numbers of endings, ascending
  std::vector<WordStem> stems;
};

// Divides words (in the code page, each once) so that every word is one stem with one ending of its set, and
// no other word comes of it. Endings have no capitals and none behind them. The same words always give the
// same.
EndingSets DivideWords(std::vector<std::string> words);

}  // namespace inspector::spell
