// How often words occur in texts: what an office writes often is what it means most.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "spell/Letters.h"

namespace inspector::spell {

// Without regard to case.
class WordCounts {
public:
  // Every run of letters, with apostrophes inside.
  void Add(TextView text);
  // A word in the code page and in small letters.
  unsigned Of(const std::string& word) const;

private:
  std::unordered_map<std::string, unsigned> m_Counts;
};

}  // namespace inspector::spell
