// A device with a dictionary of a few words.
#pragma once

#include "spell/DictionaryBuilder.h"
#include "spell/SpellChecker.h"
#include "support/TestSupport.h"

namespace inspector::spell {

inline std::string DictionaryOf(const std::vector<Text>& words) {
  DictionaryBuilder builder;
  for (const Text& word : words) EXPECT_TRUE(builder.Add(word)) << ToUtf8(word);
  std::string problem;
  const std::optional<std::string> bytes = builder.Build(problem);
  EXPECT_TRUE(bytes.has_value()) << problem;
  return bytes.value_or("");
}

class SpellFixture : public testing::Test, protected ScriptedMachine {
protected:
  static constexpr const char* kFolder = "Program Files/Brindlecove";

  // In the first folder.
  void PutDictionary(const std::vector<Text>& words) {
    m_Folder.Put(std::filesystem::path(kFolder) / "spell.dct", DictionaryOf(words));
    EXPECT_EQ(m_Checker.FindDictionary().Code(), 0);
  }
  std::filesystem::path PersonalListPath() const { return m_Folder / kFolder / "newwords.txt"; }

  SpellChecker m_Checker{m_Files, m_Paths};
};

}  // namespace inspector::spell
