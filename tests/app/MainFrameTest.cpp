#include "app/MainFrame.h"

#include "app/OptionsForm.h"
#include "inspection/ui/InspectionSetupView2.h"
#include "inspection/ui/InspectorView.h"
#include "support/Screens.h"
#include "support/VisitFixture.h"

namespace inspector::app {
namespace {

using MainFrameTest = tests::VisitTest;

TEST_F(MainFrameTest, BackLeadsToWhereOneCameFrom) {
  CMainFrame frame(Document());
  frame.show();
  device::ui::Screen& overview = *frame.CurrentScreen();
  EXPECT_EQ(overview.findChild<QTableView*>()->model()->rowCount(), 1);
  EXPECT_FALSE(frame.GoBack());
  EXPECT_TRUE(frame.Bring(frame.Header()));
  EXPECT_TRUE(frame.Bring(frame.SetUp()));
  tests::PressButton(frame, "backButton");
  EXPECT_EQ(frame.CurrentScreen(), &frame.Header());
  tests::PressButton(frame, "agentsButton");
  EXPECT_EQ(frame.CurrentScreen(), &frame.SetUp());
  EXPECT_TRUE(frame.Bring(overview));
  EXPECT_FALSE(frame.GoBack()) << "the list is where everything begins";
  EXPECT_TRUE(frame.findChild<QPushButton*>(QStringLiteral("openButton"))->isEnabled());
}

TEST_F(MainFrameTest, TheNextStartGoesOnThereAndSaysSo) {
  Document().CreateInspection(
      [](data::InspectionTable& row) { row.m_DwellingAddress = u"418 Juniper Lane"; });
  {
    CMainFrame frame(Document());
    frame.show();
    frame.Bring(frame.Header());
    frame.findChild<QLineEdit*>(QStringLiteral("clientField"))->setText(QStringLiteral("Ana Ruiz"));
    EXPECT_TRUE(frame.close());
  }
  m_Device.Close();
  m_Device.Open();
  CMainFrame frame(Document());
  frame.Restore();
  EXPECT_EQ(frame.CurrentScreen(), &frame.Header());
  EXPECT_EQ(Document().Inspection().m_ClientName, u"Ana Ruiz") << "closing wrote what was typed";
  EXPECT_TRUE(tests::Part<QLabel>(frame, "message").text().contains(QStringLiteral("418 Juniper Lane")));
}

TEST_F(MainFrameTest, AWrongCounterIsSetRightWhenThePersonSaysSo) {
  m_Device.Visit(u"House");
  const auto next = [this] { return Document().CreateInspection({}); };
  CMainFrame frame(Document());
  frame.show();
  const auto repair = [&frame] { frame.findChild<QAction*>(QStringLiteral("repairCounters"))->trigger(); };
  repair();
  EXPECT_TRUE(device::Contains(Prompts().Transcript().back(), u"are right."));
  m_Device.RunInVisits("UPDATE UniqueID SET NextID = 999 WHERE TableName = 'Inspection'");
  Prompts().Queue(u"Caution", device::Answer::No);
  repair();
  EXPECT_FALSE(next()) << "its key would be that of another one";
  Prompts().Queue(u"Caution", device::Answer::Yes);
  repair();
  EXPECT_TRUE(next());
}

TEST_F(MainFrameTest, OptionsAreSavedWholeOrRefused) {
  data::Workspace& workspace = m_Device.GetWorkspace();
  OptionsForm form(workspace);
  OptionsForm::Values values = form.Load();
  values[u"Port"] = u"x";
  EXPECT_EQ(form.WhyNot(values)->text, u"\"Port\" does not take \"x\".");
  values[u"Port"] = u"4000";
  values[u"ShowStepNumbers"] = u"TRUE";
  values[u"OwnerName"] = u"Ana Ruiz";
  EXPECT_FALSE(form.WhyNot(values));
  EXPECT_EQ(form.Save(values), data::OptionsSaved::Done);
  workspace.ForgetOptions();
  EXPECT_EQ(OptionsForm(workspace).Load(), values);
  EXPECT_EQ(workspace.Options().m_Port, 4000);

  // The letters' case alone makes it another path.
  values[u"TemplatePath"] = u"\\my documents\\Template_Data.cdb";
  EXPECT_EQ(form.Save(values), data::OptionsSaved::MustQuit);
}

}  // namespace
}  // namespace inspector::app
