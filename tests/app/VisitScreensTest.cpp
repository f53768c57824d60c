#include "app/VisitScreens.h"

#include "app/MainFrame.h"
#include "device/ui/ListView.h"
#include "inspection/ui/InspectorView.h"
#include "support/ScreenWords.h"
#include "support/VisitFixture.h"

namespace inspector::app {
namespace {

class VisitScreensTest : public tests::VisitTest {
protected:
  void SetUp() override {
    m_Device.Visit(u"House");
    m_Frame.emplace(Document());
    m_Frame->show();
    m_Frame->Bring(m_Frame->Header());
    m_Frame->Bring(m_Frame->Visit().Categories());
  }
  device::ui::ListView& Rows() {
    return tests::Part<device::ui::ListView>(*m_Frame->CurrentScreen(), "rows");
  }
  std::string Title() { return m_Frame->CurrentScreen()->Title().toStdString(); }
  tests::ScriptedDialogs m_Dialogs;
  std::optional<CMainFrame> m_Frame;
};

TEST_F(VisitScreensTest, UnfinishedLeadsToWhatIsLeftAndTheTextStays) {
  m_Frame->Bring(m_Frame->Visit().WhatIsLeft());
  Rows().onClick(0, 0);
  EXPECT_NE(Title(), "Unfinished") << "a category that was never opened shows its steps";
  const std::int32_t roof = m_Device.OpenCategory(u"Roof");
  ASSERT_TRUE(m_Frame->Visit().OpenPlace(roof, m_Device.StepKey(u"20.1")));
  m_Dialogs.Expect("stepPropertySheet", [](QDialog& sheet) {
    tests::Fill(sheet, "commentBox", "Loose.");
    sheet.reject();
  });
  m_Frame->Visit().OpenNextUnfinished();
  EXPECT_EQ(m_Device.Finding(m_Device.StepKey(u"20.2")), u"20.2|Gutters|||Loose.") << "the one after 20.1";
  EXPECT_FALSE(m_Frame->Visit().OpenPlace(99, 0));
}

TEST_F(VisitScreensTest, UndoIsATapAwayAndACategoryThatGoesTakesItsScreenAlong) {
  m_Frame->Bring(m_Frame->Header());
  Document().ChangeDocType(u"Condo");
  Document().FinishDocTypeChange();
  m_Frame->Bring(m_Frame->Visit().Categories());
  Rows().onClick(0, 1);
  EXPECT_EQ(Title(), "Kitchen");
  QCoreApplication::processEvents();
  // The steps of the kitchen were made since.
  Prompts().Queue(u"Caution", device::Answer::Yes);
  tests::PressButton(*m_Frame, "undoButton");
  EXPECT_EQ(Title(), "CATEGORY LIST");
  EXPECT_EQ(Document().Categories().RecordCount(), 5);
  EXPECT_EQ(tests::Words(*m_Frame, "message"), "Taken back: Doc Type");
  QCoreApplication::processEvents();
  EXPECT_EQ(m_Frame->findChild<QPushButton*>(QStringLiteral("undoButton")), nullptr);
}

}  // namespace
}  // namespace inspector::app
