// Text as the program holds it: 16-bit code units, converted to bytes only where it leaves the program.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace inspector::device {

using Text = std::u16string;
using TextView = std::u16string_view;

// UTF-8 <-> 16-bit text. Bytes that are no UTF-8, and surrogates without a partner, become U+FFFD; of a
// sequence that breaks off, the bytes that could have begun a character give one U+FFFD together.
Text FromUtf8(std::string_view bytes);
std::string ToUtf8(TextView text);

// Assign instead of returning, so that a loop over rows reuses the memory of `out`: nothing is allocated
// once `out` has room for one unit per byte (three bytes per unit).
void AssignUtf8(Text& out, const char* bytes, std::size_t size);
void AssignUtf8(std::string& out, TextView text);

// The small form of a letter of the Latin, Greek and Cyrillic alphabets of today; everything else is itself.
// No locale is consulted: I and i are one letter everywhere.
char16_t FoldCase(char16_t unit);
bool EqualIgnoringCase(TextView left, TextView right);
// All letters in their small form, to be a key.
Text Folded(TextView text);

// The first of the two units of a character beyond U+FFFF.
bool IsHighSurrogate(char16_t unit);
// The first `most` units at most, and no half of a character at the end.
TextView Shortened(TextView text, std::size_t most);

bool Contains(TextView text, TextView part);
// From left to right, never inside what was put in; an empty `what` changes nothing.
Text ReplaceAll(Text text, TextView what, TextView with);
// "a;b;" split at u';' gives "a", "b", "".
std::vector<Text> Split(TextView text, char16_t separator);

// The first unit, from `from` on, for which `matches` holds; npos when there is none. For long texts in which
// it seldom does: 16 units are looked at together, which a compiler makes a few instructions of.
template <typename Matches>
std::size_t FindUnit(TextView text, Matches matches, std::size_t from = 0) {
  constexpr std::size_t kBlock = 16;
  for (; from + kBlock <= text.size(); from += kBlock) {
    bool isThere = false;
    for (std::size_t n = 0; n < kBlock; ++n) isThere |= matches(text[from + n]);
    if (isThere) break;
  }
  while (from < text.size() && !matches(text[from])) ++from;
  return from < text.size() ? from : TextView::npos;
}

// The leading decimal number of a text: optional blanks and sign, then digits; no digits give 0.
// Values beyond 32 bits stop at the ends of the range.
int LeadingInteger(TextView text);
Text Decimal(int value);

// What a person enters never begins with a control character (below U+0020), because such a text sorts
// before a blank and would count as empty. Only for entry, never for text that arrives from elsewhere.
Text StripLeadingControls(TextView text);

}  // namespace inspector::device
