#include "app/MainFrame.h"

#include "inspection/ui/InspectionSetupView2.h"
#include "inspection/ui/InspectorView.h"
#include "support/ScreenWords.h"
#include "support/VisitFixture.h"

namespace inspector::app {
namespace {

using MainFrameTest = tests::VisitTest;

TEST_F(MainFrameTest, BackLeadsToWhereOneCameFrom) {
  CMainFrame frame(Document());
  frame.show();
  device::ui::Screen& overview = *frame.CurrentScreen();
  EXPECT_FALSE(frame.GoBack());
  EXPECT_TRUE(frame.Bring(frame.Header()) && frame.Bring(frame.SetUp()));
  tests::PressButton(frame, "backButton");
  EXPECT_EQ(frame.CurrentScreen(), &frame.Header());
  tests::PressButton(frame, "agentsButton");
  EXPECT_EQ(frame.CurrentScreen(), &frame.SetUp());
  EXPECT_TRUE(frame.Bring(overview));
  EXPECT_FALSE(frame.GoBack()) << "the list is where everything begins";
  EXPECT_TRUE(tests::Part<QPushButton>(frame, "openButton").isEnabled());
}

TEST_F(MainFrameTest, TheNextStartGoesOnThereAndSaysSo) {
  Document().CreateInspection(
      [](data::InspectionTable& row) { row.m_DwellingAddress = u"418 Juniper Lane"; });
  {
    CMainFrame frame(Document());
    frame.show();
    frame.Bring(frame.Header());
    tests::Fill(frame, "clientField", "Ana Ruiz");
    EXPECT_TRUE(frame.close());
  }
  m_Device.Close();
  m_Device.Open();
  CMainFrame frame(Document());
  frame.Restore();
  EXPECT_EQ(frame.CurrentScreen(), &frame.Header());
  EXPECT_EQ(Document().Inspection().m_ClientName, u"Ana Ruiz") << "closing wrote what was typed";
  EXPECT_THAT(tests::Words(frame, "message"), ::testing::HasSubstr("418 Juniper Lane"));
}

TEST_F(MainFrameTest, AWrongCounterIsSetRightWhenThePersonSaysSo) {
  m_Device.Visit(u"House");
  CMainFrame frame(Document());
  frame.show();
  tests::Run(frame, "repairCounters");
  EXPECT_TRUE(device::Contains(Prompts().Transcript().back(), u"are right."));
  m_Device.RunInVisits("UPDATE UniqueID SET NextID = 999 WHERE TableName = 'Inspection'");
  for (const auto answer : {device::Answer::No, device::Answer::Yes}) {
    Prompts().Queue(u"Caution", answer);
    tests::Run(frame, "repairCounters");
    EXPECT_EQ(Document().CreateInspection({}).has_value(), answer == device::Answer::Yes)
        << "its key would be that of another one";
  }
}

}  // namespace
}  // namespace inspector::app
