// Marks in comments that are no words of the inspector's: where they begin and end. What they mean is told by
// editing/PictureTags and editing/Placeholders.
#pragma once

#include <optional>

#include "device/Text.h"

namespace inspector::device {

// In 16-bit units.
struct TextRange {
  std::size_t at = 0;
  std::size_t length = 0;

  std::size_t End() const { return at + length; }
  bool operator==(const TextRange&) const = default;
};

// From three asterisks to the next three, with both.
inline constexpr TextView kTagMark = u"***";
std::optional<TextRange> FindTagRange(TextView text, std::size_t from = 0);

// From a caret to the next one, with both.
inline constexpr char16_t kCaret = u'^';
std::optional<TextRange> FindCaretRange(TextView text, std::size_t from = 0);

// Whether what stands between two carets is a gap to fill; what begins with a digit is an exponent ("8 ft^2
// of 40 ft^2").
bool IsGapName(TextView between);

}  // namespace inspector::device
