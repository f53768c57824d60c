// The dictionaries that the build makes, against the lists of words that they are made of.
#include "spell/DictionaryBuilder.h"

#include <random>
#include <unordered_set>

#include "device/CodePage.h"
#include "spell/DictionaryFile.h"
#include "spell/Letters.h"
#include "spell/SpellFixture.h"

namespace inspector::spell {
namespace {

constexpr std::uint64_t kMostListBytes = 16u << 20;
const std::string kWordLists = INSPECTOR_WORD_LISTS;
const std::string kTradeLists = INSPECTOR_SOURCE_DIR "/assets/words/";

struct Language {
  const char* name;
  std::vector<std::string> lists;
};

// A list of words and the case rules, written down without regard to speed.
class PlainSet {
public:
  explicit PlainSet(const std::vector<std::string>& lists) {
    device::HostFiles files;
    for (const std::string& list : lists) {
      for (const Text& line :
           device::Split(FromUtf8(device::ReadWhole(files, list, kMostListBytes).value_or("")), u'\n')) {
        if (!line.empty() && line.front() != u'#') m_Words.insert(device::ToCodePage(line));
      }
    }
    for (const std::string& word : m_Words) {
      m_Upper.insert(Letters::UpperAll(word));
      m_PlainSize += word.size() + 1;
    }
  }

  bool Accepts(const std::string& word) const {
    if (m_Words.contains(word)) return true;
    if (Letters::UpperAll(word) == word && m_Upper.contains(word)) return true;
    // Capitalised: one capital, the first letter, of a word that has none.
    std::string lower = Letters::LowerAll(word);
    if (!m_Words.contains(lower)) return false;
    const auto first = std::find_if(lower.begin(), lower.end(), Letters::IsSmall);
    if (first != lower.end()) *first = Letters::Upper(*first);
    return lower == word;
  }
  const std::unordered_set<std::string>& Words() const { return m_Words; }
  std::size_t PlainSize() const { return m_PlainSize; }

private:
  std::unordered_set<std::string> m_Words;
  std::unordered_set<std::string> m_Upper;
  std::size_t m_PlainSize = 0;
};

class DictionaryBuilderTest : public testing::TestWithParam<Language> {
protected:
  void SetUp() override {
    m_Path = INSPECTOR_DICTIONARIES + std::string("/") + GetParam().name + ".dct";
    ASSERT_EQ(m_Dictionary.Load(m_Files, m_Path).Code(), 0);
  }

  device::HostFiles m_Files;
  std::string m_Path;
  DictionaryFile m_Dictionary;
  PlainSet m_Plain{GetParam().lists};
};

INSTANTIATE_TEST_SUITE_P(
    , DictionaryBuilderTest,
    testing::Values(Language{"american", {kWordLists + "/american-english", kTradeLists + "trade.txt"}},
                    Language{"british", {kWordLists + "/british-english", kTradeLists + "trade.txt"}},
                    Language{"canadian", {kWordLists + "/canadian-english", kTradeLists + "trade.txt"}},
                    Language{"french",
                             {kWordLists + "/french", kTradeLists + "french-elisions.txt",
                              kTradeLists + "french-trade.txt"}}),
    [](const auto& test) { return test.param.name; });

TEST_P(DictionaryBuilderTest, ItHasTheWordsOfItsListsAndNoOther) {
  EXPECT_GT(m_Plain.Words().size(), 100000u);
  std::unordered_set<std::string> words;
  m_Dictionary.ForEachWord([&words](std::string_view word) {
    EXPECT_TRUE(words.emplace(word).second) << word << " is there twice";
  });
  EXPECT_EQ(words, m_Plain.Words());
  for (const std::string& word : m_Plain.Words()) {
    EXPECT_TRUE(m_Dictionary.Accepts(word)) << word;
    EXPECT_TRUE(m_Dictionary.Accepts(Letters::UpperAll(word))) << word;
  }
}

// Words as somebody mistypes them, in all cases.
TEST_P(DictionaryBuilderTest, AlteredWordsAreJudgedAsThePlainListJudgesThem) {
  std::vector<std::string> words(m_Plain.Words().begin(), m_Plain.Words().end());
  std::sort(words.begin(), words.end());
  std::mt19937 random(7);
  const auto below = [&random](std::size_t end) { return static_cast<std::size_t>(random()) % end; };
  int accepted = 0;
  for (int n = 0; n < 100000; ++n) {
    std::string word = words[below(words.size())];
    const std::string& donor = words[below(words.size())];
    const std::size_t at = below(word.size());
    switch (below(9)) {
      case 0:
        word[at] = donor[below(donor.size())];
        break;
      case 1:
        word.erase(at, 1);
        break;
      case 2:
        word.insert(at, 1, donor[below(donor.size())]);
        break;
      case 3:
        if (at > 0) std::swap(word[at], word[at - 1]);
        break;
      case 4:
        word = Letters::UpperAll(word);
        break;
      case 5:
        word[0] = Letters::Upper(word[0]);
        break;
      case 6:
        word = Letters::LowerAll(word);
        break;
      case 7:
        word[at] = Letters::Upper(word[at]);
        break;
      // A beginning with the ending of another word: what the endings of stems might make up.
      default:
        word = word.substr(0, at + 1) + donor.substr(donor.size() - std::min<std::size_t>(3, donor.size()));
    }
    accepted += m_Plain.Accepts(word);
    ASSERT_EQ(m_Dictionary.Accepts(word), m_Plain.Accepts(word)) << word;
  }
  EXPECT_GT(accepted, 10000);
  EXPECT_LT(accepted, 90000);
}

TEST_P(DictionaryBuilderTest, ItIsSmall) {
  EXPECT_LE(m_Dictionary.Slots(), 16384u);
  EXPECT_LE(2 * std::filesystem::file_size(m_Path), m_Plain.PlainSize());
  EXPECT_THAT(m_Dictionary.FindFaults(), IsEmpty());
}

TEST(WordSourcesTest, TheTradeHasWordsThatGeneralListsLack) {
  const auto added = [](const char* general, const char* trade) {
    const PlainSet known({kWordLists + general});
    const PlainSet own({kTradeLists + trade});
    return std::count_if(own.Words().begin(), own.Words().end(),
                         [&](const std::string& word) { return !known.Words().contains(word); });
  };
  EXPECT_GE(added("/american-english", "trade.txt"), 800);
  EXPECT_GE(added("/french", "french-trade.txt"), 120);
}

TEST(WordSourcesTest, LinesAreWordsAndWhatNoEntryHoldsIsRefused) {
  DictionaryBuilder builder;
  EXPECT_TRUE(
      builder.AddLines("# roofs\nridge\r\n  eave # the lower edge\n\nridge\nfa\xC3\xA7"
                       "ade\nl\xE2\x80\x99"
                       "eau"));
  EXPECT_EQ(builder.Words(), 4u);
  EXPECT_FALSE(builder.AddLines("\xCE\xA9mega\ntwo words\nhip\n"));
  EXPECT_FALSE(builder.Add(Text(256, u'a')));
  EXPECT_EQ(builder.Words(), 5u);
  EXPECT_THAT(builder.Refused(), ElementsAre(u"\u03A9mega", u"two words", Text(256, u'a')));
}

TEST(WordSourcesTest, TheSameWordsGiveTheSameBytes) {
  EXPECT_EQ(DictionaryOf({u"ridge", u"eave", u"eaves", u"GFCI"}),
            DictionaryOf({u"GFCI", u"eaves", u"eave", u"ridge", u"ridge"}));
}

}  // namespace
}  // namespace inspector::spell
