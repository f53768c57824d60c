// Which pairs of letters get a code: those that shorten a list of words most.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace inspector::spell {

struct CodeTables {
  std::string bytes;  // as in the file: decode entries, codes of characters, codes of pairs
  std::uint32_t side = 0;

  const std::uint8_t* Data() const { return reinterpret_cast<const std::uint8_t*>(bytes.data()); }
};

// For words in small letters. `others` holds characters that need a code as well. Nothing when there are more
// characters than codes.
std::optional<CodeTables> MakeCodeTables(const std::vector<std::string>& words, std::string_view others);

}  // namespace inspector::spell
