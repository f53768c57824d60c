// Abbreviations that become longer text when the word is finished.
#pragma once

#include <optional>
#include <unordered_map>
#include <vector>

#include "data/Databases.h"
#include "editing/CommentText.h"

namespace inspector::editing {

class Shortcuts {
public:
  // Reads them; make a new one when they may have changed.
  explicit Shortcuts(data::Databases& databases);

  // What finishes a word: a blank, a line end, punctuation.
  static bool EndsWord(char16_t unit);

  // The word that ends at `wordEnd`, without regard to case, replaced by what it stands for. Nothing when it
  // is no shortcut. Of two rows with the same shortcut the first counts.
  std::optional<TextChange> Expand(TextView text, std::size_t wordEnd) const;

  // In small letters, in no order.
  std::vector<Text> Names() const;

private:
  const Text* Find(TextView word) const;

  std::unordered_map<Text, Text> m_Expanded;  // by the shortcut in small letters
};

}  // namespace inspector::editing
