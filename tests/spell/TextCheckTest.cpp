#include "spell/TextCheck.h"

#include "spell/SpellFixture.h"

namespace inspector::spell {
namespace {

class TextCheckTest : public SpellFixture {
protected:
  TextCheckTest() {
    PutDictionary({u"the",    u"roof", u"is",      u"worn", u"at",  u"inch",  u"site", u"on",
                   u"see",    u"it's", u"l'",      u"d'",   u"qu'", u"eau",   u"air",  u"fa\u00E7ade",
                   u"soffit", u"A/C",  u"approx.", u"etc.", u"and", u"x-ray", u"pre",  u"wired"});
  }

  // The parts of the text that `find` gives, with bars between.
  Text Words(TextView text) {
    return Joined(WordScanner(m_Checker, m_Shortcuts).Scan(text), [text](const ScannedWord& word) {
      return Text(text.substr(word.range.at, word.range.length));
    });
  }
  Text Misspelt(TextView text) {
    return Joined(TextCheck(m_Checker, m_Shortcuts).FindMisspelt(text), [text](const MisspeltWord& word) {
      EXPECT_EQ(word.word, text.substr(word.range.at, word.range.length));
      return word.word;
    });
  }

  std::vector<Text> m_Shortcuts = {u"wtr", u"A.O.K."};
};

TEST_F(TextCheckTest, OnlyWordsAreScanned) {
  ExpectEach<Text, Text>(
      {
          {u"", u""},
          {u"The roof, (worn) is \"old\".", u"The|roof|worn|is|old"},
          {u"line\r\nbreak\tand\u00A0blank", u"line|break|and|blank"},
          // Figures and measurements.
          {u"3/4\" pipe, 12' run, 2x4s at 16\" o.c., 20A 1/2-inch R-38 1,250 3.5 4x",
           u"pipe|run|at|o|c|inch|R"},
          {u"8 ft^2 of 40 ft^2", u"ft|of|ft"},
          // Pictures and gaps.
          {u"See ***Picture1.jpg*** here ***end", u"See|here|end"},
          {u"The ^wall name^ wall ^is", u"The|wall|is"},
          {u"[*Roof]Worn [*roof] out", u"Worn|roof|out"},
          {u"***a ^b*** c^ d", u"d"},
          // Addresses.
          {u"See http://a.example/x, www.inspector.example; ana@a.example or maps.com/roof.", u"See|or"},
          {u"roof.The next", u"roof|The|next"},
          {u"\\Storage Card\\x.jpg", u""},
          // Shortcuts, in any case, with punctuation.
          {u"Wtr wtr. (WTR) wtrs A.O.K. ok", u"wtrs|ok"},
          // Apostrophes, hyphens, slashes.
          {u"it's it\u2019s 'quoted' rafters' l\u2019eau", u"it's|it\u2019s|quoted|rafters|l\u2019eau"},
          {u"on-site washer/dryer and/or pre--wired", u"on|site|washer|dryer|and|or|pre|wired"},
          {u"fa\u00E7ade \u03A9hm na\u00EFve", u"fa\u00E7ade|hm|na|ve"},
      },
      [this](const Text& text) { return Words(text); });
}

TEST_F(TextCheckTest, MisspeltWordsAreFoundWhereTheyStand) {
  ExpectEach<Text, Text>(
      {
          {u"The roof is worn.", u""},
          {u"THE Roof iS wrn", u"iS|wrn"},
          {u"teh roof, teh air", u"teh|teh"},
          // Elisions: what stands before them is a word of its own.
          {u"l'eau d\u2019air qu'eau l'aeu", u"aeu"},
          {u"it's its' 'roof'", u"its"},
          // Words with signs, and abbreviations with their period.
          {u"A/C B/C approx. approx etc. X-RAY", u"B|C|approx"},
          // Torn words.
          {u"sof-fit sof fit on-site", u"sof-fit|sof fit"},
          {u"sof, fit", u"sof|fit"},
          {u"pre-wird", u"wird"},
          {u"soffit (see ***x***) wtr", u""},
      },
      [this](const Text& text) { return Misspelt(text); });
}

// What a screen asks for: the lines that are visible.
TEST_F(TextCheckTest, APartOfATextIsJudgedAsInTheWhole) {
  const Text text = u"teh roof ***teh*** at teh sof fit, wrn^teh^ l'aeu on-sight sof-fit teh";
  const TextCheck check(m_Checker);
  const std::vector<MisspeltWord> all = check.FindMisspelt(text);
  ASSERT_EQ(all.size(), 8u);
  for (std::size_t from = 0; from <= text.size(); ++from) {
    for (std::size_t to = from; to <= text.size(); ++to) {
      const std::vector<MisspeltWord> some = check.FindMisspelt(text, from, to);
      for (const MisspeltWord& word : all) {
        if (word.range.at < from || word.range.at >= to) continue;
        EXPECT_TRUE(std::any_of(some.begin(), some.end(),
                                [&word](const MisspeltWord& other) { return other.range == word.range; }))
            << from << " to " << to << ": " << ToUtf8(word.word);
      }
    }
  }
}

TEST_F(TextCheckTest, WithoutADictionaryNoWordIsMarked) {
  SpellChecker none(m_Files, m_Paths);
  EXPECT_THAT(TextCheck(none).FindMisspelt(u"teh roof"), IsEmpty());
}

}  // namespace
}  // namespace inspector::spell
