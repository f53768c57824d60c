#include "spell/InstalledDictionaries.h"

#include "spell/SpellFixture.h"

namespace inspector::spell {
namespace {

using Contents = std::map<std::string, std::string>;

class InstalledDictionariesTest : public SpellFixture {
protected:
  InstalledDictionariesTest() {
    for (const std::string language : {"american", "british", "french"})
      m_Shipped.Put(language + ".dct", language + " words");
    m_Shipped.Put("notes.txt", "no dictionary");
  }
  Text Place() {
    std::vector<std::filesystem::path> placed;
    const Text problem = m_Dictionaries.Place(m_Shipped.Path(), placed);
    m_Placed = placed.size();
    return problem;
  }

  TemporaryFolder m_Shipped;
  InstalledDictionaries m_Dictionaries{m_Files, m_Paths};
  std::size_t m_Placed = 0;
};

TEST_F(InstalledDictionariesTest, WhatIsMissingIsPlacedAndNothingIsReplaced) {
  EXPECT_EQ(Place(), u"");
  const Contents all = {{"Program Files/Brindlecove/american.dct", "american words"},
                        {"Program Files/Brindlecove/british.dct", "british words"},
                        {"Program Files/Brindlecove/french.dct", "french words"},
                        {"Program Files/Brindlecove/spell.dct", "american words"}};
  EXPECT_EQ(FilesBelow(m_Folder.Path()), all);
  EXPECT_EQ(m_Placed, 4u);
  m_Folder.Put("Program Files/Brindlecove/spell.dct", "an office's own");
  m_Folder.Put("Program Files/Brindlecove/french.dct", "better words");
  EXPECT_EQ(Place(), u"");
  EXPECT_EQ(m_Placed, 0u);
  EXPECT_EQ(ContentOf(m_Folder / "Program Files/Brindlecove/spell.dct"), "an office's own");
  EXPECT_EQ(m_Dictionaries.Chosen(), std::nullopt);
}

// One in the first folder would be found before the one that is in use.
TEST_F(InstalledDictionariesTest, AnotherFolderThatHasADictionaryKeepsIt) {
  m_Folder.Put("program files/Marrowtide/Spell.dct", "old words");
  EXPECT_EQ(Place(), u"");
  EXPECT_EQ(FilesBelow(m_Folder.Path()),
            (Contents{{"program files/Marrowtide/Spell.dct", "old words"},
                      {"program files/Marrowtide/american.dct", "american words"},
                      {"program files/Marrowtide/british.dct", "british words"},
                      {"program files/Marrowtide/french.dct", "french words"}}));
}

TEST_F(InstalledDictionariesTest, TheChosenLanguageIsCopiedOverTheOneInUse) {
  EXPECT_THAT(m_Dictionaries.Languages(), IsEmpty());
  EXPECT_EQ(Place(), u"");
  EXPECT_THAT(m_Dictionaries.Languages(), ElementsAre(u"american", u"british", u"french"));
  EXPECT_EQ(m_Dictionaries.Chosen(), u"american");
  EXPECT_EQ(m_Dictionaries.Choose(u"french"), u"");
  EXPECT_EQ(m_Dictionaries.Chosen(), u"french");
  EXPECT_EQ(m_Dictionaries.Choose(u"klingon").substr(0, 15), u"The dictionary ");
  m_Files.FailCommit(1);
  EXPECT_THAT(ToUtf8(m_Dictionaries.Choose(u"british")), HasSubstr("could not be written"));
  EXPECT_EQ(m_Dictionaries.Chosen(), u"french");
  EXPECT_EQ(LanguageName(u"French"), u"French");
  EXPECT_EQ(LanguageName(u"british"), u"British English");
  EXPECT_EQ(LanguageName(u"office"), u"office");
}

TEST_F(InstalledDictionariesTest, WithoutDictionariesThatIsSaid) {
  TemporaryFolder none;
  std::vector<std::filesystem::path> placed;
  EXPECT_THAT(ToUtf8(m_Dictionaries.Place(none.Path(), placed)), StartsWith("There are no dictionaries in "));
  EXPECT_THAT(placed, IsEmpty());
}

}  // namespace
}  // namespace inspector::spell
