// Changes of a comment's text, as single edits: a screen applies each to its text field as one step that undo
// takes back.
#pragma once

#include "device/Text.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

// Anything but blanks, tabs and line ends.
bool HasWords(TextView text);

// A gap that nobody has filled, outside of picture tags.
bool HasGapInComment(TextView text);

// Positions in code units. A caret is a selection whose ends meet; a fresh one stands at the beginning.
struct TextSelection {
  std::size_t begin = 0;
  std::size_t end = 0;
};

struct TextChange {
  std::size_t at = 0;
  std::size_t length = 0;  // of what is replaced
  Text replacement;

  // Where the caret stands afterwards.
  std::size_t CaretAfter() const { return at + replacement.size(); }
  void ApplyTo(Text& text) const { text.replace(at, length, replacement); }
};

// Puts a comment at the caret, with the separator between it and the text on either side. What is selected
// stays: the comment follows it.
TextChange InsertComment(TextView text, const TextSelection& selection, TextView comment, TextView separator);

// Puts a picture's tag, which begins with its blank, at the end.
TextChange AppendTag(TextView text, TextView tag);

}  // namespace inspector::editing
