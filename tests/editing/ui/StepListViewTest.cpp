#include "editing/ui/StepListView.h"

#include <QMenu>

#include "support/Screens.h"
#include "support/ScriptedEditingDialogs.h"
#include "support/VisitFixture.h"

namespace inspector::editing::ui {
namespace {

using tests::CellText;
using tests::ClickCell;
using tests::Part;

class StepListViewTest : public tests::VisitTest {
protected:
  void SetUp() override {
    m_Device.Visit(u"House");
    m_View.resize(480, 560);
    Show(u"Roof");
  }
  void Show(const Text& category) {
    for (int n = 0; Document().Categories().m_CategoryTitle != category; ++n)
      ASSERT_TRUE(Document().SetCurrentCategory(n));
    m_View.show();
    m_View.OnShow();
    QApplication::processEvents();
  }
  void Rate(int row, const char* choice) {
    ClickCell(m_View.Rows(), row, StepList::kRating);
    const std::unique_ptr<QMenu> menu(&Part<QMenu>(m_View, "ratingMenu"));
    for (QAction* action : menu->actions())
      if (action->text() == QLatin1String(choice)) action->trigger();
    menu->close();
  }
  Text Finding(const Text& number) { return m_Device.Finding(m_Device.StepKey(number)); }

  tests::ScriptedEditingDialogs m_Dialogs;
  CStepListView m_View{m_Device.Document(), m_Dialogs};
};

TEST_F(StepListViewTest, RatesInTheList) {
  EXPECT_EQ(m_View.Title(), QStringLiteral("Roof"));
  EXPECT_EQ(Part<QLabel>(m_View, "whatIsLeft").text(), QStringLiteral("3 of 3 steps to rate"));
  EXPECT_EQ(CellText(m_View.Rows(), 0, StepList::kRating), QStringLiteral("Not rated"));
  Rate(0, "Good");
  EXPECT_EQ(CellText(m_View.Rows(), 0, StepList::kRating), QStringLiteral("Good"));
  EXPECT_EQ(Part<QLabel>(m_View, "whatIsLeft").text(), QStringLiteral("2 of 3 steps to rate"));
  m_Dialogs.QueueSheet([] { return false; });
  Rate(1, "Poor");
  EXPECT_EQ(CellText(m_View.Rows(), 1, StepList::kComments), QStringLiteral("Incomplete"));
  EXPECT_EQ(m_View.Rows().Model().index(1, StepList::kComments).data(Qt::ToolTipRole).toString(),
            QStringLiteral("the rating asks for a comment"));
  Rate(0, "<clear>");
  EXPECT_EQ(Finding(u"20.1"), u"20.1|Shingles|||");
}

TEST_F(StepListViewTest, ColumnsOpenTheSheetAndTheListFollows) {
  m_Dialogs.QueueSheet([this] {
    m_Device.Enter(u"20.2", "Comments = 'Leaves.'");
    return true;
  });
  ClickCell(m_View.Rows(), 1, StepList::kComments);
  EXPECT_EQ(m_Dialogs.SheetsOpened().back().second, 1);
  EXPECT_EQ(CellText(m_View.Rows(), 1, StepList::kComments), QStringLiteral("Complete"));
  EXPECT_EQ(m_View.Rows().SelectedRow(), 1);
  m_Dialogs.QueueSheet([] { return true; });
  EXPECT_TRUE(tests::Run(m_View, "stepProperties"));
  EXPECT_EQ(m_Dialogs.SheetsOpened().back(),
            (std::pair{m_Device.StepKey(u"20.2"), tests::ScriptedEditingDialogs::kTabOfOption}));
}

TEST_F(StepListViewTest, CommandsAndSearch) {
  EXPECT_TRUE(m_View.SelectStep(m_Device.StepKey(u"20.2")));
  Part<QLineEdit>(m_View, "searchField").setText(QStringLiteral("gutters"));
  Prompts().QueueText(u"Duplicate Step", u"Vents");
  EXPECT_TRUE(tests::Run(m_View, "duplicateStep"));
  EXPECT_EQ(CellText(m_View.Rows(), m_View.Rows().SelectedRow(), StepList::kStep), QStringLiteral("Vents"))
      << "the copy is selected";
  m_Device.RunInVisits("UPDATE Step SET RatingType = 'Condition'");
  EXPECT_TRUE(tests::Run(m_View, "stepDefaults"));
  EXPECT_NE(Document().Categories().m_CompleteFlag, 0);
  EXPECT_EQ(CellText(m_View.Rows(), 0, StepList::kMaterials), QStringLiteral("Complete"));
  EXPECT_EQ(CellText(m_View.Rows(), 3, StepList::kMaterials), QStringLiteral("None"));

  auto& search = Part<QLineEdit>(m_View, "searchField");
  search.setText(QStringLiteral("not"));
  ASSERT_EQ(m_View.Rows().Model().rowCount(), 1);
  EXPECT_TRUE(m_View.SelectStep(m_Device.StepKey(u"20.1")))
      << "a search does not hide a step that is asked for";
  search.setText(QStringLiteral("not"));
  Show(u"Cellar");
  EXPECT_TRUE(search.text().isEmpty());
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
