// Finding by typing: every word typed must occur somewhere, in any order, whatever its case and accents.
#pragma once

#include <vector>

#include "device/Text.h"

namespace inspector::device {

// The form in which texts are compared: small letters without accents. Long lists keep it beside the text.
Text FoldForFilter(TextView text);

// An empty filter, or one of blanks only, accepts everything.
class WordFilter {
public:
  WordFilter() = default;
  explicit WordFilter(TextView typed);

  bool IsEmpty() const { return m_Words.empty(); }
  bool Accepts(TextView text) const { return IsEmpty() || AcceptsFolded(FoldForFilter(text)); }
  // `folded` comes from FoldForFilter. Parts of one row are joined by a line end, which no word holds.
  bool AcceptsFolded(TextView folded) const;
  // The other asks for at least as much: what this one refused, the other would refuse too.
  bool IsNarrowedBy(const WordFilter& other) const;

private:
  std::vector<Text> m_Words;
};

}  // namespace inspector::device
