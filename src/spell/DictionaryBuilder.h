// Makes a dictionary file of words. docs/dictionary-format.md has the layout.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "device/Text.h"

namespace inspector::spell {

using device::Text;
using device::TextView;

class DictionaryBuilder {
public:
  // A list of words, one a line; blanks around a word, empty lines and what follows "#" are passed over.
  // False where some cannot be stored, which Refused tells; the others are taken all the same.
  bool AddLines(std::string_view utf8);
  // One word with its capitals. False when it is longer than 256 bytes, or has a character that the code page
  // lacks, a blank or a control character.
  bool Add(TextView word);

  std::size_t Words() const { return m_Words.size(); }
  const std::vector<Text>& Refused() const { return m_Refused; }

  // The same words give the same bytes. `problem` tells why there are none: words whose characters take more
  // than the codes there are.
  std::optional<std::string> Build(std::string& problem) const;

private:
  std::set<std::string> m_Words;  // in the code page
  std::vector<Text> m_Refused;
};

}  // namespace inspector::spell
