#include "spell/DictionaryFile.h"

#include <random>

#include "device/CodePage.h"
#include "spell/DictionaryFormat.h"
#include "spell/SpellFixture.h"

namespace inspector::spell {
namespace {

using Outcome = LoadResult::Outcome;

void Put32(std::string& bytes, std::size_t at, std::uint32_t value) {
  std::string number;
  Append32(number, value);
  bytes.replace(at, number.size(), number);
}

class DictionaryFileTest : public testing::Test {
protected:
  LoadResult Load(const std::string& bytes) {
    return m_Dictionary.Load(m_Files, m_Folder.Put("spell.dct", bytes));
  }
  bool Accepts(TextView word) { return m_Dictionary.Accepts(device::ToCodePage(word)); }

  TemporaryFolder m_Folder;
  FaultyFiles m_Files;
  DictionaryFile m_Dictionary;
};

TEST_F(DictionaryFileTest, TheCaseOfAnEntrySaysHowItMayBeWritten) {
  ASSERT_EQ(Load(DictionaryOf({u"soffit", u"soffits", u"soffit's", u"Texas", u"GFCI", u"GFCIs", u"McAllen",
                               u"pH", u"a", u"I", u"O'Brien", u"x-ray", u"fa\u00E7ade", u"\u00C9cole",
                               u"polish", u"Polish", u"U"}))
                .Code(),
            0);
  struct Row {
    const char16_t* accepted;
    const char16_t* refused;
  };
  const Row rows[] = {
      {u"soffit Soffit SOFFIT soffits Soffits SOFFITS soffit's SOFFIT'S soffit\u2019s",
       u"sOffit SOffit soffiT SOFFITs soffi soffit' offit"},
      {u"Texas TEXAS", u"texas TEXas tEXAS"},
      {u"GFCI GFCIs GFCIS", u"gfci Gfci gfcis GfCI GFCiS"},
      {u"McAllen MCALLEN", u"mcallen Mcallen MCAllen"},
      {u"pH PH", u"ph Ph"},
      {u"a A I O'Brien O'BRIEN U", u"i O'brien o'brien u"},
      {u"x-ray X-ray X-RAY", u"x-Ray X-Ray"},
      {u"fa\u00E7ade Fa\u00E7ade FA\u00C7ADE \u00C9cole \u00C9COLE", u"facade FA\u00E7ADE \u00E9cole"},
      {u"polish Polish POLISH", u"pOlish"},
  };
  for (const Row& row : rows) {
    for (const Text& word : device::Split(row.accepted, u' ')) EXPECT_TRUE(Accepts(word)) << ToUtf8(word);
    for (const Text& word : device::Split(row.refused, u' ')) EXPECT_FALSE(Accepts(word)) << ToUtf8(word);
  }
  EXPECT_FALSE(Accepts(u""));
  EXPECT_FALSE(Accepts(Text(300, u'a')));
}

TEST_F(DictionaryFileTest, TheLongestWordsAndLettersWithoutPairsAreKept) {
  Text longest;
  for (int n = 0; n < 255; ++n) longest += static_cast<char16_t>(n % 2 ? 0xE0 + n % 23 : u'a' + n % 26);
  const Text other = longest.substr(0, 120) + u"B" + longest.substr(120, 100);
  ASSERT_EQ(Load(DictionaryOf({longest, other})).Code(), 0);
  EXPECT_TRUE(Accepts(longest));
  EXPECT_TRUE(Accepts(other));
  EXPECT_FALSE(Accepts(longest.substr(0, 254)));
  EXPECT_FALSE(Accepts(longest + u"a"));
  EXPECT_THAT(m_Dictionary.FindFaults(), IsEmpty());
}

TEST_F(DictionaryFileTest, AnEmptyDictionaryAcceptsNothing) {
  ASSERT_EQ(Load(DictionaryOf({})).Code(), 0);
  EXPECT_FALSE(Accepts(u"a"));
}

TEST_F(DictionaryFileTest, WordCharactersAreThoseOfTheWordsInBothCases) {
  ASSERT_EQ(Load(DictionaryOf({u"caf\u00E9's"})).Code(), 0);
  std::string characters;
  for (unsigned code = 0; code < 256; ++code)
    if (m_Dictionary.IsWordCharacter(static_cast<std::uint8_t>(code))) characters += static_cast<char>(code);
  EXPECT_EQ(characters, "'ACFSacfs\x92\xC9\xE9");
}

// What the header says, against what the file has.
TEST_F(DictionaryFileTest, AFileThatIsNoneFailsInTheFixedWords) {
  const std::string good = DictionaryOf({u"ridge", u"ridges", u"Texas"});
  const std::uint32_t side = Read32(reinterpret_cast<const std::uint8_t*>(good.data()) + 8);
  const auto with = [&good](std::size_t at, std::uint32_t value) {
    std::string bytes = good;
    Put32(bytes, at, value);
    return bytes;
  };
  struct Row {
    const char* what;
    std::string bytes;
    Outcome outcome;
    std::string message;
  };
  const Row rows[] = {
      {"good", good, Outcome::Loaded, ""},
      {"more behind it", good + "more", Outcome::Loaded, ""},
      {"nothing", "", Outcome::Failed, ""},
      {"half a header", good.substr(0, 40), Outcome::Failed, ""},
      {"other magic", "JSPL" + good.substr(4), Outcome::Failed, ""},
      {"version 4", with(4, 4), Outcome::Failed, "ispell: wanted dict version 3, got 4\n"},
      {"version -1", with(4, 0xFFFFFFFF), Outcome::Failed, "ispell: wanted dict version 3, got -1\n"},
      {"larger side", with(8, side + 1), Outcome::MustStop, "bad dictionary file\n"},
      {"no side", with(8, 0), Outcome::MustStop, "bad dictionary file\n"},
      {"longer tables", with(12, 70000), Outcome::MustStop, "bad dictionary file\n"},
      {"side beyond the file", with(8, 0xFFFFFFFF), Outcome::Failed, ""},
      {"tables cut off", good.substr(0, 300), Outcome::Failed, ""},
      {"slots beyond 16 bits", with(16, 70000), Outcome::Failed, ""},
      {"slots beyond the file", with(16, 60000), Outcome::Failed, ""},
      {"store beyond the file", with(20, 0xFFFFFFF0), Outcome::Failed, ""},
      {"one byte cut off", good.substr(0, good.size() - 1), Outcome::Failed, ""},
  };
  for (const Row& row : rows) {
    DictionaryFile dictionary;
    const LoadResult result = dictionary.Load(m_Files, m_Folder.Put("spell.dct", row.bytes));
    EXPECT_EQ(result.outcome, row.outcome) << row.what;
    EXPECT_EQ(result.message, row.message) << row.what;
    EXPECT_EQ(result.Code(), row.outcome == Outcome::Loaded ? 0 : -1) << row.what;
    EXPECT_EQ(dictionary.IsLoaded(), row.outcome == Outcome::Loaded) << row.what;
  }
  EXPECT_EQ(m_Dictionary.Load(m_Files, m_Folder / "missing.dct").outcome, Outcome::Failed);
}

TEST_F(DictionaryFileTest, WhatWasLoadedStaysWhenAnotherFails) {
  const std::string good = DictionaryOf({u"ridge"});
  ASSERT_EQ(Load(good).Code(), 0);
  EXPECT_EQ(Load(good.substr(0, 500)).Code(), -1);
  m_Files.FailRead(2);
  EXPECT_EQ(Load(DictionaryOf({u"eave"})).Code(), -1);
  EXPECT_TRUE(Accepts(u"ridge"));
  ASSERT_EQ(Load(DictionaryOf({u"eave"})).Code(), 0);
  EXPECT_FALSE(Accepts(u"ridge"));
}

// A file that claims gigabytes: sparse, so that it has them.
TEST_F(DictionaryFileTest, AStoreThatNoDeviceHoldsIsNotAllocated) {
  std::string good = DictionaryOf({u"ridge"});
  Put32(good, 20, 0xF0000000);
  const std::filesystem::path path = m_Folder.Put("spell.dct", good);
  std::filesystem::resize_file(path, 0xF0000000 + good.size());
  const LoadResult result = m_Dictionary.Load(m_Files, path);
  EXPECT_EQ(result.outcome, Outcome::Failed);
  EXPECT_THAT(result.message, AllOf(StartsWith("out of memory: can't allocate 40265"), EndsWith(" bytes\n")));
}

// Whatever a store holds, a question about it ends and stays within it; the sanitizers look on.
TEST_F(DictionaryFileTest, NoBytesLeadAstray) {
  std::vector<Text> words = {u"Texas", u"GFCI", u"McAllen", u"\u00E9gout"};
  for (const char16_t* stem : {u"vent", u"roof", u"drain", u"shingl", u"gutter", u"flash"})
    for (const char16_t* ending : {u"", u"s", u"ed", u"ing", u"'s"}) words.push_back(Text(stem) + ending);
  const std::string good = DictionaryOf(words);
  std::mt19937 random(20);
  for (int round = 0; round < 300; ++round) {
    std::string bytes = good;
    // Behind the header, since what is wrong there is refused.
    for (unsigned n = 1 + random() % 8; n > 0; --n) {
      const std::size_t at = kHeaderBytes + random() % (bytes.size() - kHeaderBytes);
      bytes[at] = static_cast<char>(random() % 3 == 0 ? 0xFF : random());
    }
    ASSERT_EQ(Load(bytes).Code(), 0);
    for (const Text& word : words) Accepts(word);
    std::size_t size = 0;
    m_Dictionary.ForEachWord([&size](std::string_view word) { size += word.size(); });
    m_Dictionary.FindFaults();
  }
}

TEST_F(DictionaryFileTest, FaultsInAFileAreFound) {
  const std::string good = DictionaryOf({u"ridge", u"eave", u"hip", u"valley", u"rake", u"gable", u"dormer"});
  ASSERT_EQ(Load(good).Code(), 0);
  EXPECT_THAT(m_Dictionary.FindFaults(), IsEmpty());
  std::string bytes = good;
  bytes.back() = static_cast<char>(bytes.back() + 1);  // a letter of the last word
  ASSERT_EQ(Load(bytes).Code(), 0);
  EXPECT_THAT(m_Dictionary.FindFaults(), Not(IsEmpty()));
  bytes = good;
  Put32(bytes, 16, 0);
  ASSERT_EQ(Load(bytes).Code(), 0);
  EXPECT_THAT(m_Dictionary.FindFaults(), SizeIs(1));
}

}  // namespace
}  // namespace inspector::spell
