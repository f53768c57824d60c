#include "editing/StepEditing.h"

#include "editing/RatingFlags.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

using Result = StepEditing::Result;

class StepEditingTest : public RoofTest {
protected:
  // The cellar's line and that of its step.
  Text Cellar() { return m_Device.Outline(m_House)[6] + m_Device.Outline(m_House)[7]; }
  Result Add(TextView material, StepEditing::MaterialNote* note = nullptr) {
    return m_Editing.AddMaterial(m_Shingles, material, note);
  }
  Text Materials() { return FromUtf8(InVisits("SELECT Materials FROM Step WHERE StepNumber = '20.1'")); }

  const std::int32_t m_Cellar = m_Device.OpenCategory(u"Cellar");
  const std::int32_t m_Sump = m_Device.StepKey(u"9.1");
  StepEditing m_Editing{m_Device.GetWorkspace()};
};

TEST_F(StepEditingTest, RatingIsAChoiceOfTheTypeAndCompletes) {
  bool prompts = true;
  EXPECT_EQ(m_Editing.Rate(m_Shingles, u"Good", &prompts), Result::Done);
  EXPECT_FALSE(prompts);
  EXPECT_EQ(m_Editing.Rate(m_Gutters, u"Poor", &prompts), Result::Done);
  EXPECT_TRUE(prompts) << "a poor gutter should be explained";
  EXPECT_EQ(m_Editing.Rate(m_Gutters, u"Good \"as new\""), Result::Done);
  for (const TextView wrong : {u"good", u"Yes", u"<clear>", u" ", u"ChoiceName", u"Good\" OR \"1\"=\"1"})
    EXPECT_EQ(m_Editing.Rate(m_Gutters, wrong), Result::NotOffered) << ToUtf8(wrong);
  EXPECT_EQ(m_Device.Finding(m_Gutters), u"20.2|Gutters|Good \"as new\"||");
  EXPECT_EQ(m_Editing.Rate(m_Device.StepKey(u"20.3"), u"Good"), Result::NotOffered) << "no rating type";
  EXPECT_EQ(m_Editing.Rate(4711, u"Good"), Result::NoSuchStep);

  EXPECT_EQ(m_Editing.Rate(m_Sump, u"Yes"), Result::Done);
  EXPECT_EQ(Cellar(), u"9 Cellar (Complete)  9.1|Sump|Yes||");
  EXPECT_EQ(m_Editing.Rate(m_Sump, u""), Result::Done);
  EXPECT_EQ(Cellar(), u"9 Cellar (Incomplete)  9.1|Sump|||");
  // A step that lost its category still takes a finding.
  m_Device.RunInVisits("DELETE FROM Category WHERE CategoryTitle = 'Roof'");
  EXPECT_EQ(m_Editing.Rate(m_Shingles, u"Poor"), Result::Done);
  EXPECT_EQ(m_Device.Finding(m_Shingles), u"20.1|Shingles|Poor||");
}

TEST_F(StepEditingTest, FailureOnTheWayKeepsStepAndFlagTogether) {
  m_Device.RunInVisits(NoRoomFor("UPDATE ON Category"));
  EXPECT_EQ(m_Editing.Rate(m_Sump, u"Yes"), Result::Failed);
  EXPECT_EQ(m_Editing.AppendComment(m_Sump, u"Dry."), Result::Failed);
  m_Device.RunInVisits(kRoomAgain);
  {
    const MissingTable missing(m_Device, "RatingChoices");
    EXPECT_EQ(m_Editing.Rate(m_Sump, u"Yes"), Result::Failed) << "not \"not offered\": nobody knows";
  }
  EXPECT_EQ(Cellar(), u"9 Cellar (Incomplete)  9.1|Sump|||");
  EXPECT_EQ(m_Editing.Rate(m_Sump, u"Yes"), Result::Done);
}

TEST_F(StepEditingTest, CommentsAreSeparatedByTheOption) {
  for (const TextView comment : {u"\r\nFirst.", u"Se\ncond \"quoted\"", u"", u"\t"})
    EXPECT_EQ(m_Editing.AppendComment(m_Shingles, comment), Result::Done);
  EXPECT_EQ(m_Device.Finding(m_Shingles), u"20.1|Shingles|||First.  Se\ncond \"quoted\"");
  m_Device.GetWorkspace().Options().m_BlankLineBetweenComments = -1;
  EXPECT_EQ(m_Editing.AppendComment(m_Shingles, u"Third."), Result::Done);
  EXPECT_EQ(m_Device.Finding(m_Shingles), u"20.1|Shingles|||First.  Se\ncond \"quoted\"\r\n\r\nThird.");
  EXPECT_EQ(m_Editing.AppendComment(4711, u""), Result::NoSuchStep);
}

TEST_F(StepEditingTest, MaterialsAreTickedOrGoIntoTheFreeBox) {
  StepEditing::MaterialNote note;
  EXPECT_EQ(Add(u"Wood Siding", &note), Result::Done);
  EXPECT_FALSE(note.hasComments);
  EXPECT_EQ(Add(u"Slate"), Result::Done);
  EXPECT_EQ(Add(u"Asphalt", &note), Result::Done);
  EXPECT_TRUE(note.hasComments);
  EXPECT_EQ(Add(u"Asphalt"), Result::Done) << "ticked already";
  EXPECT_EQ(Materials(), u"Asphalt;Wood Siding;Other:Slate;") << "in box order";
  for (const TextView tin : {u"Other:Tin", u"other:Tin"}) {
    EXPECT_EQ(Add(tin), Result::Done);
    EXPECT_EQ(Materials(), u"Asphalt;Wood Siding;Other:Tin;");
  }
  m_Device.Library().AddMaterial(1, u"^Size^ pavers of ^Year^");
  for (const TextView wrong :
       {u"", u"  ", u"Other:", u"other:", u"Tin;Lead", u"^Size^ pavers of ^Year^", u"large pavers of ^Year^"})
    EXPECT_EQ(Add(wrong), Result::NotOffered) << ToUtf8(wrong);
  EXPECT_EQ(Add(u"large pavers of 1990"), Result::Done);
  EXPECT_EQ(m_Editing.AddMaterial(m_Gutters, u"Slate"), Result::NotOffered) << "no free box";
  EXPECT_EQ(m_Editing.AddMaterial(4711, u"Wood"), Result::NoSuchStep);
  const MissingTable missing(m_Device, "MaterialTemplate");
  EXPECT_EQ(Add(u"Wood"), Result::Failed);
  EXPECT_EQ(Materials(), u"Asphalt;Wood Siding;Other:Tin;large pavers of 1990;");
}

// "Poor" of one type says nothing about "Poor" of another.
TEST_F(StepEditingTest, FlagsGoByTheExactPairOfTypeAndChoice) {
  m_Device.RunInLibrary("UPDATE RatingChoices SET RedFlag = -1 WHERE RedFlag = 1");
  RatingFlags flags(m_Device.GetWorkspace());
  for (const auto& [type, choice, isSo] : {std::tuple(u"Condition", u"Poor", true),
                                           {u"Condition", u"Good", false},
                                           {u"condition", u"Poor", false},
                                           {u"Presence", u"Poor", false}}) {
    EXPECT_EQ(flags.IsBold(type, choice), isSo);
    EXPECT_EQ(flags.IsRed(type, choice), isSo) << "-1 is yes too";
    EXPECT_EQ(flags.IsSummary(type, choice), isSo);
  }
}

}  // namespace
}  // namespace inspector::editing
