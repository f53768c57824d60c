#include "app/MainFrame.h"

#include "device/LastPlace.h"
#include "device/ui/ListView.h"
#include "inspection/ui/InspectionSetupView2.h"
#include "inspection/ui/InspectorView.h"
#include "support/Screens.h"
#include "support/VisitFixture.h"

namespace inspector::app {
namespace {

using MainFrameTest = VisitTest;

TEST_F(MainFrameTest, BackLeadsToWhereOneCameFrom) {
  CMainFrame frame(Document());
  frame.show();
  device::ui::Screen& overview = *frame.CurrentScreen();
  EXPECT_FALSE(frame.GoBack());
  EXPECT_TRUE(frame.Bring(frame.Header()) && frame.Bring(frame.SetUp()));
  PressButton(frame, "backButton");
  EXPECT_EQ(frame.CurrentScreen(), &frame.Header());
  PressButton(frame, "agentsButton");
  EXPECT_EQ(frame.CurrentScreen(), &frame.SetUp());
  EXPECT_TRUE(frame.Bring(overview));
  EXPECT_FALSE(frame.GoBack()) << "the list is where everything begins";
  EXPECT_TRUE(Part<QPushButton>(frame, "openButton").isEnabled());
}

TEST_F(MainFrameTest, TheNextStartGoesOnThereAndSaysSo) {
  Document().CreateInspection(
      [](data::InspectionTable& row) { row.m_DwellingAddress = u"418 Juniper Lane"; });
  {
    CMainFrame frame(Document());
    frame.show();
    frame.Bring(frame.Header());
    Fill(frame, "clientField", "Ana Ruiz");
    EXPECT_TRUE(frame.close());
  }
  m_Device.Close();
  m_Device.Open();
  CMainFrame frame(Document());
  frame.Restore();
  EXPECT_EQ(frame.CurrentScreen(), &frame.Header());
  EXPECT_EQ(Document().Inspection().m_ClientName, u"Ana Ruiz") << "closing wrote what was typed";
  EXPECT_THAT(Words(frame, "message"), HasSubstr("418 Juniper Lane"));
}

TEST_F(MainFrameTest, AWrongCounterIsSetRightWhenThePersonSaysSo) {
  m_Device.Visit(u"House");
  CMainFrame frame(Document());
  frame.show();
  RunCommand(frame, "repairCounters");
  EXPECT_TRUE(device::Contains(Prompts().Transcript().back(), u"are right."));
  m_Device.RunInVisits("UPDATE UniqueID SET NextID = 999 WHERE TableName = 'Inspection'");
  for (const auto answer : {Answer::No, Answer::Yes}) {
    Prompts().Queue(u"Caution", answer);
    RunCommand(frame, "repairCounters");
    EXPECT_EQ(Document().CreateInspection({}).has_value(), answer == Answer::Yes)
        << "its key would be that of another one";
  }
}

// The screens of the visit, with the list of categories in front.
class VisitScreensTest : public VisitTest {
protected:
  void SetUp() override {
    m_Frame.show();
    m_Frame.Bring(m_Frame.Header());
    m_Frame.Bring(m_Frame.Visit().Categories());
  }
  device::ui::ListView& Rows() { return Part<device::ui::ListView>(*m_Frame.CurrentScreen(), "rows"); }
  std::string Title() { return m_Frame.CurrentScreen()->Title().toStdString(); }
  ScriptedDialogs m_Dialogs;
  const std::int32_t m_Visit = m_Device.Visit(u"House");
  CMainFrame m_Frame{Document()};
};

TEST_F(VisitScreensTest, UnfinishedLeadsToWhatIsLeftAndTheTextStays) {
  m_Frame.Bring(m_Frame.Visit().WhatIsLeft());
  Rows().onClick(0, 0);
  EXPECT_NE(Title(), "Unfinished") << "a category that was never opened shows its steps";
  const std::int32_t roof = m_Device.OpenCategory(u"Roof");
  ASSERT_TRUE(m_Frame.Visit().OpenPlace(roof, m_Device.StepKey(u"20.1")));
  const std::int32_t gutters = m_Device.StepKey(u"20.2");
  const device::LastPlace place = {m_Visit, roof, gutters};
  m_Dialogs.Expect("stepPropertySheet", [&](QDialog& sheet) {
    device::Registry& registry = m_Device.GetWorkspace().GetMachine().registry;
    EXPECT_TRUE(QTest::qWaitFor([&] { return device::ReadLastPlace(registry) == place; }))
        << "kept a moment later, whatever becomes of the program";
    Fill(sheet, "commentBox", "Loose.");
    sheet.reject();
  });
  m_Frame.Visit().OpenNextUnfinished();
  EXPECT_EQ(m_Device.Finding(gutters), u"20.2|Gutters|||Loose.") << "the one after 20.1";
  CMainFrame next(Document());
  next.Restore();
  EXPECT_EQ(next.Visit().Place().stepID, gutters);
  EXPECT_FALSE(m_Frame.Visit().OpenPlace(99, 0));
}

TEST_F(VisitScreensTest, UndoIsATapAwayAndACategoryThatGoesTakesItsScreenAlong) {
  m_Frame.Bring(m_Frame.Header());
  Document().ChangeDocType(u"Condo");
  Document().FinishDocTypeChange();
  m_Frame.Bring(m_Frame.Visit().Categories());
  Rows().onClick(0, 1);
  EXPECT_EQ(Title(), "Kitchen");
  QCoreApplication::processEvents();
  // The steps of the kitchen were made since.
  Prompts().Queue(u"Caution", Answer::Yes);
  PressButton(m_Frame, "undoButton");
  EXPECT_EQ(Title(), "CATEGORY LIST");
  EXPECT_EQ(Document().Categories().RecordCount(), 5);
  EXPECT_EQ(Words(m_Frame, "message"), "Taken back: Doc Type");
  QCoreApplication::processEvents();
  EXPECT_EQ(m_Frame.findChild<QPushButton*>(QStringLiteral("undoButton")), nullptr);
}

}  // namespace
}  // namespace inspector::app
