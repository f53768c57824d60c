#include "editing/Placeholders.h"

#include "support/ScriptedSheetDialogs.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

class PlaceholdersTest : public VisitTest {
protected:
  std::optional<Text> Fill(TextView text, const std::vector<std::optional<Text>>& answers) {
    for (const auto& answer : answers) m_Dialogs.QueueReplacement(answer);
    return FillPlaceholders(Data(), m_Dialogs, text);
  }

  ScriptedSheetDialogs m_Dialogs;
};

TEST_F(PlaceholdersTest, AsksOneAfterTheOtherAndOffersWhatThePickerHas) {
  m_Device.Library().AddPicker(u"colour", u"red");
  m_Device.Library().AddPicker(u"colour", u"blue");
  m_Device.Library().AddPicker(u"Colour", u"other");
  EXPECT_EQ(Fill(u"The ^colour^ wall of ^(Brick,Block)^ needs ^^; ^x", {u"a^b^", u"Block", u""}),
            u"The a^b^ wall of Block needs ; ^x")
      << "what was put in is no gap, and neither is a caret alone";
  EXPECT_EQ(Joined(m_Dialogs.Questions(),
                   [](const ReplacementQuestion& question) {
                     return question.prompt + (question.offersChoices ? u" one of " : u"") +
                            Joined(question.choices, u",");
                   }),
            u"Replace ^colour^ with: one of blue,red|Replace ^(Brick,Block)^ with: one of Brick,Block|"
            u"Replace ^ with:");
}

TEST_F(PlaceholdersTest, CancelLeavesNothingAndEndsTheAsking) {
  EXPECT_EQ(Fill(u"^a^ ^b^ ^c^", {u"1", std::nullopt}), std::nullopt);
  EXPECT_EQ(Fill(u"No gap.", {}), u"No gap.");
}

TEST_F(PlaceholdersTest, AlternativesEndAtTheParenthesis) {
  m_Device.Library().AddPicker(u"(a,b", u"stored \"under\" this name");
  ExpectEach<Text, Text>({{u"(a,b", u"stored \"under\" this name|a|b"},
                          {u"(one) or two", u"one"},
                          {u"(PVC (white),Copper,Steel) pipe", u"PVC (white)|Copper|Steel"},
                          {u"(a,,b)", u"a||b"},
                          {u"\" OR \"1\"=\"1", u""}},
                         [this](const Text& gap) { return Joined(QuestionFor(Data(), gap).choices); });
}

TEST(IsFilledFromTest, KnowsWhatAPreparedTextBecomes) {
  for (const auto& [filled, prepared, expected] : std::vector<std::tuple<Text, Text, bool>>{
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
    EXPECT_EQ(IsFilledFrom(filled, prepared), expected) << ToUtf8(filled) << " from " << ToUtf8(prepared);
}

}  // namespace
}  // namespace inspector::editing
