#include "inspection/ui/InspectionOverviewView.h"

#include "support/Screens.h"
#include "support/VisitFixture.h"

namespace inspector::inspection::ui {
namespace {

using device::ui::ListView;

class InspectionOverviewViewTest : public VisitTest {
protected:
  InspectionOverviewViewTest() {
    m_Device.Visit(u"House");
    m_Device.Visit(u"Condo");
    m_View.resize(480, 700);
    m_View.show();
    m_View.onOpened = [this] { ++m_Opened; };
    m_View.OnShow();
  }
  void Run(const char* command) { RunCommand(m_View, command); }
  int Count() { return m_List.model()->rowCount(); }
  void Filter(const char* words) { m_View.findChild<QLineEdit*>()->setText(QLatin1String(words)); }

  CInspectionOverview m_View{Document()};
  ListView& m_List = Part<ListView>(m_View, "inspectionList");
  int m_Opened = 0;
};

TEST_F(InspectionOverviewViewTest, OpensTheRowThatIsSelected) {
  EXPECT_EQ(m_List.SelectedRow(), 2) << "the current inspection";
  m_List.SelectRow(1);
  QTest::keyClick(&m_List, Qt::Key_Return);
  EXPECT_EQ(m_Opened, 1);
  EXPECT_EQ(Document().Inspection().m_InspectionID, 1001);
  Prompts().Queue(u"Warning", Answer::Yes);
  Run("new");
  EXPECT_EQ(m_Opened, 2);
  EXPECT_EQ(Document().Inspection().m_InspectionID, 1003);
}

TEST_F(InspectionOverviewViewTest, ActsOnWhatTheFilterShows) {
  Document().CreateInspection([](data::InspectionTable& row) { row.m_ClientName = u"Ana Ruiz"; });
  m_View.OnShow();
  ASSERT_EQ(m_List.SelectedRow(), 3) << "what the document went to";
  m_List.SelectRow(1);
  m_View.OnShow();  // the options were closed, say
  EXPECT_EQ(m_List.SelectedRow(), 1) << "what a person selected stays so";
  Filter("ruiz");
  ASSERT_EQ(Count(), 1);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&m_View));
  QTest::keyClick(&m_View, Qt::Key_F, Qt::ControlModifier);
  ASSERT_EQ(QApplication::focusWidget(), &Part<QLineEdit>(m_View, "findField"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_EQ(Count(), 4);
  EXPECT_TRUE(m_List.hasFocus());
  Filter("ruiz");
  EXPECT_FALSE(Part<QAction>(m_View, "delete").isEnabled()) << "nothing is selected";
  EXPECT_FALSE(m_View.TakeSelected());
  EXPECT_THAT(Prompts().Last(), HasSubstr("Select an inspection first."));
  Filter("");
  EXPECT_TRUE(m_View.TakeSelected());
  EXPECT_EQ(Document().Inspection().m_InspectionID, 1001);
  m_List.SelectRow(3);
  Filter("ruiz");
  EXPECT_TRUE(m_View.TakeSelected());
  EXPECT_EQ(Document().Inspection().m_ClientName, u"Ana Ruiz");
  Prompts().QueueText(u"Enter the Doc # of the new Inspection:", u"77");
  Run("duplicate");
  ASSERT_EQ(Count(), 2);
  EXPECT_EQ(m_List.SelectedRow(), 1) << "the copy";
  Prompts().Queue(u"Caution", Answer::Yes);
  Prompts().Queue(u"Warning", Answer::Yes);
  Run("delete");
  EXPECT_EQ(Count(), 1);
  Filter("");
  EXPECT_EQ(Count(), 4);
}

TEST_F(InspectionOverviewViewTest, DeletesOneOrAll) {
  m_List.selectAll();
  Prompts().Queue(u"Caution", Answer::Yes);
  Run("delete");
  EXPECT_EQ(Prompts().Last(), "Alert: Only one inspection can be deleted at a time.");
  EXPECT_EQ(Count(), 3);
  Prompts().Queue(u"Warning", Answer::Yes);
  Run("deleteAll");
  EXPECT_EQ(Count(), 1);
}

TEST_F(InspectionOverviewViewTest, MergesIntoTheSelectedInspection) {
  std::vector<std::int32_t> merged;
  m_View.onMerge = [&](std::int32_t key) { merged.push_back(key); };
  m_List.SelectRow(-1);
  Run("merge");
  EXPECT_EQ(Prompts().Last(), "Error: You must select an inspection before pressing the button.");
  m_List.SelectRow(1);
  Run("merge");
  EXPECT_EQ(merged, std::vector<std::int32_t>{1001});
}

}  // namespace
}  // namespace inspector::inspection::ui
