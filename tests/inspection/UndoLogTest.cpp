#include "inspection/UndoLog.h"

#include <gmock/gmock.h>

#include "editing/Defaults.h"
#include "inspection/InspectionOverview.h"
#include "support/VisitFixture.h"

namespace inspector::inspection {
namespace {

using device::Answer;

class UndoLogTest : public tests::VisitTest {
protected:
  // Every row of every table with its place: what was there before must be there again, bit for bit.
  std::string Everything() {
    return m_Device.Visits().Ask("SELECT * FROM (SELECT 1, rowid, * FROM Inspection ORDER BY rowid)") + "\n" +
           m_Device.Visits().Ask("SELECT rowid, * FROM Category ORDER BY rowid") + "\n" +
           m_Device.Visits().Ask("SELECT rowid, * FROM Step ORDER BY rowid") + "\n" +
           m_Device.Visits().Ask("SELECT rowid, * FROM Field ORDER BY rowid");
  }

  UndoLog m_UndoLog{Document()};
};

TEST_F(UndoLogTest, EveryActionLeavesNoTraceOnceTakenBack) {
  m_Device.RunInVisits("ALTER TABLE Step ADD COLUMN Foreign_ BLOB");
  const std::int32_t key = m_Device.Visit(u"House");
  m_Device.OpenCategory(u"Roof");
  m_Device.OpenCategory(u"Checklist");
  m_Device.RunInVisits("UPDATE Step SET Foreign_ = x'0001', Comments = NULL WHERE StepNumber = '20.1'");
  m_Device.Visit(u"Condo");
  EXPECT_TRUE(Document().SelectInspection(key));
  const std::string before = Everything();
  const auto undo = [&] {
    EXPECT_NE(Everything(), before);
    EXPECT_TRUE(m_UndoLog.Undo());
    EXPECT_EQ(Everything(), before);
    EXPECT_EQ(Document().Inspection().m_InspectionID, key);
    EXPECT_FALSE(m_UndoLog.Undo()) << "only once";
  };

  m_UndoLog.Before(u"Doc Type", key);
  EXPECT_EQ(m_UndoLog.Action(), u"") << "not done yet";
  Document().ChangeDocType(u"Condo");
  m_UndoLog.Done();
  EXPECT_EQ(m_UndoLog.Action(), u"Doc Type");
  undo();

  m_UndoLog.Before(u"Defaults", key);
  EXPECT_TRUE(editing::ApplyDefaultsSilently(Data(), key));
  m_UndoLog.Done();
  undo();

  InspectionOverview overview(Document());
  overview.Refill();
  m_UndoLog.Before(u"Delete", key);
  Prompts().Queue(u"Are you sure you want to delete this Inspection?", Answer::Yes);
  Prompts().Queue(u"Warning", Answer::Yes);
  EXPECT_TRUE(overview.OnDelete(overview.RowOf(key), 1));
  m_UndoLog.Done();
  undo();
}

TEST_F(UndoLogTest, DuplicateGoesAwayAndWhatWasEnteredSinceIsAskedFor) {
  const std::int32_t key = m_Device.Visit(u"House");
  m_Device.OpenCategory(u"Roof");
  const Text counts = m_Device.RowCounts();
  InspectionOverview overview(Document());
  overview.Refill();
  m_UndoLog.Before(u"Duplicate", key);
  Prompts().QueueText(u"Enter the Doc # of the new Inspection:", u"7");
  const auto copy = overview.OnDuplicate(overview.RowOf(key));
  ASSERT_TRUE(copy.has_value());
  m_UndoLog.Done(copy);
  m_Device.RunInVisits("UPDATE Step SET Comments = 'Loose.'");
  const Text both = m_Device.RowCounts();
  Prompts().Queue(
      u"Something was entered in this visit since then, and would be taken back too. Do you wish to "
      u"proceed?",
      Answer::No);
  EXPECT_FALSE(m_UndoLog.Undo());
  EXPECT_EQ(m_Device.RowCounts(), both);
  Prompts().Queue(
      u"Something was entered in this visit since then, and would be taken back too. Do you wish to "
      u"proceed?",
      Answer::Yes);
  EXPECT_TRUE(m_UndoLog.Undo());
  EXPECT_EQ(m_Device.RowCounts(), counts);
}

// A new inspection may have got the place of a deleted one meanwhile; both must be there in the end.
TEST_F(UndoLogTest, DeletedInspectionComesBackBesideANewOneAndAFailureChangesNothing) {
  const std::int32_t key = m_Device.Visit(u"Condo");
  m_Device.OpenCategory(u"Kitchen");
  const std::vector<Text> outline = m_Device.Outline(key);
  m_UndoLog.Before(u"Delete", key);
  Prompts().Queue(u"Warning", Answer::Yes);
  EXPECT_TRUE(Document().DeleteSelectedInspection(1));
  m_UndoLog.Done();
  const std::int32_t other = m_Device.Visit(u"Condo");
  const Text counts = m_Device.RowCounts();
  m_Device.RunInVisits("CREATE TRIGGER Full BEFORE INSERT ON Step BEGIN SELECT RAISE(FAIL, 'no room'); END");
  EXPECT_FALSE(m_UndoLog.Undo());
  EXPECT_EQ(m_Device.RowCounts(), counts);
  m_Device.RunInVisits("DROP TRIGGER Full");
  EXPECT_TRUE(m_UndoLog.Undo());
  EXPECT_EQ(m_Device.Outline(key), outline);
  EXPECT_EQ(m_Device.Outline(other).size(), 1U);
}

}  // namespace
}  // namespace inspector::inspection
