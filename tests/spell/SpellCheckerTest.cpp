#include "spell/SpellChecker.h"

#include <unistd.h>
#include <csignal>
#include <thread>

#include "spell/DictionaryFormat.h"
#include "spell/SpellFixture.h"

namespace inspector::spell {
namespace {

namespace fs = std::filesystem;
using Outcome = LoadResult::Outcome;

const fs::path kFolders[] = {"Program Files/Brindlecove", "Program Files/Quenlith Inspector v5",
                             "Program Files/Marrowtide"};

class SpellCheckerTest : public SpellFixture {
protected:
  // In each folder a dictionary and a list with a word that tells which it is.
  void PutAll() {
    m_Folder.Put(kFolders[0] / "spell.dct", DictionaryOf({u"first"}));
    m_Folder.Put(kFolders[1] / "SPELL.DCT", DictionaryOf({u"second"}));
    m_Folder.Put(kFolders[2] / "spell.dct", DictionaryOf({u"third"}));
    m_Folder.Put(kFolders[0] / "newwords.txt", "one\r\n");
    m_Folder.Put(kFolders[1] / "NewWords.txt", "two\r\n");
    m_Folder.Put(kFolders[2] / "newwords.txt", "three\r\n");
  }
  // The words that are accepted of those above.
  Text Known() {
    std::vector<Text> known;
    for (const Text& word : device::Split(u"first|second|third|one|two|three", u'|'))
      if (m_Checker.Check(word)) known.push_back(word);
    return Joined(known);
  }
};

TEST_F(SpellCheckerTest, TheFirstDictionaryThatLoadsBringsTheListBesideIt) {
  PutAll();
  EXPECT_EQ(m_Checker.FindDictionary().Code(), 0);
  EXPECT_EQ(Known(), u"first|one");
}

TEST_F(SpellCheckerTest, AFolderWhoseDictionaryFailsIsPassedOver) {
  PutAll();
  m_Folder.Put(kFolders[0] / "spell.dct", "ISPL\4" + DictionaryOf({}).substr(5));
  const LoadResult result = m_Checker.FindDictionary();
  EXPECT_EQ(result.outcome, Outcome::Loaded);
  EXPECT_EQ(result.message, "ispell: wanted dict version 3, got 4\n");
  EXPECT_EQ(Known(), u"second|two");
}

TEST_F(SpellCheckerTest, ABadDictionaryEndsTheSearch) {
  PutAll();
  fs::remove(m_Folder / kFolders[0] / "spell.dct");
  std::string bad = DictionaryOf({u"second"});
  bad[12] = static_cast<char>(bad[12] + 1);
  m_Folder.Put(kFolders[1] / "SPELL.DCT", bad);
  const LoadResult result = m_Checker.FindDictionary();
  EXPECT_EQ(result.outcome, Outcome::MustStop);
  EXPECT_EQ(result.message, "bad dictionary file\n");
  EXPECT_FALSE(m_Checker.HasDictionary());
}

TEST_F(SpellCheckerTest, WithoutADictionaryNothingIsSaid) {
  const LoadResult result = m_Checker.FindDictionary();
  EXPECT_EQ(result.outcome, Outcome::Failed);
  EXPECT_EQ(result.message, "");
  EXPECT_FALSE(m_Checker.HasDictionary());
  EXPECT_FALSE(m_Checker.Check(u"roof"));
  m_Checker.Accept(u"roof");
  EXPECT_TRUE(m_Checker.Check(u"roof"));
}

TEST_F(SpellCheckerTest, AcceptedWordsCountInAnyCaseAndLengthsEnd) {
  PutDictionary({u"roof"});
  for (const Text& word : {Text(u"roof"), Text(u"ROOF")}) EXPECT_TRUE(m_Checker.Check(word));
  EXPECT_FALSE(m_Checker.Check(u"Ro\u00F6f"));
  EXPECT_FALSE(m_Checker.Check(u"\u03A9"));  // "?" in the code page
  m_Checker.Accept(u"Zirco\u2019s");
  m_Checker.Accept(u"\u00C9lan");
  for (const Text& word : {Text(u"zIRCO's"), Text(u"ZIRCO\u2019S"), Text(u"\u00E9LAN")})
    EXPECT_TRUE(m_Checker.Check(word)) << ToUtf8(word);
  m_Checker.Accept(Text(256, u'z'));
  m_Checker.Accept(Text(257, u'z'));
  EXPECT_TRUE(m_Checker.Check(Text(256, u'z')));
  EXPECT_FALSE(m_Checker.Check(Text(257, u'z')));
}

TEST_F(SpellCheckerTest, AnAddedWordIsStoredBehindTheOthers) {
  PutDictionary({u"roof"});
  EXPECT_TRUE(m_Checker.Add(u"Brindle\u00E9"));
  EXPECT_TRUE(m_Checker.Check(u"brindle\u00E9"));
  EXPECT_EQ(ContentOf(PersonalListPath()), "Brindle\xE9\r\n");
  // Ends of lines that an editor left, and none at all.
  const std::pair<const char*, const char*> rows[] = {{"old\r\n", "old\r\nnew\r\n"},
                                                      {"old\n", "old\nnew\r\n"},
                                                      {"old\r", "old\r\nnew\r\n"},
                                                      {"old", "old\r\nnew\r\n"}};
  for (const auto& [before, after] : rows) {
    m_Folder.Put(fs::path(kFolder) / "newwords.txt", before);
    EXPECT_TRUE(m_Checker.Add(u"new"));
    EXPECT_EQ(ContentOf(PersonalListPath()), after);
  }
  SpellChecker next(m_Files, m_Paths);
  next.FindDictionary();
  EXPECT_TRUE(next.Check(u"Old") && next.Check(u"NEW"));
}

TEST_F(SpellCheckerTest, AWordGoesToTheFirstFolderThatTakesIt) {
  EXPECT_FALSE(m_Checker.Add(u"none"));
  EXPECT_TRUE(m_Checker.Check(u"None"));  // accepted all the same
  fs::create_directories(m_Folder / kFolders[2]);
  EXPECT_TRUE(m_Checker.Add(u"third"));
  fs::create_directories(m_Folder / kFolders[1]);
  fs::create_directories(m_Folder / kFolders[0] / "newwords.txt");  // a folder, so it cannot be opened
  EXPECT_TRUE(m_Checker.Add(u"second"));
  EXPECT_EQ(FilesBelow(m_Folder.Path()),
            (std::map<std::string, std::string>{{kFolders[1] / "newwords.txt", "second\r\n"},
                                                {kFolders[2] / "newwords.txt", "third\r\n"}}));
}

TEST_F(SpellCheckerTest, AListMayBeSeparatedByBlanks) {
  const fs::path list = m_Folder.Put("words.txt", "soffit vent\n\n fascia\t\r\nl'eau");
  PersonalList lines;
  EXPECT_TRUE(lines.Load(m_Files, list, PersonalList::Separation::Lines));
  EXPECT_EQ(Joined(lines.Words()), u"soffit vent|fascia|l'eau");
  PersonalList blanks;
  EXPECT_TRUE(blanks.Load(m_Files, list, PersonalList::Separation::Blanks));
  EXPECT_EQ(Joined(blanks.Words()), u"soffit|vent|fascia|l'eau");
  EXPECT_FALSE(blanks.Load(m_Files, m_Folder / "missing.txt", PersonalList::Separation::Blanks));
}

// However often the program is killed while it adds words: each word that stands in the list is whole, and no
// word that was there before is gone.
TEST_F(SpellCheckerTest, AKillLeavesEveryWordOfTheList) {
  PutDictionary({});
  std::string before;
  for (int round = 0; round < 60; ++round) {
    RunUntilKilled([this, round] {
      std::thread([round] {
        ::usleep(static_cast<useconds_t>(200 + round * 97 % 4000));
        ::kill(::getpid(), SIGKILL);
      }).detach();
      for (int n = 0;; ++n)
        m_Checker.Add(FromUtf8("word-" + std::to_string(round) + "-" + std::to_string(n)));
    });
    const std::string after = fs::exists(PersonalListPath()) ? ContentOf(PersonalListPath()) : "";
    ASSERT_TRUE(after.starts_with(before));
    ASSERT_TRUE(after.empty() || after.ends_with("\r\n"));
    before = after;
  }
  EXPECT_GT(std::count(before.begin(), before.end(), '\n'), 60);
}

TEST_F(SpellCheckerTest, WordCharactersOfEveryDictionaryStay) {
  const Text characters = u"aZ\u00E9\u00C9'-0 \u03A9\u2019";
  const auto known = [&] {
    Text all;
    for (const char16_t unit : characters)
      if (m_Checker.IsWordCharacter(unit)) all += unit;
    return all;
  };
  EXPECT_EQ(known(), u"aZ");
  PutDictionary({u"caf\u00E9"});
  EXPECT_EQ(known(), u"aZ\u00E9\u00C9");
  PutDictionary({u"x-ray's"});
  EXPECT_EQ(known(), u"aZ\u00E9\u00C9'-\u2019");
}

}  // namespace
}  // namespace inspector::spell
