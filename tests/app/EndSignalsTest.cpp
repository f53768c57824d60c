#include "app/EndSignals.h"

#include <QElapsedTimer>

#include "app/MainFrame.h"

#include "device/LastPlace.h"
#include "device/ui/QtProgressWindow.h"
#include "inspection/ui/InspectorView.h"
#include "support/Screens.h"
#include "support/VisitFixture.h"

namespace inspector::app {
namespace {

class EndSignalsTest : public VisitTest {
protected:
  void SetUp() override {
    m_Signals.Listen();
    m_Signals.onEnd = [this] {
      m_Frame.SaveAndThen([this](bool isStored) {
        m_Ended = true;
        m_IsStored = isStored;
      });
    };
    m_Frame.show();
  }
  // Whether the program ended within this time.
  bool Ends(int milliseconds) {
    return QTest::qWaitFor([this] { return m_Ended; }, milliseconds);
  }

  const std::int32_t m_House = m_Device.Visit(u"House");
  bool m_Ended = false;
  bool m_IsStored = true;
  EndSignals m_Signals;
  CMainFrame m_Frame{Document()};
};

TEST_F(EndSignalsTest, WhatWasTypedAndThePlaceAreSavedAfterTheActionUnderWay) {
  const std::int32_t roof = m_Device.OpenCategory(u"Roof");
  const std::int32_t gutters = m_Device.StepKey(u"20.2");
  ASSERT_TRUE(m_Frame.Bring(m_Frame.Header()) && m_Frame.Visit().OpenPlace(roof, 0));
  ScriptedDialogs person;
  person.Expect("stepPropertySheet", [&](QDialog& sheet) {
    PressButton(sheet, "nextButton");
    auto action = std::make_unique<data::Transaction>(Data().Inspection());
    Part<QPlainTextEdit>(sheet, "commentBox").insertPlainText(QStringLiteral("Leaks."));
    std::raise(SIGTERM);
    EXPECT_FALSE(Ends(1000)) << "longer than typing waits to be written";
    action.reset();  // taken back, with all that was written in the middle of it
    EXPECT_TRUE(Ends(5000));
    EXPECT_EQ(m_Device.Finding(gutters), u"20.2|Gutters|||Leaks.");
    sheet.reject();
  });
  m_Frame.Visit().OpenNextUnfinished();

  m_Ended = false;
  data::Workspace& workspace = m_Device.GetWorkspace();
  person.Expect("optionsSheet", [&](QDialog& sheet) {
    Fill(sheet, "UserName", "ana");
    Fill(sheet, "Port", "forty");
    Fill(sheet, "TemplatePath", "\\My Docu");
    std::raise(SIGTERM);
    EXPECT_TRUE(Ends(5000));
    workspace.ForgetOptions();
    EXPECT_EQ(workspace.Options().m_UserName, u"ana");
    EXPECT_EQ(workspace.PathsInUse().templatePath, u"\\My Documents\\Template_Data.cdb");
    sheet.reject();
    EXPECT_EQ(workspace.Options().m_UserName, u"") << "the program went on, and Cancel means what it says";
  });
  m_Frame.OpenOptions();
  EXPECT_EQ(device::ReadLastPlace(workspace.GetMachine().registry),
            (device::LastPlace{m_House, roof, gutters}));
  m_Device.Visit(u"Condo");
  EXPECT_EQ(m_Frame.Visit().Place().categoryID, 0) << "that was another inspection";
}

TEST_F(EndSignalsTest, WordsThatCannotBeStoredAreFoundInTheLog) {
  const std::int32_t roof = m_Device.OpenCategory(u"Roof");
  ASSERT_TRUE(m_Frame.Bring(m_Frame.Header()) && m_Frame.Visit().OpenPlace(roof, 0));
  Shell other = m_Device.Visits();
  ScriptedDialogs person;
  person.Expect("stepPropertySheet", [&](QDialog& sheet) {
    other.Run("BEGIN IMMEDIATE");
    Part<QPlainTextEdit>(sheet, "commentBox").insertPlainText(QStringLiteral("Leaks at the chimney."));
    std::raise(SIGTERM);
    EXPECT_TRUE(Ends(20'000));
    EXPECT_FALSE(m_IsStored);
    EXPECT_THAT(ToUtf8(m_Device.GetWorkspace().GetMachine().faults.Latest()),
                HasSubstr("\"Leaks at the chimney.\""));
    other.Run("ROLLBACK");
    sheet.reject();
  });
  m_Frame.Visit().OpenNextUnfinished();
}

TEST_F(EndSignalsTest, CancelsTheRunUnderWayAndEndsAfterIt) {
  auto action = std::make_unique<data::Transaction>(Data().Inspection());
  auto structure = std::make_unique<device::ui::QtProgressWindow>(u"Updating Structure...", false, &m_Frame);
  auto deleting = std::make_unique<device::ui::QtProgressWindow>(u"Deleting Inspection...", true, &m_Frame);
  std::raise(SIGTERM);
  QElapsedTimer clock;
  for (clock.start(); !deleting->Cancelled() && clock.elapsed() < 5000;) structure->Step();
  EXPECT_TRUE(deleting->Cancelled());
  EXPECT_FALSE(structure->Cancelled()) << "it offers none";
  EXPECT_FALSE(m_Ended) << "in the middle of the action";
  deleting.reset();
  structure.reset();
  action.reset();
  EXPECT_TRUE(Ends(5000));
}

}  // namespace
}  // namespace inspector::app
