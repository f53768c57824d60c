#include "editing/StepEditing.h"

#include "editing/RatingFlags.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

using Result = StepEditing::Result;
using ::testing::ElementsAre;

class StepEditingTest : public tests::VisitTest {
protected:
  void SetUp() override {
    m_Key = m_Device.Visit(u"House");
    m_Device.OpenCategory(u"Roof");
    m_Device.OpenCategory(u"Cellar");
    m_Shingles = m_Device.StepKey(u"20.1");
    m_Gutters = m_Device.StepKey(u"20.2");
  }
  Text Status(std::size_t line) { return m_Device.Outline(m_Key)[line]; }

  std::int32_t m_Key = 0;
  std::int32_t m_Shingles = 0;
  std::int32_t m_Gutters = 0;
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
    EXPECT_EQ(m_Editing.Rate(m_Gutters, wrong), Result::NotOffered);
  EXPECT_EQ(m_Device.Finding(m_Gutters), u"20.2|Gutters|Good \"as new\"||");
  EXPECT_EQ(m_Editing.Rate(m_Device.StepKey(u"20.3"), u"Good"), Result::NotOffered) << "no rating type";
  EXPECT_EQ(m_Editing.Rate(4711, u"Good"), Result::NoSuchStep);

  const auto sump = m_Device.StepKey(u"9.1");
  EXPECT_EQ(Status(6), u"9 Cellar (Incomplete)");
  EXPECT_EQ(m_Editing.Rate(sump, u"Yes"), Result::Done);
  EXPECT_EQ(Status(6), u"9 Cellar (Complete)");
  EXPECT_EQ(m_Editing.Rate(sump, u""), Result::Done);
  EXPECT_EQ(Status(6), u"9 Cellar (Incomplete)");
  EXPECT_EQ(m_Device.Finding(sump), u"9.1|Sump|||");
}

TEST_F(StepEditingTest, FailureOnTheWayKeepsStepAndFlagTogether) {
  const auto sump = m_Device.StepKey(u"9.1");
  m_Device.RunInVisits(tests::NoRoomFor("UPDATE ON Category"));
  EXPECT_EQ(m_Editing.Rate(sump, u"Yes"), Result::Failed);
  EXPECT_EQ(m_Editing.AppendComment(sump, u"Dry."), Result::Failed);
  EXPECT_EQ(m_Device.Finding(sump), u"9.1|Sump|||");
  m_Device.RunInVisits(tests::kRoomAgain);

  m_Device.RunInLibrary("ALTER TABLE RatingChoices RENAME TO Gone");
  EXPECT_EQ(m_Editing.Rate(sump, u"Yes"), Result::Failed) << "not \"not offered\": nobody knows";
  m_Device.RunInLibrary("ALTER TABLE Gone RENAME TO RatingChoices");
  EXPECT_EQ(m_Editing.Rate(sump, u"Yes"), Result::Done);
}

TEST_F(StepEditingTest, StepThatLostItsCategoryStillTakesAFinding) {
  m_Device.RunInVisits("DELETE FROM Category WHERE CategoryTitle = 'Roof'");
  EXPECT_EQ(m_Editing.Rate(m_Shingles, u"Poor"), Result::Done);
  EXPECT_EQ(m_Device.Finding(m_Shingles), u"20.1|Shingles|Poor||");
}

TEST_F(StepEditingTest, CommentsAreSeparatedByTheOption) {
  EXPECT_EQ(m_Editing.AppendComment(m_Shingles, u"\r\nFirst."), Result::Done);
  EXPECT_EQ(m_Editing.AppendComment(m_Shingles, u""), Result::Done);
  EXPECT_EQ(m_Editing.AppendComment(m_Shingles, u"\t"), Result::Done);
  EXPECT_EQ(m_Editing.AppendComment(m_Shingles, u"Se\ncond \"quoted\""), Result::Done);
  EXPECT_EQ(m_Device.Finding(m_Shingles), u"20.1|Shingles|||First.  Se\ncond \"quoted\"");
  m_Device.GetWorkspace().Options().m_BlankLineBetweenComments = -1;
  EXPECT_EQ(m_Editing.AppendComment(m_Shingles, u"Third."), Result::Done);
  EXPECT_EQ(m_Device.Finding(m_Shingles), u"20.1|Shingles|||First.  Se\ncond \"quoted\"\r\n\r\nThird.");
  EXPECT_EQ(m_Editing.AppendComment(4711, u""), Result::NoSuchStep);
}

