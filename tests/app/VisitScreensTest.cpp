#include "app/VisitScreens.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

#include "app/MainFrame.h"
#include "device/ui/ListView.h"
#include "inspection/ui/InspectorView.h"
#include "support/ScriptedDialogs.h"
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
    return *m_Frame->CurrentScreen()->findChild<device::ui::ListView*>(QStringLiteral("rows"));
  }
  std::string Title() { return m_Frame->CurrentScreen()->Title().toStdString(); }
  // Writes a comment in the sheet that opens next and closes it.
  void ExpectSheet(const char* comment) {
    m_Dialogs.Expect("stepPropertySheet", [comment](QDialog& sheet) {
      auto* box = sheet.findChild<QPlainTextEdit*>(QStringLiteral("commentBox"));
      ASSERT_NE(box, nullptr);
      box->insertPlainText(QString::fromUtf8(comment));
      sheet.reject();
    });
  }

  tests::ScriptedDialogs m_Dialogs;
  std::optional<CMainFrame> m_Frame;
};

TEST_F(VisitScreensTest, EveryCategoryOpensInItsScreenAndBackReturns) {
  Rows().onClick(1, 1);  // Attic, Roof, Safety, Cellar, Checklist
  EXPECT_EQ(Title(), "Roof");
  tests::PressButton(*m_Frame, "backButton");
  EXPECT_EQ(Title(), "CATEGORY LIST");
  Rows().onClick(4, 1);
  EXPECT_EQ(Title(), "Checklist");
  EXPECT_EQ(m_Frame->Visit().Place().categoryID, Document().Categories().m_CategoryID);
  EXPECT_TRUE(m_Frame->GoBack());
  EXPECT_TRUE(m_Frame->GoBack());
  EXPECT_EQ(m_Frame->CurrentScreen(), &m_Frame->Header());
}

TEST_F(VisitScreensTest, UnfinishedLeadsToWhatIsLeftAndTheTextStays) {
  m_Frame->Bring(m_Frame->Visit().WhatIsLeft());
  Rows().onClick(0, 0);
  EXPECT_NE(Title(), "Unfinished") << "a category that was never opened shows its steps";
  const std::int32_t roof = m_Device.OpenCategory(u"Roof");
  const std::int32_t step = m_Device.StepKey(u"20.1");
  ASSERT_TRUE(m_Frame->Visit().OpenPlace(roof, step));
  ExpectSheet("Loose.");
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
  EXPECT_EQ(m_Frame->findChild<QLabel*>(QStringLiteral("message"))->text(),
            QStringLiteral("Taken back: Doc Type"));
  QCoreApplication::processEvents();
  EXPECT_EQ(m_Frame->findChild<QPushButton*>(QStringLiteral("undoButton")), nullptr);
}

}  // namespace
}  // namespace inspector::app
