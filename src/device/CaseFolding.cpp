#include <algorithm>
#include <iterator>

#include "device/Text.h"

namespace inspector::device {
namespace {

// Letters `first`, `first` + `stride`, ... up to `last` have their small form `distance` further on.
struct CaseRange {
  char16_t first;
  char16_t last;
  int stride;
  int distance;
};

// Ascending. Forms that stand for the same letter inside or at the end of a word (long s, final sigma), and
// the micro sign, fold as well. Not here: phonetic letters, classical Greek, and the dotted and dotless i,
// whose other case is one letter in Turkish and another everywhere else.
constexpr CaseRange kCaseRanges[] = {
    {0x00B5, 0x00B5, 1, 775},                            // micro sign
    {0x00C0, 0x00D6, 1, 32},                             // Western European
    {0x00D8, 0x00DE, 1, 32},    {0x0100, 0x012E, 2, 1},  // Central European
    {0x0132, 0x0136, 2, 1},     {0x0139, 0x0147, 2, 1},    {0x014A, 0x0176, 2, 1},
    {0x0178, 0x0178, 1, -121},                              // Y with diaeresis
    {0x0179, 0x017D, 2, 1},     {0x017F, 0x017F, 1, -268},  // long s
    {0x018F, 0x018F, 1, 202},                               // Azerbaijani schwa
    {0x01A0, 0x01A0, 1, 1},                                 // Vietnamese horned O and U
    {0x01AF, 0x01AF, 1, 1},     {0x01CD, 0x01DB, 2, 1},     // vowels with caron
    {0x01DE, 0x01EE, 2, 1},     {0x01F8, 0x021E, 2, 1},     // Romanian, South Slavic
    {0x0222, 0x0232, 2, 1},     {0x0386, 0x0386, 1, 38},    // Greek with tonos
    {0x0388, 0x038A, 1, 37},    {0x038C, 0x038C, 1, 64},   {0x038E, 0x038F, 1, 63},
    {0x0391, 0x03A1, 1, 32},                             // Greek
    {0x03A3, 0x03AB, 1, 32},    {0x03C2, 0x03C2, 1, 1},  // final sigma
    {0x0400, 0x040F, 1, 80},                             // Cyrillic
    {0x0410, 0x042F, 1, 32},    {0x0460, 0x0480, 2, 1},    {0x048A, 0x04BE, 2, 1},
    {0x04C0, 0x04C0, 1, 15},    {0x04C1, 0x04CD, 2, 1},    {0x04D0, 0x052E, 2, 1},
    {0x1E00, 0x1E94, 2, 1},      // Welsh, Celtic, transliterations
    {0x1E9E, 0x1E9E, 1, -7615},  // capital sharp s
    {0x1EA0, 0x1EFE, 2, 1},      // Vietnamese
};

}  // namespace

char16_t FoldCase(char16_t unit) {
  if (unit < 0x80) return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
  const auto range = std::lower_bound(std::begin(kCaseRanges), std::end(kCaseRanges), unit,
                                      [](const CaseRange& r, char16_t u) { return r.last < u; });
  if (range == std::end(kCaseRanges) || unit < range->first || (unit - range->first) % range->stride != 0) {
    return unit;
  }
  return static_cast<char16_t>(unit + range->distance);
}

}  // namespace inspector::device
