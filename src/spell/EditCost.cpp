#include "spell/EditCost.h"

#include <algorithm>

#include "spell/DictionaryFormat.h"
#include "spell/Letters.h"
#include "spell/SoundKey.h"

namespace inspector::spell {
namespace {

constexpr int kAccent = 20;  // a letter with another accent
constexpr int kApostropheSlip = 30;
constexpr int kHyphenSlip = 40;
constexpr int kDoubling = 45;  // one letter for two of the same, or two for one
constexpr int kSwap = 60;
constexpr int kVowel = 60;        // one vowel for another
constexpr int kNeighbour = 80;    // a key beside the one that was meant
constexpr int kSilent = 70;       // a letter that is not heard
constexpr int kFirstLetter = 40;  // on top: people know how a word begins

// The rows of a keyboard; each key touches those beside it, above and below.
constexpr std::string_view kKeyRows[] = {"qwertyuiop", "asdfghjkl", "zxcvbnm"};

constexpr std::size_t kLongestRewrite = 4;
// Lonely letters beside each other that are still looked at.
constexpr std::size_t kBand = 3;

using Rewrite = EditCost::Rewrite;
constexpr Rewrite kRewrites[] = {
    {"f", "ph", 45},      {"f", "gh", 70},      {"ph", "f", 50},      {"k", "ck", 45},
    {"ck", "k", 45},      {"c", "ck", 50},      {"ck", "c", 50},      {"k", "ch", 60},
    {"k", "qu", 80},      {"kw", "qu", 50},     {"cw", "qu", 60},     {"x", "cc", 60},
    {"ks", "x", 50},      {"cks", "x", 60},     {"x", "cks", 60},     {"sh", "ti", 60},
    {"sh", "ci", 60},     {"sh", "si", 60},     {"ti", "ci", 50},     {"ci", "ti", 50},
    {"ti", "si", 50},     {"si", "ti", 50},     {"ssi", "ti", 60},    {"ti", "ssi", 60},
    {"tr", "ctr", 70},    {"ch", "tch", 45},    {"tch", "ch", 45},    {"ch", "tu", 60},
    {"j", "dg", 55},      {"g", "dg", 55},      {"dg", "g", 55},      {"j", "g", 45},
    {"g", "j", 55},       {"z", "s", 45},       {"s", "z", 50},       {"s", "c", 50},
    {"c", "s", 50},       {"ss", "c", 60},      {"s", "sc", 50},      {"sc", "s", 50},
    {"c", "sc", 60},      {"k", "c", 45},       {"c", "k", 45},       {"q", "c", 60},
    {"k", "q", 60},       {"i", "y", 45},       {"y", "i", 45},       {"ee", "ea", 50},
    {"ea", "ee", 50},     {"ee", "ie", 50},     {"ee", "ei", 55},     {"ie", "ea", 60},
    {"ei", "ai", 55},     {"ai", "a", 60},      {"a", "ai", 60},      {"ay", "ai", 50},
    {"ey", "y", 50},      {"y", "ey", 50},      {"ie", "y", 55},      {"y", "ie", 55},
    {"ys", "ies", 45},    {"ies", "ys", 50},    {"ies", "y", 80},     {"u", "ou", 60},
    {"ou", "u", 60},      {"oo", "u", 60},      {"u", "oo", 60},      {"ow", "ou", 55},
    {"ou", "ow", 55},     {"o", "oa", 60},      {"o", "au", 60},      {"au", "o", 60},
    {"aw", "au", 50},     {"au", "aw", 50},     {"er", "re", 50},     {"re", "er", 50},
    {"er", "or", 45},     {"or", "er", 45},     {"er", "ar", 45},     {"ar", "er", 45},
    {"or", "ar", 50},     {"ar", "or", 50},     {"er", "our", 60},    {"or", "our", 50},
    {"our", "or", 50},    {"er", "ur", 50},     {"ur", "er", 50},     {"ir", "er", 50},
    {"er", "ir", 50},     {"ur", "ir", 55},     {"le", "al", 50},     {"al", "le", 50},
    {"el", "le", 45},     {"le", "el", 45},     {"el", "al", 45},     {"al", "el", 45},
    {"il", "le", 55},     {"il", "al", 55},     {"us", "ous", 50},    {"ous", "us", 55},
    {"shun", "tion", 60}, {"shun", "sion", 60}, {"shon", "tion", 60}, {"able", "ible", 40},
    {"ible", "able", 40}, {"ance", "ence", 40}, {"ence", "ance", 40}, {"ant", "ent", 40},
    {"ent", "ant", 40},   {"ly", "lly", 45},    {"aly", "ally", 40},  {"icly", "ically", 60},
    {"n", "kn", 55},      {"n", "gn", 55},      {"r", "wr", 55},      {"r", "rh", 45},
    {"rr", "rrh", 55},    {"m", "mb", 55},      {"m", "mn", 55},      {"t", "bt", 60},
    {"t", "ght", 60},     {"t", "pt", 75},      {"ite", "ight", 60},  {"w", "wh", 45},
    {"wh", "w", 55},      {"t", "d", 80},       {"d", "t", 80},       {"t", "ed", 80},
    {"v", "f", 75},       {"f", "v", 75},       {"t", "te", 60},      {"gh", "g", 55},
    {"g", "gh", 55},      {"gu", "g", 55},      {"g", "gu", 55},      {"ul", "le", 60},
    {"uff", "ough", 60},  {"off", "ough", 70},  {"oe", "oo", 70},     {"in", "en", 50},
    {"en", "in", 50},     {"im", "em", 55},     {"un", "in", 70},     {"in", "un", 75},
    {"ei", "ie", 40},     {"ie", "ei", 40},     {"di", "de", 50},     {"de", "di", 50},
    {"pre", "per", 50},   {"per", "pre", 50},   {"th", "t", 70},      {"t", "th", 60},
    {"ed", "d", 60},      {"d", "ed", 60},      {"air", "ere", 70},   {"are", "air", 70},
    {"ier", "ere", 60},   {"ew", "ue", 60},     {"ue", "ew", 60},     {"ew", "ui", 70},
    {"oo", "ui", 70},     {"u", "ui", 60},      {"oy", "oi", 50},     {"oi", "oy", 50},
};

std::size_t Index(char letter) {
  return static_cast<std::uint8_t>(letter);
}

bool IsVowel(char letter) {
  return letter == 'a' || letter == 'e' || letter == 'i' || letter == 'o' || letter == 'u' || letter == 'y';
}

// What it costs to type one letter for another, and which rewrites end in a letter.
struct Tables {
  Tables() {
    for (auto& row : replace) row.fill(EditCost::kSlip);
    const std::string_view vowels = "aeiouy";
    for (const char one : vowels)
      for (const char other : vowels) At(one, other) = kVowel;
    for (std::size_t row = 0; row < std::size(kKeyRows); ++row) {
      for (std::size_t key = 0; key < kKeyRows[row].size(); ++key) {
        Near(kKeyRows[row][key], row, key + 1);
        Near(kKeyRows[row][key], row + 1, key);
        if (key > 0) Near(kKeyRows[row][key], row + 1, key - 1);
      }
    }
    for (const Rewrite& rewrite : kRewrites) {
      if (rewrite.typed.size() == 1 && rewrite.meant.size() == 1)
        At(rewrite.typed[0], rewrite.meant[0]) =
            std::min<int>(At(rewrite.typed[0], rewrite.meant[0]), rewrite.cost);
      else
        endingIn[static_cast<std::uint8_t>(rewrite.typed.back())].push_back(&rewrite);
    }
    for (std::size_t letter = 0; letter < 256; ++letter) replace[letter][letter] = 0;
  }

