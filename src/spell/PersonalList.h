// The words that the inspector added: a file of lines in the code page, and all of them in memory.
#pragma once

#include <filesystem>
#include <string>
#include <unordered_set>
#include <vector>

#include "device/Files.h"
#include "spell/Letters.h"

namespace inspector::spell {

// Words are compared without regard to case, and a typographic apostrophe is a plain one.
class PersonalList {
public:
  enum class Separation { Lines, Blanks };

  // Accepts what the file holds, in addition to what is accepted already. With lines, a line is one word even
  // if it has blanks; with blanks, these end a word as well. False when there is no such file.
  bool Load(device::Files& files, const std::filesystem::path& path, Separation separation);

  // For as long as this lives; nothing is written.
  void Accept(TextView word);
  bool Accepts(TextView word) const;
  bool IsEmpty() const { return m_Words.empty(); }
  // In the order in which they were accepted, as they were written: for suggestions.
  const std::vector<Text>& Words() const { return m_InOrder; }

  // Puts the word behind what the first of the files holds that can be opened or made. Nothing in there is
  // ever cut off. False when none can, or when the word could not be written.
  static bool Append(device::Files& files, const std::vector<std::filesystem::path>& paths, TextView word);

private:
  std::unordered_set<Text> m_Words;
  std::vector<Text> m_InOrder;
};

}  // namespace inspector::spell
