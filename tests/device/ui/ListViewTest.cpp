#include "device/ui/ListView.h"

#include <set>

#include "device/Format.h"
#include "support/Screens.h"

namespace inspector::device::ui {
namespace {

class ManyRows : public RowSource {
public:
  int RowCount() const override { return m_Count; }
  ListRow ShownRow(int row) override {
    m_Fetched.insert(row);
    return {{u"", Format(m_Name, row), u"Done"}, row == m_Ticked ? CheckImage::Ticked : CheckImage::Empty};
  }

  int m_Count = 10000;
  int m_Ticked = -1;
  TextView m_Name = u"Roof #%d";
  std::set<int> m_Fetched;
};

class ListViewTest : public ::testing::Test {
protected:
  ListViewTest() {
    m_View.resize(480, 600);
    m_View.onClick = [this](int row, int column) { m_Clicks.emplace_back(row, column); };
    m_View.onSelect = [this](int row) { m_Selected.push_back(row); };
    m_View.show();
    QApplication::processEvents();
  }
  void ClickAt(int x, int y) {
    QTest::mouseClick(m_View.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(x, y));
  }

  ManyRows m_Rows;
  ListView m_View{m_Rows, {{u"*", 25, ListColumn::Align::Centre, true}, {u"Title", 125}, {u"Status", 100}}};
  std::vector<std::pair<int, int>> m_Clicks;
  std::vector<int> m_Selected;
};

TEST_F(ListViewTest, FetchesOnlyWhatIsOnTheScreen) {
  m_View.grab();
  EXPECT_LT(m_Rows.m_Fetched.size(), 30U);
  m_View.SelectRow(9000);
  m_View.grab();
  EXPECT_LT(m_Rows.m_Fetched.size(), 60U);
  EXPECT_TRUE(m_Rows.m_Fetched.contains(9000));
}

TEST_F(ListViewTest, ClicksAndKeysTellRowAndColumn) {
  const int row = m_View.rowHeight(0);
  EXPECT_GE(row, kSmallestTarget);
  ClickAt(10, row / 2);
  ClickAt(60, 2 * row + row / 2);
  ClickAt(m_View.viewport()->width() - 2, row / 2);
  QTest::keyClick(&m_View, Qt::Key_Down);
  QTest::keyClick(&m_View, Qt::Key_Space);
  QTest::keyClick(&m_View, Qt::Key_Return);
  EXPECT_EQ(m_Clicks, (std::vector{std::pair(0, 0), {2, 1}, {0, 2}, {1, 0}, {1, 2}}));
  EXPECT_EQ(m_Selected, (std::vector{0, 2, 0, 1}));
}

// The first click of the two was on another list, in whose place this one has come.
TEST_F(ListViewTest, TheSecondClickOfADoubleClickElsewhereOpensNothing) {
  const QPointF at(60, m_View.rowHeight(0) / 2.0);
  QMouseEvent second(QEvent::MouseButtonDblClick, at, m_View.viewport()->mapToGlobal(at), Qt::LeftButton,
                     Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(m_View.viewport(), &second);
  QTest::mouseRelease(m_View.viewport(), Qt::LeftButton, Qt::NoModifier, at.toPoint());
  EXPECT_TRUE(m_Clicks.empty());
  ClickAt(60, m_View.rowHeight(0) / 2);
  EXPECT_EQ(m_Clicks.size(), 1u);
}

TEST_F(ListViewTest, KeepsTheRowWhenTheListIsReadAgain) {
  m_View.SelectRow(200);
  const int top = m_View.TopRow();
  m_Selected.clear();
  m_Rows.m_Count = 9000;
  m_View.Refill();
  EXPECT_EQ(m_View.SelectedRow(), 200);
  EXPECT_EQ(m_View.TopRow(), top);
  m_Rows.m_Count = 100;
  m_View.Refill();
  EXPECT_EQ(m_View.SelectedRow(), -1);
  EXPECT_TRUE(m_Selected.empty());
}

// Such rows get their height only when they come into sight.
TEST_F(ListViewTest, ARowThatWasAddedAtTheEndIsShownWhole) {
  m_Rows.m_Name = u"Bathroom beside the bedroom of the guests on the upper floor, with a shower #%d";
  m_View.Refill();
  m_View.SelectRow(9999);
  m_Rows.m_Count = 10003;
  m_View.Refill();
  m_View.SelectRow(10002);
  QApplication::processEvents();
  const QRect row = m_View.visualRect(m_View.model()->index(10002, 1));
  EXPECT_GT(row.height(), 3 * m_View.fontMetrics().lineSpacing());
  EXPECT_TRUE(m_View.viewport()->rect().contains(row));
}

TEST_F(ListViewTest, ShowsTheMarkOnlyWhereItIsSet) {
  const QImage before = m_View.grab().toImage();
  m_Rows.m_Ticked = 0;
  m_View.Model().RefreshRow(0);
  EXPECT_NE(before, m_View.grab().toImage());
  EXPECT_EQ(m_View.model()->index(0, 0).data(Qt::AccessibleTextRole).toString(), QStringLiteral("marked"));
}

}  // namespace
}  // namespace inspector::device::ui
