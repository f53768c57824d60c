#include "device/WordFilter.h"

#include <algorithm>
#include <iterator>

namespace inspector::device {
namespace {

// The plain letters of U+00C0 to U+017F, position by position; '.' where a letter has none.
constexpr char kPlainLetters[] =
    "aaaaaaaceeeeiiiidnooooo.ouuuuyts"   // U+00C0
    "aaaaaaaceeeeiiiidnooooo.ouuuuyty"   // U+00E0
    "aaaaaaccccccccddddeeeeeeeeeegggg"   // U+0100
    "gggghhhhiiiiiiiiiiiijjkkklllllll"   // U+0120
    "lllnnnnnnnnnoooooooorrrrrrssssss"   // U+0140
    "ssttttttuuuuuuuuuuuuwwyyyzzzzzzs";  // U+0160
static_assert(std::size(kPlainLetters) == 0x180 - 0xC0 + 1);

// The second letter of those that are written with two; 0 for all others.
char16_t SecondLetter(char16_t unit) {
  switch (unit) {
    case 0x00C6:
    case 0x00E6:
    case 0x0152:
    case 0x0153:
      return u'e';
    case 0x00DF:
      return u's';
    default:
      return 0;
  }
}

bool IsCombiningAccent(char16_t unit) {
  return unit >= 0x0300 && unit <= 0x036F;
}

bool IsBlank(char16_t unit) {
  return unit <= u' ' || unit == 0x00A0;
}

}  // namespace

Text FoldForFilter(TextView text) {
  Text folded;
  folded.reserve(text.size());
  for (const char16_t unit : text) {
    if (unit >= 0x00C0 && unit < 0x0180 && kPlainLetters[unit - 0x00C0] != '.') {
      folded += static_cast<char16_t>(kPlainLetters[unit - 0x00C0]);
      if (const char16_t second = SecondLetter(unit)) folded += second;
    } else if (!IsCombiningAccent(unit)) {
      folded += FoldCase(unit);
    }
  }
  return folded;
}

WordFilter::WordFilter(TextView typed) {
  const Text folded = FoldForFilter(typed);
  auto from = folded.begin();
  while ((from = std::find_if_not(from, folded.end(), IsBlank)) != folded.end()) {
    const auto to = std::find_if(from, folded.end(), IsBlank);
    m_Words.emplace_back(from, to);
    from = to;
  }
}

bool WordFilter::AcceptsFolded(TextView folded) const {
  return std::all_of(m_Words.begin(), m_Words.end(),
                     [&](const Text& word) { return Contains(folded, word); });
}

bool WordFilter::IsNarrowedBy(const WordFilter& other) const {
  return std::all_of(m_Words.begin(), m_Words.end(), [&](const Text& word) {
    return std::any_of(other.m_Words.begin(), other.m_Words.end(),
                       [&](const Text& longer) { return Contains(longer, word); });
  });
}

}  // namespace inspector::device
