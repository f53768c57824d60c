#include "editing/ui/CategoryView.h"

#include "editing/ui/QtEditingDialogs.h"
#include "support/Screens.h"
#include "support/ScriptedEditingDialogs.h"
#include "support/VisitFixture.h"

namespace inspector::editing::ui {
namespace {

using device::CheckImage;
using device::ui::ListModel;
using Screen = CategoryList::Screen;
using tests::CellText;
using tests::ClickCell;
using tests::Part;

constexpr int kMark = 0;
constexpr int kTitle = 1;
constexpr int kStatus = 2;
constexpr int kRoof = 1;

class CategoryViewTest : public tests::VisitTest {
protected:
  void SetUp() override {
    m_Device.Visit(u"House");
    m_View.onOpen = [this](Screen screen) { m_Opened.push_back(screen); };
    m_View.resize(480, 560);
    m_View.show();
    m_View.OnShow();
    QApplication::processEvents();
  }
  bool IsTicked(int row) {
    return m_View.Rows().Model().index(row, kMark).data(ListModel::CheckImageRole).toInt() ==
           static_cast<int>(CheckImage::Ticked);
  }
  QString Status(int row) { return CellText(m_View.Rows(), row, kStatus); }

  tests::ScriptedEditingDialogs m_Dialogs;
  CCategoryView m_View{m_Device.Document(), m_Dialogs};
  std::vector<Screen> m_Opened;
};

TEST_F(CategoryViewTest, MarksTogglesAndOpens) {
  EXPECT_FALSE(tests::Run(m_View, "rename")) << "nothing is marked";
  ClickCell(m_View.Rows(), kRoof, kMark);
  EXPECT_TRUE(IsTicked(kRoof));
  EXPECT_TRUE(m_Opened.empty());
  for (const char* caption : {"Set Not Present", "Set Present"}) {
    EXPECT_TRUE(tests::Run(m_View, "notPresent"));
    EXPECT_EQ(Part<QAction>(m_View, "notPresent").text(), QLatin1String(caption));
  }
  EXPECT_EQ(Status(kRoof), QStringLiteral("Not Present"));
  ClickCell(m_View.Rows(), kRoof, kTitle);
  EXPECT_TRUE(m_Opened.empty());
  ClickCell(m_View.Rows(), 3, kStatus);
  ClickCell(m_View.Rows(), 4, kTitle);
  EXPECT_THAT(m_Opened, ::testing::ElementsAre(Screen::Steps, Screen::Form));
}

TEST_F(CategoryViewTest, KeysDoTheSame) {
  QWidget& rows = m_View.Rows();
  QTest::keyClick(&rows, Qt::Key_Down);
  QTest::keyClick(&rows, Qt::Key_Space);
  EXPECT_TRUE(IsTicked(kRoof));
  QTest::keyClick(&rows, Qt::Key_Return);
  EXPECT_THAT(m_Opened, ::testing::ElementsAre(Screen::Steps));
  EXPECT_EQ(Document().Categories().m_CategoryTitle, u"Roof");
  m_View.OnShow();
  EXPECT_EQ(m_View.Rows().SelectedRow(), kRoof) << "back on the same row";
}

TEST_F(CategoryViewTest, SearchLeavesWhatHoldsTheWords) {
  auto& search = Part<QLineEdit>(m_View, "searchField");
  search.setText(QStringLiteral("ceLLar"));
  ASSERT_EQ(m_View.Rows().Model().rowCount(), 1);
  ClickCell(m_View.Rows(), 0, kTitle);
  EXPECT_EQ(Document().Categories().m_CategoryTitle, u"Cellar");
  search.setText(QStringLiteral("nothing like it"));
  EXPECT_EQ(m_View.Rows().Model().rowCount(), 0);
  search.clear();
  EXPECT_EQ(m_View.Rows().Model().rowCount(), 5);
}

TEST_F(CategoryViewTest, CommandsShowTheirWork) {
  ClickCell(m_View.Rows(), kRoof, kMark);
  Prompts().QueueText(u"Rename Category", u"Cover & gutters");
  EXPECT_TRUE(tests::Run(m_View, "rename"));
  EXPECT_EQ(CellText(m_View.Rows(), kRoof, kTitle), QStringLiteral("Cover & gutters"));
  m_Dialogs.QueueCopies(EditingDialogs::CategoryCopies{u"Shed", 2, false});
  EXPECT_TRUE(tests::Run(m_View, "duplicate"));
  EXPECT_EQ(m_View.Rows().Model().rowCount(), 7);
  EXPECT_EQ(Status(kRoof + 1), QStringLiteral("Incomplete"));
  EXPECT_EQ(CellText(m_View.Rows(), m_View.Rows().SelectedRow(), kTitle), QStringLiteral("Shed"));
  Prompts().Queue(u"Caution", device::Answer::Yes);
  EXPECT_TRUE(tests::Run(m_View, "defaults"));
  EXPECT_EQ(Status(0), QStringLiteral("Complete"));
  EXPECT_EQ(Part<QLabel>(m_View, "whatIsLeft").text(),
            QStringLiteral("5 of 7 categories to complete (1 not opened yet), 4 steps to do"));
}

TEST_F(CategoryViewTest, ComesBackToTheTopRow) {
  const int condo = m_Device.Visit(u"Condo");
  m_Device.RunInVisits(
      "WITH RECURSIVE n(i) AS (SELECT 10 UNION ALL SELECT i + 1 FROM n WHERE i < 69) INSERT INTO Category "
      "(CategoryID, CategoryTitle, CategoryNumber, InspectionID) SELECT 5000 + i, 'Room ' || i, i, " +
      std::to_string(condo) + " FROM n");
  m_View.OnShow();
  ASSERT_EQ(m_View.Rows().Model().rowCount(), 61);
  ClickCell(m_View.Rows(), 40, kTitle);
  const int top = m_View.Rows().TopRow();
  EXPECT_GT(top, 20);
  CCategoryView again(Document(), m_Dialogs);
  again.resize(480, 560);
  again.show();
  again.OnShow();
  QApplication::processEvents();
  EXPECT_EQ(again.Rows().TopRow(), top);

  // A mark that was set before does not draw a person away from where a category was opened.
  m_View.OnShow();
  ClickCell(m_View.Rows(), 2, kMark);
  m_View.OnShow();
  EXPECT_EQ(m_View.Rows().SelectedRow(), 2);
  ClickCell(m_View.Rows(), 40, kTitle);
  m_View.OnShow();
  EXPECT_EQ(m_View.Rows().SelectedRow(), 40);
}

TEST(DuplicateCategoryDialogTest, TellsWhatIsWanted) {
  tests::ScriptedDialogs dialogs;
  QtEditingDialogs screens;
  dialogs.Expect("duplicateCategoryDialog", [](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Duplicate Category"));
    auto& name = Part<QLineEdit>(dialog, "nameField");
    EXPECT_EQ(name.text(), QStringLiteral("Roof #2"));
    name.setText(QStringLiteral("Shed"));
    tests::PressButton(dialog, "moreButton");
    tests::PressButton(dialog, "moreButton");
    Part<QCheckBox>(dialog, "withDataBox").click();
    dialog.accept();
  });
  const auto wanted = screens.AskDuplicateCategory({u"Roof #2", 1, false});
  ASSERT_TRUE(wanted);
  EXPECT_EQ(wanted->name, u"Shed");
  EXPECT_EQ(wanted->copies, 3);
  EXPECT_TRUE(wanted->withData);
  dialogs.ExpectPress("duplicateCategoryDialog", QStringLiteral("Cancel"));
  EXPECT_FALSE(screens.AskDuplicateCategory({u"Roof #2", 1, false}));
}

}  // namespace
}  // namespace inspector::editing::ui
