#include "editing/Placeholders.h"

#include "support/ScriptedSheetDialogs.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

using ::testing::ElementsAre;

class PlaceholdersTest : public tests::VisitTest {
protected:
  std::optional<Text> Fill(TextView text, const std::vector<std::optional<Text>>& answers) {
    for (const auto& answer : answers) m_Dialogs.QueueReplacement(answer);
    return FillPlaceholders(Data(), m_Dialogs, text);
  }

  tests::ScriptedSheetDialogs m_Dialogs;
};

TEST_F(PlaceholdersTest, AsksOneAfterTheOtherAndOffersWhatThePickerHas) {
  m_Device.Library().AddPicker(u"colour", u"red");
  m_Device.Library().AddPicker(u"colour", u"blue");
  m_Device.Library().AddPicker(u"Colour", u"other");
  EXPECT_EQ(Fill(u"The ^colour^ wall of ^(Brick,Block,Stone)^ needs ^^; ^x", {u"a^b^", u"Block", u""}),
            u"The a^b^ wall of Block needs ; ^x")
      << "what was put in is no gap, and neither is a caret alone";
  ASSERT_EQ(m_Dialogs.Questions().size(), 3u);
  EXPECT_EQ(m_Dialogs.Questions()[0].prompt, u"Replace ^colour^ with:");
  EXPECT_THAT(m_Dialogs.Questions()[0].choices, ElementsAre(u"blue", u"red"));
  EXPECT_EQ(m_Dialogs.Questions()[1].prompt, u"Replace ^(Brick,Block,Stone)^ with:");
  EXPECT_THAT(m_Dialogs.Questions()[1].choices, ElementsAre(u"Brick", u"Block", u"Stone"));
  EXPECT_EQ(m_Dialogs.Questions()[2].prompt, u"Replace ^ with:");
  EXPECT_FALSE(m_Dialogs.Questions()[2].offersChoices);
  EXPECT_TRUE(m_Dialogs.Questions()[1].offersChoices);
}

TEST_F(PlaceholdersTest, CancelLeavesNothingAndEndsTheAsking) {
  EXPECT_EQ(Fill(u"^a^ ^b^ ^c^", {u"1", std::nullopt}), std::nullopt);
  EXPECT_EQ(Fill(u"No gap.", {}), u"No gap.");
}

TEST_F(PlaceholdersTest, AlternativesEndAtTheParenthesis) {
  m_Device.Library().AddPicker(u"(a,b", u"stored \"under\" this name");
  EXPECT_THAT(QuestionFor(Data(), u"(a,b").choices, ElementsAre(u"stored \"under\" this name", u"a", u"b"));
  EXPECT_THAT(QuestionFor(Data(), u"(one) or two").choices, ElementsAre(u"one"));
  EXPECT_THAT(QuestionFor(Data(), u"(PVC (white),Copper,Steel) pipe").choices,
              ElementsAre(u"PVC (white)", u"Copper", u"Steel"));
  EXPECT_THAT(QuestionFor(Data(), u"(a,,b)").choices, ElementsAre(u"a", u"", u"b"));
  EXPECT_THAT(QuestionFor(Data(), u"\" OR \"1\"=\"1").choices, ElementsAre());
}

TEST(IsFilledFromTest, KnowsWhatAPreparedTextBecomes) {
  struct Case {
    TextView filled;
    TextView prepared;
    bool expected;
  };
  for (const auto& [filled, prepared, expected] : std::initializer_list<Case>{
           {u"Wood", u"Wood", true},
           {u"Wood", u"Woo", false},
           {u"Pipe of lead", u"Pipe of ^metal^", true},
           {u"Pipe of ", u"Pipe of ^metal^", true},
           {u"Pipe", u"Pipe of ^metal^", false},
           {u"10 mm pipe of tin", u"^size^ pipe of ^metal^", true},
           {u"10 mm pipe", u"^size^ pipe of ^metal^", false},
           {u"ab", u"^x^ab^y^ab", false},  // the two fixed pieces may not share their letters
           {u"abab", u"^x^ab^y^ab", true},
       })
    EXPECT_EQ(IsFilledFrom(filled, prepared), expected)
        << device::ToUtf8(filled) << " from " << device::ToUtf8(prepared);
}

}  // namespace
}  // namespace inspector::editing
