#include "inspection/InspectionOverview.h"

#include "inspection/UndoLog.h"
#include "support/VisitFixture.h"

namespace inspector::inspection {
namespace {

constexpr auto kFirstQuestion = u"Are you sure you want to delete this Inspection?";
constexpr auto kNumberQuestion = u"Enter the Doc # of the new Inspection:";

class InspectionOverviewTest : public VisitTest {
protected:
  // As on a list that was read just now, each question answered in turn.
  bool Delete(int selected, int count, const std::vector<Answer>& answers) {
    m_Overview.Refill();
    return DeleteAsListed(selected, count, answers);
  }
  bool DeleteAsListed(int selected, int count, const std::vector<Answer>& answers) {
    Text question = kFirstQuestion;
    for (const Answer answer : answers) Prompts().Queue(std::exchange(question, u"Warning"), answer);
    return m_Overview.OnDelete(selected, count);
  }
  std::optional<std::int32_t> Duplicate(int selected, const std::optional<Text>& number) {
    m_Overview.Refill();
    Prompts().QueueText(kNumberQuestion, number);
    return m_Overview.OnDuplicate(selected);
  }

  InspectionOverview m_Overview{Document()};
};

// Another program may delete rows while the list is shown: what is selected counts, not its position.
TEST_F(InspectionOverviewTest, ActsOnTheSelectedRowWhereverItNowStands) {
  const auto first = m_Device.Visit(u"House");
  const auto second = m_Device.Visit(u"Condo");
  m_Overview.Refill();
  m_Device.RunInVisits("DELETE FROM Inspection WHERE InspectionID = 1000");
  EXPECT_TRUE(DeleteAsListed(1, 1, {Answer::Yes, Answer::Yes}));
  EXPECT_EQ(m_Device.Outline(first).size(), 0U);
  EXPECT_EQ(m_Device.Outline(second).size(), 1U);
  EXPECT_FALSE(DeleteAsListed(0, 1, {Answer::Yes})) << "the row is gone";
  EXPECT_THAT(Prompts().Last(), HasSubstr("deleted by another program"));
}

TEST_F(InspectionOverviewTest, DeletingTakesTwoYesInThisOrder) {
  m_Device.Visit(u"House");
  const Text counts = m_Device.RowCounts();
  EXPECT_FALSE(Delete(-1, 0, {})) << "without a selection nothing is asked";
  EXPECT_FALSE(Delete(1, 1, {Answer::No}));
  EXPECT_FALSE(Delete(1, 2, {Answer::Yes}));
  EXPECT_FALSE(Delete(1, 1, {Answer::Yes, Answer::No}));
  EXPECT_EQ(m_Device.RowCounts(), counts);
  Prompts().Forget();
  EXPECT_TRUE(Delete(1, 1, {Answer::Yes, Answer::Yes}));
  ASSERT_EQ(Prompts().Messages().size(), 2U);
  EXPECT_EQ(Prompts().Messages()[0].title + Prompts().Messages()[1].title, u"CautionWarning");
  EXPECT_EQ(m_Device.RowCounts(), u"Inspection 1, Category 0, Step 0, Field 0");
}

TEST_F(InspectionOverviewTest, DuplicateHasItsOwnKeysAndEverythingElse) {
  const auto key = m_Device.Visit(u"House", {u"Roof", u"Cellar", u"Checklist"});
  m_Device.RunInVisits(
      "UPDATE Step SET InspectResult = 'Poor', Comments = 'Loose.', SummaryComment = 'Fix it.', BitmapPath = "
      "'\\a.jpg', PictureBefore = -1 WHERE StepNumber = '20.1'");
  m_Device.RunInVisits(
      "UPDATE Field SET AssignedValue = 'done'; UPDATE Category SET NotPresentFlag = -1 WHERE CategoryTitle "
      "= 'Attic'; UPDATE Inspection SET ClientName = 'Halvorsen', InspectionNum = '7', PrivateNotes = 'Gate "
      "code', Reserve9 = 1, InspectionDate = '2020-02-29T08:30:00' WHERE DocType = 'House'");
  m_Device.Visit(u"Condo");

  EXPECT_EQ(Duplicate(1, std::nullopt), std::nullopt);
  EXPECT_EQ(m_Overview.OnDuplicate(-1), std::nullopt);
  EXPECT_EQ(Duplicate(1, u"\r\n8"), 1003);
  EXPECT_EQ(m_Device.RowCounts(), u"Inspection 4, Category 11, Step 8, Field 4");
  EXPECT_EQ(m_Device.Outline(1003), m_Device.Outline(key));
  EXPECT_EQ(Document().Inspection().m_InspectionID, 1000) << "the first row";

  // The number is typed by a person: what stands before the text is cut.
  EXPECT_EQ(InVisits("SELECT ClientName, PrivateNotes, Reserve9, DocType, InspectionDate, "
                     "InspectionNum FROM Inspection WHERE InspectionID = 1003"),
            "Halvorsen|Gate code|1|House|2020-02-29T08:30:00|8");
  EXPECT_EQ(
      InVisits(
          "SELECT StepID, SummaryComment, BitmapPath, PictureBefore FROM Step WHERE StepNumber = '20.1'"),
      "1000|Fix it.|\\a.jpg|-1\n1004|Fix it.|\\a.jpg|1");

  EXPECT_EQ(Prompts().ProgressWindows().back()->Told(),
            u"Duplicating Inspection...|Duplicating Categories...|Duplicating Steps...|0|9|8");
}

TEST_F(InspectionOverviewTest, DuplicateOfAnEmptyInspectionIsOneRowAndAFailedOneNone) {
  EXPECT_EQ(Duplicate(0, u""), 1001);
  EXPECT_EQ(m_Device.RowCounts(), u"Inspection 2, Category 0, Step 0, Field 0");
  m_Device.Visit(u"House", {u"Roof"});
  const Text counts = m_Device.RowCounts();
  m_Device.RunInVisits(NoRoomFor("INSERT ON Step"));
  EXPECT_EQ(Duplicate(2, u"8"), std::nullopt);
  EXPECT_EQ(m_Device.RowCounts(), counts);
}

TEST_F(InspectionOverviewTest, CancelledDuplicateOrDeleteChangesNothing) {
  const auto key = m_Device.Visit(u"House", {u"Roof", u"Checklist"});
  UndoLog undo(Document());
  const Text counts = m_Device.RowCounts();
  for (const int step : {0, 3, 6}) {  // categories, the last of them, steps
    Prompts().CancelAtStep(step);
    EXPECT_EQ(Duplicate(1, u"8"), std::nullopt);
    EXPECT_EQ(Prompts().Last(), "Alert: Cancelled. Nothing was duplicated.");
    Prompts().CancelAtStep(std::min(step, 5));
    EXPECT_FALSE(Delete(1, 1, {Answer::Yes, Answer::Yes}));
    EXPECT_EQ(Prompts().Last(), "Alert: Cancelled. Nothing was deleted.");
    EXPECT_EQ(m_Device.RowCounts(), counts);
    EXPECT_EQ(Document().Inspection().m_InspectionID, key);
  }
  EXPECT_EQ(undo.Action(), u"") << "nothing was done that could be taken back";
}

}  // namespace
}  // namespace inspector::inspection
