#include "editing/CategoryList.h"
#include "editing/StepList.h"
#include "inspection/InspectionOverview.h"
#include "inspection/UndoLog.h"
#include "support/ScriptedEditingDialogs.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

using device::Answer;

// A house with its roof opened and a foreign program's column, and a condo; the house's roof is current.
class UndoTest : public tests::VisitTest {
protected:
  void SetUp() override {
    m_Device.RunInVisits("ALTER TABLE Step ADD COLUMN Foreign_ BLOB");
    m_House = m_Device.Visit(u"House");
    m_Device.OpenCategory(u"Checklist");
    m_Roof = m_Device.OpenCategory(u"Roof");
    m_Device.RunInVisits("UPDATE Step SET Foreign_ = x'0001', Comments = NULL WHERE StepNumber = '20.1'");
    m_Condo = m_Device.Visit(u"Condo");
    GoToRoof();
    m_Log.emplace(Document());
  }
  void TearDown() override { m_Log.reset(); }

  void GoToRoof() {
    EXPECT_TRUE(Document().SelectInspection(m_House));
    EXPECT_TRUE(Document().SelectCategory(m_Roof));
  }
  // Every row of every table with its place: what was there before must be there again, bit for bit.
  std::string Everything() {
    std::string rows;
    for (const char* table : {"Inspection", "Category", "Step", "Field"})
      rows += m_Device.Visits().Ask(std::string("SELECT rowid, * FROM ") + table + " ORDER BY rowid") + "\n";
    return rows;
  }
  void ExpectSinceThen(Answer answer) {
    Prompts().Queue(
        u"Something was entered in this visit since then, and would be taken back too. Do you wish to "
        u"proceed?",
        answer);
  }

  std::int32_t m_House = 0;
  std::int32_t m_Roof = 0;
  std::int32_t m_Condo = 0;
  tests::ScriptedEditingDialogs m_Dialogs;
  std::optional<inspection::UndoLog> m_Log;
};

TEST_F(UndoTest, EveryActionLeavesNoTraceOnceTakenBack) {
  inspection::InspectionOverview overview(Document());
  CategoryList categories(Document(), m_Dialogs);
  StepList steps(Document(), m_Dialogs);
  struct Case {
    const char16_t* action;
    std::function<void()> work;
    bool fromTheList = false;  // of inspections, where no category is current
  };
  const std::vector<Case> cases = {
      {u"Doc Type", [&] { Document().ChangeDocType(u"Condo"); }},
      {u"Defaults",
       [&] {
         Prompts().Queue(u"Caution", Answer::Yes);
         Prompts().Queue(u"Alert", Answer::Ok);
         categories.ApplyDefaults();
       }},
      {u"Duplicate Category",
       [&] {
         m_Dialogs.QueueCopies(EditingDialogs::CategoryCopies{u"Roof B", 2, true});
         categories.Mark(1);
         categories.Duplicate();
       }},
      {u"Defaults", [&] { steps.ApplyDefaults(); }},
      {u"Duplicate Step",
       [&] {
         Prompts().QueueText(u"Enter the name for the new duplicated step:", u"Porch");
         steps.DuplicateStep(0);
       }},
      {u"Duplicate Inspection",
       [&] {
         Prompts().QueueText(u"Enter the Doc # of the new Inspection:", u"7");
         overview.OnDuplicate(overview.RowOf(m_House));
       },
       true},
      {u"Delete",
       [&] {
         Prompts().Queue(u"Are you sure you want to delete this Inspection?", Answer::Yes);
         Prompts().Queue(u"Warning", Answer::Yes);
         overview.OnDelete(overview.RowOf(m_House), 1);
       },
       true},
      {u"Delete All",
       [&] {
         Prompts().Queue(u"Would you like to delete all inspections.", Answer::Yes);
         Prompts().CancelAtStep(2);
         Document().DeleteAllInspections();
       },
       true},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(device::ToUtf8(each.action));
    GoToRoof();
    overview.Refill();
    categories.Show();
    steps.Show();
    const std::string before = Everything();
    each.work();
    Document().FinishDocTypeChange();
    EXPECT_NE(Everything(), before);
    EXPECT_EQ(m_Log->Action(), each.action);
    EXPECT_TRUE(m_Log->Undo());
    EXPECT_EQ(Everything(), before);
    EXPECT_EQ(Document().Inspection().m_InspectionID, m_House);
    if (!each.fromTheList) {
      EXPECT_EQ(Document().Categories().m_CategoryID, m_Roof);
    }
    EXPECT_EQ(m_Log->Action(), u"");
    EXPECT_FALSE(m_Log->Undo()) << "only once";
  }
}

TEST_F(UndoTest, RefusedActionLeavesWhatCouldBeTakenBackBefore) {
  StepList steps(Document(), m_Dialogs);
  steps.Show();
  const std::string before = Everything();
  EXPECT_TRUE(steps.ApplyDefaults());
  Prompts().QueueText(u"Enter the name for the new duplicated step:", std::nullopt);
  EXPECT_FALSE(steps.DuplicateStep(0));
  m_Device.RunInVisits(tests::NoRoomFor("INSERT ON Step"));
  Prompts().QueueText(u"Enter the name for the new duplicated step:", u"Porch");
  EXPECT_FALSE(steps.DuplicateStep(0));
  EXPECT_EQ(m_Log->Action(), u"Defaults");
  m_Device.RunInVisits(tests::kRoomAgain);
  EXPECT_TRUE(m_Log->Undo());
  EXPECT_EQ(Everything(), before);
}

TEST_F(UndoTest, WhatWasEnteredSinceIsAskedFor) {
  StepList steps(Document(), m_Dialogs);
  steps.Show();
  const Text before = m_Device.Finding(m_Device.StepKey(u"20.2"));
  EXPECT_TRUE(steps.ApplyDefaults());
  m_Device.RunInVisits("UPDATE Step SET Comments = 'Loose.'");
  const std::string since = Everything();
  ExpectSinceThen(Answer::No);
  EXPECT_FALSE(m_Log->Undo());
  EXPECT_EQ(Everything(), since);
  ExpectSinceThen(Answer::Yes);
  EXPECT_TRUE(m_Log->Undo());
  EXPECT_EQ(m_Device.Finding(m_Device.StepKey(u"20.2")), before);
}

// A new inspection may have got the place of a deleted one meanwhile; all must be there in the end.
TEST_F(UndoTest, DeletedInspectionsComeBackBesideNewOnesAndAFailureChangesNothing) {
  const std::vector<Text> house = m_Device.Outline(m_House);
  const std::vector<Text> condo = m_Device.Outline(m_Condo);
  Prompts().Queue(u"Would you like to delete all inspections.", Answer::Yes);
  Prompts().Queue(u"Done deleting all inspections.", Answer::Ok);
  EXPECT_TRUE(Document().DeleteAllInspections());
  EXPECT_EQ(m_Log->Action(), u"Delete All");
  const std::int32_t other = m_Device.Visit(u"Condo");
  const std::string since = Everything();
  m_Device.RunInVisits(tests::NoRoomFor("INSERT ON Step"));
  EXPECT_FALSE(m_Log->Undo());
  EXPECT_EQ(Everything(), since);
  m_Device.RunInVisits(tests::kRoomAgain);
  EXPECT_TRUE(m_Log->Undo());
  EXPECT_EQ(m_Device.Outline(m_House), house);
  EXPECT_EQ(m_Device.Outline(m_Condo), condo);
  EXPECT_EQ(m_Device.Outline(other).size(), 1U);
}

}  // namespace
}  // namespace inspector::editing
