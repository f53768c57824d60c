// Suggestions of the American dictionary, for slips of every kind; bench/SpellBench counts how many of
// hundreds of misspellings are understood.
#include "spell/Suggestions.h"

#include "spell/EditCost.h"
#include "spell/SoundKey.h"
#include "spell/SpellFixture.h"

namespace inspector::spell {
namespace {

class SuggestionsTest : public SpellFixture {
protected:
  void SetUp() override {
    ASSERT_EQ(m_Checker.Load(INSPECTOR_DICTIONARIES "/american.dct").Code(), 0);
    for (int n = 0; n < 20; ++n) m_Common.Add(u"The soffit vents are loose; the deck isn't.");
  }
  Text First(const Text& word) {
    const std::vector<Text> words = Suggestions(m_Checker, m_Common).For(word);
    return words.empty() ? u"(none)" : words.front();
  }

  WordCounts m_Common;
};

TEST_F(SuggestionsTest, SlipsOfEveryKindAreUnderstood) {
  ExpectEach<Text, Text>(
      {
          {u"shingels", u"shingles"},       // swapped
          {u"accomodate", u"accommodate"},  // a double letter lost
          {u"untill", u"until"},            // or won
          {u"gutetr", u"gutter"},
          {u"chimny", u"chimney"},          // lost
          {u"foundatiion", u"foundation"},  // won
          {u"definately", u"definitely"},   // vowels
          {u"asfalt", u"asphalt"},          // by ear
          {u"ceader", u"cedar"},
          {u"nesessery", u"necessary"},
          {u"infront", u"in front"},  // two words
          {u"sof fit", u"soffit"},    // one word
          {u"sof-fit", u"soffit"},
          {u"wasnt", u"wasn't"},
          {u"wasn\u2019tt", u"wasn't"},
          {u"texas", u"Texas"},
          {u"gfcii", u"GFCI"},
      },
      [this](const Text& word) { return First(word); });
}

TEST_F(SuggestionsTest, TheCaseIsThatOfTheMisspeltWord) {
  ExpectEach<Text, Text>(
      {{u"sofit", u"soffit"}, {u"Sofit", u"Soffit"}, {u"SOFIT", u"SOFFIT"}, {u"Infront", u"In front"}},
      [this](const Text& word) { return First(word); });
}

TEST_F(SuggestionsTest, WhatAnOfficeWritesOftenComesFirst) {
  EXPECT_EQ(First(u"dek"), u"deck");
  EXPECT_EQ(First(u"vests"), u"vests");  // nothing to say about a word that is right
  WordCounts other;
  for (int n = 0; n < 20; ++n) other.Add(u"DEL del");
  m_Checker.Accept(u"del");
  EXPECT_EQ(Suggestions(m_Checker, other).For(u"dek").front(), u"del");  // one of the personal list
}

TEST_F(SuggestionsTest, EverySuggestionIsSpeltCorrectlyAndThereOnce) {
  Suggestions suggestions(m_Checker, m_Common);
  for (const Text& word :
       {Text(u"rooof"), Text(u"WINDWO"), Text(u"Insulationn's"), Text(u"x"), Text(u"qqqqqq"), Text(u"'"),
        Text(u"- -"), Text(u"\u03A9\u03A9"), Text(256, u'e'), Text(400, u'o')}) {
    const std::vector<Text> found = suggestions.For(word);
    EXPECT_LE(found.size(), Suggestions::kMost);
    for (const Text& one : found) {
      EXPECT_EQ(std::count(found.begin(), found.end(), one), 1) << ToUtf8(one);
      for (const Text& part : device::Split(one, u' ')) EXPECT_TRUE(m_Checker.Check(part)) << ToUtf8(one);
    }
  }
  EXPECT_THAT(suggestions.For(u"rooof", 2), SizeIs(2));
  EXPECT_THAT(suggestions.For(u""), IsEmpty());
}

TEST_F(SuggestionsTest, AnotherDictionaryGivesOtherSuggestions) {
  Suggestions suggestions(m_Checker);
  EXPECT_EQ(suggestions.For(u"colr").front(), u"color");
  ASSERT_EQ(m_Checker.Load(INSPECTOR_DICTIONARIES "/french.dct").Code(), 0);
  EXPECT_EQ(suggestions.For(u"toitture").front(), u"toiture");
  EXPECT_EQ(suggestions.For(u"pres").front(), u"pr\u00E8s");
  SpellChecker none(m_Files, m_Paths);
  EXPECT_THAT(Suggestions(none).For(u"colr"), IsEmpty());
}

TEST(EditCostTest, LikelierSlipsAreCheaper) {
  const auto cost = [](const char* typed, const char* meant) {
    return EditCost(typed).Of(meant, EditCost::kTooMuch - 1);
  };
  EXPECT_EQ(cost("roof", "roof"), 0);
  // Each pair: the first word was meant rather than the second.
  const char* const rows[][3] = {
      {"rof", "roof", "rotf"},     {"teh", "the", "tea"},
      {"dwck", "deck", "duck"},    {"fonetic", "phonetic", "genetic"},
      {"cafe", "caf\xE9", "cage"}, {"gutrer", "gutter", "guzzler"},
      {"isnt", "isn't", "isint"},  {"seperate", "separate", "desperate"},
      {"ridgw", "ridge", "ridgm"},
  };
  for (const auto& [typed, meant, other] : rows) EXPECT_LT(cost(typed, meant), cost(typed, other)) << typed;
  EXPECT_EQ(EditCost("roof").Of("foundation", 200), EditCost::kTooMuch);
  EXPECT_EQ(EditCost("").Of("", 0), 0);
}

TEST(SoundKeyTest, WordsThatSoundAlikeHaveTheSameKey) {
  const std::vector<std::pair<const char*, const char*>> alike = {
      {"phonetic", "fonetik"},
      {"knight", "nite"},
      {"wrench", "rench"},
      {"nation", "nashun"},
      {"ceiling", "sealing"},
      {"judge", "juj"},
      {"fa\xE7"
       "ade",
       "fasade"},
      {"SCHOOL", "scool"},
  };
  for (const auto& [one, other] : alike) EXPECT_EQ(SoundKey(one), SoundKey(other)) << one;
  for (const auto& [one, other] : {std::pair{"roof", "room"}, {"deck", "desk"}, {"eave", "cave"}})
    EXPECT_NE(SoundKey(one), SoundKey(other)) << one;
  EXPECT_EQ(SoundKey("12'"), "");
}

}  // namespace
}  // namespace inspector::spell
