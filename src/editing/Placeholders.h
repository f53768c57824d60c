// The gaps of a prepared text: ^name^ to be filled from the picker of that name, ^(a,b,c)^ from the
// alternatives, ^^ with anything. A caret without a partner is a caret.
#pragma once

#include <optional>
#include <vector>

#include "data/Databases.h"
#include "editing/SheetDialogs.h"

namespace inspector::editing {

struct Placeholder {
  std::size_t at = 0;
  std::size_t length = 0;  // with both carets
  Text name;
};

// The first one at or after `from`.
std::optional<Placeholder> FindPlaceholder(TextView text, std::size_t from = 0);

// One that nobody has filled, so that a client would read the carets. What begins with a digit is an exponent
// ("8 ft^2 of 40 ft^2").
bool HasUnfilledGap(TextView text);

// What to ask for a placeholder: "Replace ^ with:" without choices for the empty name, else "Replace ^%s^
// with:" and what the picker and the parentheses offer.
ReplacementQuestion QuestionFor(data::Databases& databases, TextView name);

// Asks for one placeholder after the other. Nothing when the person cancels any of them. What is put in is
// not looked at again.
std::optional<Text> FillPlaceholders(data::Databases& databases, SheetDialogs& dialogs, TextView text);

// Whether `filled` can be what `prepared` becomes once its placeholders are filled; with words, when each
// must be filled with more than blanks.
bool IsFilledFrom(TextView filled, TextView prepared, bool withWords = false);

}  // namespace inspector::editing
