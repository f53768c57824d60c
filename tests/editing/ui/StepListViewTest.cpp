#include "editing/ui/StepListView.h"

#include <QMenu>

#include "support/Screens.h"
#include "support/ScriptedEditingDialogs.h"
#include "support/VisitFixture.h"

namespace inspector::editing::ui {
namespace {

class StepListViewTest : public VisitTest {
protected:
  void SetUp() override {
    m_Device.Visit(u"House");
    Show(u"Roof");
  }
  void Show(const Text& category) {
    for (int n = 0; Document().Categories().m_CategoryTitle != category; ++n)
      ASSERT_TRUE(Document().SetCurrentCategory(n));
    ShowOnHandheld(m_View);
  }
  void Rate(int row, const char* choice) {
    ClickCell(m_View.Rows(), row, StepList::kRating);
    const std::unique_ptr<QMenu> menu(&Part<QMenu>(m_View, "ratingMenu"));
    for (QAction* action : menu->actions())
      if (action->text() == QLatin1String(choice)) action->trigger();
    menu->close();
  }
  std::string Cell(int row, int column) { return CellWords(m_View.Rows(), row, column); }

  ScriptedEditingDialogs m_Dialogs;
  CStepListView m_View{m_Device.Document(), m_Dialogs};
};

TEST_F(StepListViewTest, RatesInTheList) {
  EXPECT_EQ(Cell(0, StepList::kRating), "Not rated");
  Rate(0, "Good");
  EXPECT_EQ(Cell(0, StepList::kRating), "Good");
  EXPECT_EQ(Words(m_View, "whatIsLeft"), "2 of 3 steps to rate");
  m_Dialogs.QueueSheet([] { return false; });
  Rate(1, "Poor");
  EXPECT_EQ(Cell(1, StepList::kComments), "Incomplete");
  EXPECT_EQ(m_View.Rows().Model().index(1, StepList::kComments).data(Qt::ToolTipRole).toString(),
            QStringLiteral("the rating asks for a comment"));
}

TEST_F(StepListViewTest, ColumnsOpenTheSheetAndTheListFollows) {
  m_Dialogs.QueueSheet([this] {
    m_Device.Enter(u"20.2", "Comments = 'Leaves.'");
    return true;
  });
  ClickCell(m_View.Rows(), 1, StepList::kComments);
  EXPECT_EQ(Cell(1, StepList::kComments), "Complete");
  EXPECT_EQ(m_View.Rows().SelectedRow(), 1);
  m_Dialogs.QueueSheet([] { return true; });
  EXPECT_TRUE(RunCommand(m_View, "stepProperties"));
  const std::int32_t gutters = m_Device.StepKey(u"20.2");
  EXPECT_THAT(m_Dialogs.SheetsOpened(),
              ElementsAre(std::pair(gutters, 1), std::pair(gutters, ScriptedEditingDialogs::kTabOfOption)));
}

TEST_F(StepListViewTest, CommandsAndSearch) {
  EXPECT_TRUE(m_View.SelectStep(m_Device.StepKey(u"20.2")));
  Fill(m_View, "searchField", "gutters");
  Prompts().QueueText(u"Duplicate Step", u"Vents");
  EXPECT_TRUE(RunCommand(m_View, "duplicateStep"));
  EXPECT_EQ(Cell(m_View.Rows().SelectedRow(), StepList::kStep), "Vents") << "the copy is selected";
  m_Device.RunInVisits("UPDATE Step SET RatingType = 'Condition'");
  EXPECT_TRUE(RunCommand(m_View, "stepDefaults"));
  EXPECT_NE(Document().Categories().m_CompleteFlag, 0);
  Fill(m_View, "searchField", "not");
  ASSERT_EQ(m_View.Rows().Model().rowCount(), 1);
  EXPECT_TRUE(m_View.SelectStep(m_Device.StepKey(u"20.1"))) << "a search hides no step that is asked for";
  Fill(m_View, "searchField", "not");
  Show(u"Cellar");
  EXPECT_EQ(Words(m_View, "searchField"), "");
  EXPECT_EQ(m_View.Rows().Model().rowCount(), 1);
}

// Nothing of a row is out of reach at the width of a handheld: every column is wide enough for a finger.
TEST_F(StepListViewTest, ColumnsFitAFingerAndRowsTheirWords) {
  m_Device.Enter(u"20.2",
                 "StepTitle = 'Gutters, downspouts, splash blocks, leaders and extensions to the lawn'");
  Show(u"Roof");
  device::ui::ListView& rows = m_View.Rows();
  int right = 0;
  for (int column = 0; column < rows.Model().columnCount(); ++column) {
    EXPECT_GE(rows.columnWidth(column), device::kSmallestTarget) << column;
    right += rows.columnWidth(column);
  }
  EXPECT_LE(right, rows.viewport()->width());
  EXPECT_GT(rows.rowHeight(1), rows.rowHeight(0));
}

}  // namespace
}  // namespace inspector::editing::ui