  std::uint8_t& At(char typed, char meant) {
    return replace[static_cast<std::uint8_t>(typed)][static_cast<std::uint8_t>(meant)];
  }
  void Near(char key, std::size_t row, std::size_t at) {
    if (row >= std::size(kKeyRows) || at >= kKeyRows[row].size()) return;
    const char other = kKeyRows[row][at];
    At(key, other) = std::min<std::uint8_t>(At(key, other), kNeighbour);
    At(other, key) = std::min<std::uint8_t>(At(other, key), kNeighbour);
  }

  std::array<std::array<std::uint8_t, 256>, 256> replace;
  std::array<std::vector<const Rewrite*>, 256> endingIn;
};

const Tables& CostTables() {
  static const Tables kTables;
  return kTables;
}

// Of a letter that stands in one of the words only.
int LonelyCost(std::string_view letters, std::size_t at) {
  const char letter = letters[at];
  if (letter == kApostrophe) return kApostropheSlip;
  if (letter == '-' || letter == ' ') return kHyphenSlip;
  if ((at > 0 && letters[at - 1] == letter) || (at + 1 < letters.size() && letters[at + 1] == letter))
    return kDoubling;
  const int first = at == 0 ? kFirstLetter : 0;
  if (letter == 'e' || letter == 'h' || IsVowel(letter)) return kSilent + first;
  return EditCost::kSlip - 10 + first;
}

}  // namespace

EditCost::EditCost(std::string_view typed) : m_Typed(typed.substr(0, kMostWordBytes)), m_Plain(m_Typed) {
  std::transform(m_Plain.begin(), m_Plain.end(), m_Plain.begin(), PlainLetter);
  m_Dropped.resize(m_Plain.size() + 1);
  m_Ways.resize(m_Plain.size() + 1);
  for (std::size_t row = 1; row <= m_Plain.size(); ++row) {
    m_Dropped[row] = LonelyCost(m_Plain, row - 1);
    const std::string_view before = std::string_view(m_Plain).substr(0, row);
    for (const Rewrite* way : CostTables().endingIn[Index(m_Plain[row - 1])])
      if (before.ends_with(way->typed)) m_Ways[row].push_back(way);
  }
}

int EditCost::Of(std::string_view word, int most) {
  const Tables& tables = CostTables();
  const std::size_t rows = m_Plain.size() + 1;
  const std::size_t width = word.size() + 1;
  m_PlainWord.resize(word.size());
  m_Added.resize(width);
  for (std::size_t at = 0; at < word.size(); ++at) m_PlainWord[at] = PlainLetter(word[at]);
  for (std::size_t at = 0; at < word.size(); ++at) m_Added[at + 1] = LonelyCost(m_PlainWord, at);
  const std::string_view typed = m_Plain;
  const std::string_view meant = m_PlainWord;
  if (m_Cells.size() < rows * width) m_Cells.resize(rows * width);
  // Further from the diagonal there are more lonely letters than anything may cost.
  const std::size_t band = kBand + (rows > width ? rows - width : width - rows);
  std::array<int, kLongestRewrite> lowest{};  // of the last rows, which a rewrite may come from
  for (std::size_t row = 0; row < rows; ++row) {
    int* const here = m_Cells.data() + row * width;
    const int* const above = here - width;
    const std::size_t begin = row > band ? row - band : 0;
    const std::size_t end = std::min(width, row + band + 1);
    std::fill(here, here + begin, kTooMuch);
    std::fill(here + end, here + width, kTooMuch);
    const auto replaced = row > 0 ? tables.replace[Index(typed[row - 1])].data() : nullptr;
    int low = kTooMuch;
    for (std::size_t at = begin; at < end; ++at) {
      int best = row == 0 && at == 0 ? 0 : kTooMuch;
      if (at > begin) best = std::min(best, here[at - 1] + m_Added[at]);
      if (row > 0) best = std::min(best, above[at] + m_Dropped[row]);
      if (row > 0 && at > 0) {
        int slip = replaced[Index(meant[at - 1])];
        if (slip == 0 && m_Typed[row - 1] != word[at - 1]) slip = kAccent;
        if (slip > kAccent && row == 1 && at == 1) slip += kFirstLetter;
        best = std::min({best, above[at - 1] + slip, SwapCost(row, at)});
        for (const Rewrite* way : m_Ways[row]) best = std::min(best, RewriteCost(*way, row, at));
      }
      here[at] = best;
      low = std::min(low, best);
    }
    std::rotate(lowest.begin(), lowest.begin() + 1, lowest.end());
    lowest.back() = low;
    if (*std::min_element(lowest.begin(), lowest.end()) > most) return kTooMuch;
  }
  const int cost = m_Cells[rows * width - 1];
  return cost <= most ? cost : kTooMuch;
}

int EditCost::SwapCost(std::size_t row, std::size_t at) const {
  if (row < 2 || at < 2) return kTooMuch;
  const char one = m_Plain[row - 1];
  const char other = m_PlainWord[at - 1];
  if (one == other || one != m_PlainWord[at - 2] || m_Plain[row - 2] != other) return kTooMuch;
  return m_Cells[(row - 2) * (m_PlainWord.size() + 1) + at - 2] + kSwap +
         (row == 2 && at == 2 ? kFirstLetter / 2 : 0);
}

int EditCost::RewriteCost(const Rewrite& way, std::size_t row, std::size_t at) const {
  const std::size_t length = way.meant.size();
  if (at < length || m_PlainWord[at - 1] != way.meant.back() ||
      std::string_view(m_PlainWord).substr(at - length, length) != way.meant)
    return kTooMuch;
  return m_Cells[(row - way.typed.size()) * (m_PlainWord.size() + 1) + at - length] + way.cost;
}

}  // namespace inspector::spell
