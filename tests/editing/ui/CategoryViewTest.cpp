#include "editing/ui/CategoryView.h"

#include "editing/ui/QtEditingDialogs.h"
#include "support/Screens.h"
#include "support/ScriptedEditingDialogs.h"
#include "support/VisitFixture.h"

namespace inspector::editing::ui {
namespace {

using Screen = CategoryList::Screen;

enum { kMark, kTitle, kStatus };
constexpr int kRoof = 1;

class CategoryViewTest : public VisitTest {
protected:
  void SetUp() override {
    m_Device.Visit(u"House");
    m_View.onOpen = [this](Screen screen) { m_Opened.push_back(screen); };
    ShowOnHandheld(m_View);
  }
  void Click(int row, int column) { ClickCell(m_View.Rows(), row, column); }
  bool IsTicked(int row) {
    return m_View.Rows().Model().index(row, kMark).data(device::ui::ListModel::CheckImageRole).toInt() ==
           static_cast<int>(device::CheckImage::Ticked);
  }

  ScriptedEditingDialogs m_Dialogs;
  CCategoryView m_View{m_Device.Document(), m_Dialogs};
  std::vector<Screen> m_Opened;
};

TEST_F(CategoryViewTest, MarksTogglesAndOpens) {
  EXPECT_FALSE(RunCommand(m_View, "rename")) << "nothing is marked";
  Click(kRoof, kMark);
  EXPECT_TRUE(IsTicked(kRoof));
  for (const char* caption : {"Set Not Present", "Set Present"}) {
    EXPECT_TRUE(RunCommand(m_View, "notPresent"));
    EXPECT_EQ(Part<QAction>(m_View, "notPresent").text(), QLatin1String(caption));
  }
  EXPECT_EQ(CellWords(m_View.Rows(), kRoof, kStatus), "Not Present");
  Click(kRoof, kTitle);
  EXPECT_TRUE(m_Opened.empty());
  Click(3, kStatus);
  Click(4, kTitle);
  EXPECT_THAT(m_Opened, ElementsAre(Screen::Steps, Screen::Form));
}

TEST_F(CategoryViewTest, MakesTheCategoriesThatTheOfficeDoesNotSend) {
  const QAction& make = Part<QAction>(m_View, "makeCategories");
  EXPECT_FALSE(make.isVisible());
  m_Device.RunInVisits("DELETE FROM Category");
  m_View.OnShow();
  EXPECT_TRUE(make.isVisible());
  EXPECT_TRUE(RunCommand(m_View, "makeCategories"));
  EXPECT_EQ(m_View.Rows().Model().rowCount(), 5);
  EXPECT_FALSE(make.isVisible());
}

TEST_F(CategoryViewTest, SearchLeavesWhatHoldsTheWords) {
  Fill(m_View, "searchField", "ceLLar");
  ASSERT_EQ(m_View.Rows().Model().rowCount(), 1);
  Click(0, kTitle);
  EXPECT_EQ(Document().Categories().m_CategoryTitle, u"Cellar");
  Fill(m_View, "searchField", "");
  EXPECT_EQ(m_View.Rows().Model().rowCount(), 5);
}

TEST_F(CategoryViewTest, CommandsShowTheirWork) {
  Click(kRoof, kMark);
  Prompts().QueueText(u"Rename Category", u"Cover & gutters");
  EXPECT_TRUE(RunCommand(m_View, "rename"));
  EXPECT_EQ(CellWords(m_View.Rows(), kRoof, kTitle), "Cover & gutters");
  m_Dialogs.QueueCopies(EditingDialogs::CategoryCopies{u"Shed", 2, false});
  EXPECT_TRUE(RunCommand(m_View, "duplicate"));
  EXPECT_EQ(m_View.Rows().Model().rowCount(), 7);
  EXPECT_EQ(CellWords(m_View.Rows(), m_View.Rows().SelectedRow(), kTitle), "Shed");
  Prompts().Queue(u"Caution", Answer::Yes);
  EXPECT_TRUE(RunCommand(m_View, "defaults"));
  EXPECT_EQ(CellWords(m_View.Rows(), 0, kStatus), "Complete");
  EXPECT_EQ(Words(m_View, "whatIsLeft"), "5 of 7 categories to complete (1 not opened yet), 4 steps to do");
}

TEST_F(CategoryViewTest, ComesBackToTheTopRow) {
  m_Device.RunInVisits(
      "WITH RECURSIVE n(i) AS (SELECT 10 UNION ALL SELECT i + 1 FROM n WHERE i < 69) INSERT INTO Category "
      "(CategoryID, CategoryTitle, CategoryNumber, InspectionID) SELECT 5000 + i, 'Room ' || i, i, " +
      std::to_string(m_Device.Visit(u"Condo")) + " FROM n");
  m_View.OnShow();
  ASSERT_EQ(m_View.Rows().Model().rowCount(), 61);
  Click(40, kTitle);
  const int top = m_View.Rows().TopRow();
  EXPECT_GT(top, 20);
  CCategoryView again(Document(), m_Dialogs);
  ShowOnHandheld(again);
  EXPECT_EQ(again.Rows().TopRow(), top);

  // A mark that was set before does not draw a person away from where a category was opened.
  for (const auto& [row, column] : {std::pair{2, kMark}, {40, kTitle}}) {
    m_View.OnShow();
    Click(row, column);
    m_View.OnShow();
    EXPECT_EQ(m_View.Rows().SelectedRow(), row);
  }
}

TEST(DuplicateCategoryDialogTest, TellsWhatIsWanted) {
  ScriptedDialogs dialogs;
  QtEditingDialogs screens;
  dialogs.Expect("duplicateCategoryDialog", [](QDialog& dialog) {
    EXPECT_EQ(Words(dialog, "nameField"), "Roof #2");
    Fill(dialog, "nameField", "Shed");
    for (const char* button : {"moreButton", "moreButton", "withDataBox"}) PressButton(dialog, button);
    dialog.accept();
  });
  const auto wanted = screens.AskDuplicateCategory({u"Roof #2", 1, false});
  ASSERT_TRUE(wanted);
  EXPECT_EQ(std::tie(wanted->name, wanted->copies, wanted->withData), std::tuple(u"Shed", 3, true));
  dialogs.ExpectPress("duplicateCategoryDialog", QStringLiteral("Cancel"));
  EXPECT_FALSE(screens.AskDuplicateCategory({u"Roof #2", 1, false}));
}

}  // namespace
}  // namespace inspector::editing::ui
