// How likely somebody who meant one word has typed another: the cheaper, the likelier.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace inspector::spell {

// Costs are in hundredths of an ordinary slip: a letter too many, too few or another one.
class EditCost {
public:
  static constexpr int kSlip = 100;
  static constexpr int kTooMuch = 1 << 20;

  // A word in small letters of the code page, at most 256 bytes; a longer one is cut.
  explicit EditCost(std::string_view typed);

  // Of having meant `word`, in small letters too; kTooMuch when that is more than `most`.
  int Of(std::string_view word, int most);

  // What is heard alike: letters that were typed, and those that were meant.
  struct Rewrite {
    std::string_view typed;
    std::string_view meant;
    int cost;
  };

private:
  int SwapCost(std::size_t row, std::size_t at) const;
  int RewriteCost(const Rewrite& way, std::size_t row, std::size_t at) const;

  std::string m_Typed;
  std::string m_Plain;                              // the same without accents
  std::vector<int> m_Dropped;                       // cost of each letter (from 1) that the word lacks
  std::vector<std::vector<const Rewrite*>> m_Ways;  // the rewrites that end at each letter

  std::string m_PlainWord;
  std::vector<int> m_Added;  // cost of each letter of the word that was not typed
  std::vector<int> m_Cells;  // typed letters by letters of the word; kept for the next word
};

}  // namespace inspector::spell
