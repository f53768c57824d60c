#include "spell/SpellSession.h"

#include "spell/SpellFixture.h"

namespace inspector::spell {
namespace {

class SpellSessionTest : public SpellFixture {
protected:
  SpellSessionTest() {
    PutDictionary({u"the", u"roof", u"is", u"worn", u"deck", u"soffit", u"and", u"old", u"see", u"it"});
  }

  SpellText TextOf(std::size_t n) {
    return {device::Decimal(static_cast<int>(n)), [this, n] { return m_Stored[n]; },
            [this, n](const Text& text) {
              if (m_StoresUntilFault > 0 && --m_StoresUntilFault == 0) return false;
              m_Stored[n] = text;
              ++m_Stores;
              return true;
            }};
  }
  // A session over these texts.
  SpellSession Begin(std::vector<Text> texts) {
    m_Stored = std::move(texts);
    std::vector<SpellText> all;
    for (std::size_t n = 0; n < m_Stored.size(); ++n) all.push_back(TextOf(n));
    return SpellSession(m_Checker, m_Suggestions, {u"wtr"}, std::move(all));
  }
  // "name: sentence with the <word> marked"; empty at the end.
  static Text Shown(const SpellSession& session) {
    const SpellingError* const error = session.Current();
    if (!error) return u"";
    Text shown = error->sentence;
    EXPECT_EQ(shown.substr(error->inSentence.at, error->inSentence.length), error->word);
    shown.insert(error->inSentence.End(), u">").insert(error->inSentence.at, u"<");
    return session.NameOfText() + u": " + shown;
  }

  Suggestions m_Suggestions{m_Checker};
  std::vector<Text> m_Stored;
  int m_Stores = 0;
  int m_StoresUntilFault = 0;
};

TEST_F(SpellSessionTest, EveryAnswerLeadsToTheNextWordAndThenToTheEnd) {
  SpellSession session = Begin(
      {u"The roof is wrn. See teh dekc and Teh roof!", u"", u"wtr is old\r\nteh roof, sof fit is olld"});
  EXPECT_EQ(Shown(session), u"0: The roof is <wrn>.");
  EXPECT_EQ(session.Suggest().front(), u"worn");
  EXPECT_TRUE(session.Replace(u"worn"));
  EXPECT_EQ(Shown(session), u"0: See <teh> dekc and Teh roof!");
  EXPECT_TRUE(session.ReplaceAll(u"the"));
  EXPECT_EQ(Shown(session), u"0: See the <dekc> and Teh roof!");
  session.Ignore();
  EXPECT_EQ(Shown(session), u"0: See the dekc and <Teh> roof!");
  EXPECT_TRUE(session.Replace(u""));
  EXPECT_EQ(Shown(session), u"2: the roof, <sof fit> is olld");
  EXPECT_EQ(session.Suggest().front(), u"soffit");
  EXPECT_TRUE(session.Replace(u"soffit"));
  EXPECT_EQ(Shown(session), u"2: the roof, soffit is <olld>");
  EXPECT_EQ(session.Current()->range.at, m_Stored[2].find(u"olld"));
  session.IgnoreAll();
  EXPECT_EQ(Shown(session), u"");
  EXPECT_THAT(m_Stored, ElementsAre(u"The roof is worn. See the dekc and  roof!", u"",
                                    u"wtr is old\r\nthe roof, soffit is olld"));
  EXPECT_EQ(session.Replaced(), 5);
  EXPECT_EQ(m_Stores, 5) << "each replacement is a step of its own";
}

TEST_F(SpellSessionTest, WhatIsIgnoredOrAddedIsNoFaultAnyMore) {
  SpellSession session = Begin({u"zinc and Dekc", u"DEKC Zinc dekc ZINC", u"zincs"});
  EXPECT_TRUE(session.Add());
  EXPECT_EQ(Shown(session), u"0: zinc and <Dekc>");
  session.IgnoreAll();
  EXPECT_EQ(Shown(session), u"2: <zincs>");
  // A word that was added is suggested, one that is ignored is not.
  EXPECT_EQ(session.Suggest().front(), u"zinc");
  EXPECT_THAT(Suggestions(m_Checker).For(u"dekcc"), ElementsAre(u"deck"));
  EXPECT_EQ(ContentOf(PersonalListPath()), "zinc\r\n");
  EXPECT_EQ(Shown(Begin({u"dekc zinc"})), u"");
}

TEST_F(SpellSessionTest, AWordThatCannotBeStoredStays) {
  SpellSession session = Begin({u"teh teh deck", u"teh"});
  m_StoresUntilFault = 1;
  EXPECT_FALSE(session.Replace(u"the"));
  EXPECT_EQ(Shown(session), u"0: <teh> teh deck");
  m_StoresUntilFault = 2;
  EXPECT_FALSE(session.ReplaceAll(u"the"));
  EXPECT_EQ(Shown(session), u"0: the <teh> deck");
  EXPECT_TRUE(session.ReplaceAll(u"the"));
  EXPECT_EQ(Shown(session), u"");
  EXPECT_THAT(m_Stored, ElementsAre(u"the the deck", u"the"));
  EXPECT_EQ(session.Replaced(), 3);
}

TEST_F(SpellSessionTest, TheSentenceIsCutBetweenWordsWhenItIsLong) {
  Text old;
  for (int n = 0; n < 60; ++n) old += u"old ";
  const SpellSession session = Begin({old + u"teh " + old});
  const Text sentence = session.Current()->sentence;
  EXPECT_LE(sentence.size(), 190u);
  EXPECT_GE(sentence.size(), 150u);
  EXPECT_THAT(ToUtf8(sentence), AllOf(StartsWith("old "), HasSubstr(" teh "), EndsWith("old")));
  const Text blankless(500, u'x');
  EXPECT_EQ(Begin({blankless}).Current()->sentence, blankless);
}

TEST_F(SpellSessionTest, ThereMayBeNothingToSay) {
  EXPECT_EQ(Shown(Begin({})), u"");
  EXPECT_EQ(Shown(Begin({u"the roof", u""})), u"");
  SpellChecker none(m_Files, m_Paths);
  Suggestions nothing(none);
  EXPECT_EQ(SpellSession(none, nothing, {}, {TextOf(0)}).Current(), nullptr);
}

}  // namespace
}  // namespace inspector::spell