TEST_F(StepEditingTest, MaterialsAreTickedOrGoIntoTheFreeBox) {
  StepEditing::MaterialNote note;
  EXPECT_EQ(m_Editing.AddMaterial(m_Shingles, u"Wood Siding", &note), Result::Done);
  EXPECT_FALSE(note.hasComments);
  EXPECT_EQ(m_Editing.AddMaterial(m_Shingles, u"Slate"), Result::Done);
  EXPECT_EQ(m_Editing.AddMaterial(m_Shingles, u"Asphalt", &note), Result::Done);
  EXPECT_TRUE(note.hasComments);
  EXPECT_EQ(m_Editing.AddMaterial(m_Shingles, u"Asphalt"), Result::Done) << "ticked already";
  EXPECT_EQ(m_Device.Finding(m_Shingles), u"20.1|Shingles||Asphalt;Wood Siding;Other:Slate;|")
      << "in box order";
  EXPECT_EQ(m_Editing.AddMaterial(m_Shingles, u"Other:Tin"), Result::Done);
  EXPECT_EQ(m_Device.Finding(m_Shingles), u"20.1|Shingles||Asphalt;Wood Siding;Other:Tin;|");

  EXPECT_EQ(m_Editing.AddMaterial(m_Shingles, u"other:Tin"), Result::Done);
  EXPECT_EQ(m_Device.Finding(m_Shingles), u"20.1|Shingles||Asphalt;Wood Siding;Other:Tin;|");
  m_Device.Library().AddMaterial(1, u"^Size^ pavers of ^Year^");
  for (const TextView wrong :
       {u"", u"  ", u"Other:", u"other:", u"Tin;Lead", u"^Size^ pavers of ^Year^", u"large pavers of ^Year^"})
    EXPECT_EQ(m_Editing.AddMaterial(m_Shingles, wrong), Result::NotOffered);
  EXPECT_EQ(m_Editing.AddMaterial(m_Shingles, u"large pavers of 1990"), Result::Done);
  EXPECT_EQ(m_Editing.AddMaterial(m_Gutters, u"Slate"), Result::NotOffered) << "no free box";
  EXPECT_EQ(m_Editing.AddMaterial(4711, u"Wood"), Result::NoSuchStep);

  m_Device.RunInLibrary("ALTER TABLE MaterialTemplate RENAME TO Gone");
  EXPECT_EQ(m_Editing.AddMaterial(m_Shingles, u"Wood"), Result::Failed);
  EXPECT_EQ(m_Device.Finding(m_Shingles),
            u"20.1|Shingles||Asphalt;Wood Siding;Other:Tin;large pavers of 1990;|");
}

// "Poor" of one type says nothing about "Poor" of another.
TEST_F(StepEditingTest, FlagsGoByTheExactPairOfTypeAndChoice) {
  m_Device.RunInLibrary(
      "INSERT INTO RatingType (ID, RatingType) VALUES (3, 'Mild'); INSERT INTO RatingChoices (RatingTypeID, "
      "ChoiceName, SummaryFlag) VALUES (3, 'Poor', 0), (3, 'Dead', 1)");
  m_Device.RunInLibrary("UPDATE RatingChoices SET RedFlag = -1 WHERE RedFlag = 1");
  RatingFlags flags(m_Device.GetWorkspace());
  EXPECT_TRUE(flags.IsBold(u"Condition", u"Poor"));
  EXPECT_TRUE(flags.IsRed(u"Condition", u"Poor")) << "-1 is yes too";
  EXPECT_TRUE(flags.IsSummary(u"Condition", u"Poor"));
  EXPECT_TRUE(flags.IsSummary(u"Mild", u"Dead"));
  EXPECT_FALSE(flags.IsBold(u"Mild", u"Dead"));
  EXPECT_FALSE(flags.IsBold(u"Mild", u"Poor"));
  EXPECT_FALSE(flags.IsRed(u"Condition", u"Good"));
  EXPECT_FALSE(flags.IsRed(u"condition", u"Poor"));
  EXPECT_FALSE(flags.IsSummary(u"", u""));
}

}  // namespace
}  // namespace inspector::editing
