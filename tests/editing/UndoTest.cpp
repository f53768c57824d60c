#include "editing/CategoryList.h"
#include "editing/StepList.h"
#include "inspection/InspectionOverview.h"
#include "inspection/UndoLog.h"
#include "support/ScriptedEditingDialogs.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

constexpr auto kStepName = u"Enter the name for the new duplicated step:";
constexpr auto kDeleteAll = u"Would you like to delete all inspections.";
constexpr auto kSinceThen =
    u"Something was entered in this visit since then, and would be taken back too. Do you wish to proceed?";

// A house with its roof opened and a foreign program's column, and a condo; the house's roof is current.
class UndoTest : public RoofTest {
protected:
  void SetUp() override {
    m_Device.RunInVisits(
        "ALTER TABLE Step ADD COLUMN Foreign_ BLOB; UPDATE Step SET Foreign_ = x'0001', Comments = NULL "
        "WHERE StepNumber = '20.1'");
    ShowRoof();
    m_Log.emplace(Document());
  }
  void TearDown() override { m_Log.reset(); }

  void ShowRoof() {
    EXPECT_TRUE(Document().SelectInspection(m_House));
    EXPECT_TRUE(Document().SelectCategory(m_Roof));
    m_Overview.Refill();
    m_Categories.Show();
    m_Categories.Mark(1);
    m_Steps.Show();
  }
  // Every row of every table with its place: what was there before must be there again, bit for bit.
  std::string Everything() {
    std::string rows;
    for (const char* table : {"Inspection", "Category", "Step", "Field"})
      rows += InVisits(std::string("SELECT rowid, * FROM ") + table + " ORDER BY rowid") + "\n";
    return rows;
  }
  // The action that can be taken back, which is then done, as it is told.
  Text Undo(bool succeeds = true) {
    const Text action = m_Log->Action();
    EXPECT_EQ(m_Log->Undo(), succeeds);
    return action;
  }

  const std::int32_t m_Checklist = m_Device.OpenCategory(u"Checklist");
  const std::int32_t m_Condo = m_Device.Visit(u"Condo");
  ScriptedEditingDialogs m_Dialogs;
  std::optional<inspection::UndoLog> m_Log;
  inspection::InspectionOverview m_Overview{Document()};
  CategoryList m_Categories{Document(), m_Dialogs};
  StepList m_Steps{Document(), m_Dialogs};
};

TEST_F(UndoTest, EveryActionLeavesNoTraceOnceTakenBack) {
  Prompts().Queue(u"Caution", Answer::Yes);
  m_Dialogs.QueueCopies(EditingDialogs::CategoryCopies{u"Roof B", 2, true});
  Prompts().QueueText(kStepName, u"Porch");
  Prompts().QueueText(u"Enter the Doc # of the new Inspection:", u"7");
  Prompts().Queue(u"Are you sure you want to delete this Inspection?", Answer::Yes);
  Prompts().Queue(u"Warning", Answer::Yes);
  Prompts().Queue(kDeleteAll, Answer::Yes);
  const auto row = [this] { return m_Overview.RowOf(m_House); };
  const auto deleteSome = [this] {
    Prompts().CancelAtStep(2);
    Document().DeleteAllInspections();
  };
  // The category that is current is so again, unless the action begins at the list of inspections.
  for (const auto& [action, category, work] : std::vector<std::tuple<Text, int, std::function<void()>>>{
           {u"Doc Type", m_Roof, [&] { Document().ChangeDocType(u"Condo"); }},
           {u"Defaults", m_Roof, [&] { m_Categories.ApplyDefaults(); }},
           {u"Duplicate Category", m_Roof, [&] { m_Categories.Duplicate(); }},
           {u"Defaults", m_Roof, [&] { m_Steps.ApplyDefaults(); }},
           {u"Duplicate Step", m_Roof, [&] { m_Steps.DuplicateStep(0); }},
           {u"Duplicate Inspection", -1, [&] { m_Overview.OnDuplicate(row()); }},
           {u"Delete", -1, [&] { m_Overview.OnDelete(row(), 1); }},
           {u"Delete All", -1, deleteSome}}) {
    SCOPED_TRACE(ToUtf8(action));
    ShowRoof();
    const std::string before = Everything();
    work();
    Document().FinishDocTypeChange();
    EXPECT_NE(Everything(), before);
    EXPECT_EQ(Undo(), action);
    EXPECT_EQ(Everything(), before);
    EXPECT_EQ(Document().Inspection().m_InspectionID, m_House);
    EXPECT_TRUE(category < 0 || Document().Categories().m_CategoryID == category);
    EXPECT_EQ(Undo(false), u"") << "only once";
  }
}

TEST_F(UndoTest, RefusedActionsLeaveWhatCouldBeTakenBackAndWhatWasEnteredSinceIsAskedFor) {
  const std::string before = Everything();
  EXPECT_TRUE(m_Steps.ApplyDefaults());
  Prompts().QueueText(kStepName, std::nullopt);
  EXPECT_FALSE(m_Steps.DuplicateStep(0));
  m_Device.RunInVisits(NoRoomFor("INSERT ON Step"));
  Prompts().QueueText(kStepName, u"Porch");
  EXPECT_FALSE(m_Steps.DuplicateStep(0));
  m_Device.RunInVisits(kRoomAgain);
  m_Device.RunInVisits("UPDATE Step SET Comments = 'Loose.'");
  const std::string since = Everything();
  Prompts().Queue(kSinceThen, Answer::No);
  Undo(false);
  EXPECT_EQ(Everything(), since);
  Prompts().Queue(kSinceThen, Answer::Yes);
  EXPECT_EQ(Undo(), u"Defaults");
  EXPECT_EQ(Everything(), before);
}

// A new inspection may have got the place of a deleted one meanwhile; all must be there in the end.
TEST_F(UndoTest, DeletedInspectionsComeBackBesideNewOnesAndAFailureChangesNothing) {
  const std::vector<Text> house = m_Device.Outline(m_House);
  const std::vector<Text> condo = m_Device.Outline(m_Condo);
  Prompts().Queue(kDeleteAll, Answer::Yes);
  EXPECT_TRUE(Document().DeleteAllInspections());
  const std::int32_t other = m_Device.Visit(u"Condo");
  const std::string since = Everything();
  m_Device.RunInVisits(NoRoomFor("INSERT ON Step"));
  EXPECT_EQ(Undo(false), u"Delete All");
  EXPECT_EQ(Everything(), since);
  m_Device.RunInVisits(kRoomAgain);
  Undo();
  EXPECT_EQ(m_Device.Outline(m_House), house);
  EXPECT_EQ(m_Device.Outline(m_Condo), condo);
  EXPECT_EQ(m_Device.Outline(other).size(), 1U);
}

}  // namespace
}  // namespace inspector::editing
