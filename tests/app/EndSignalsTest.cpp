#include "app/EndSignals.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "app/MainFrame.h"
#include "device/LastPlace.h"
#include "device/ui/QtProgressWindow.h"
#include "inspection/ui/InspectorView.h"
#include "support/ScriptedDialogs.h"
#include "support/VisitFixture.h"

namespace inspector::app {
namespace {

using EndSignalsTest = tests::VisitTest;

void Pass(int milliseconds, const bool& until) {
  QElapsedTimer clock;
  for (clock.start(); !until && clock.elapsed() < milliseconds;)
    QApplication::processEvents(QEventLoop::AllEvents, 10);
}

TEST_F(EndSignalsTest, WhatWasTypedAndThePlaceAreSavedAfterTheActionUnderWay) {
  EndSignals signals;
  signals.Listen();
  m_Device.Visit(u"House");
  const std::int32_t roof = m_Device.OpenCategory(u"Roof");
  const std::int32_t gutters = m_Device.StepKey(u"20.2");
  CMainFrame frame(Document());
  frame.show();
  bool ended = false;
  signals.onEnd = [&] { frame.SaveAndThen([&] { ended = true; }); };
  ASSERT_TRUE(frame.Bring(frame.Header()) && frame.Visit().OpenPlace(roof, 0));
  tests::ScriptedDialogs person;
  person.Expect("stepPropertySheet", [&](QDialog& sheet) {
    tests::PressButton(sheet, "nextButton");
    auto action = std::make_unique<data::Transaction>(Data().Inspection());
    sheet.findChild<QPlainTextEdit*>(QStringLiteral("commentBox"))->insertPlainText(QStringLiteral("Leaks."));
    std::raise(SIGTERM);
    Pass(1000, ended);  // longer than typing waits to be written
    EXPECT_FALSE(ended);
    action.reset();  // taken back, with all that was written in the middle of it
    Pass(5000, ended);
    EXPECT_TRUE(ended);
    EXPECT_EQ(m_Device.Finding(gutters), u"20.2|Gutters|||Leaks.");
    sheet.reject();
  });
  frame.Visit().OpenNextUnfinished();

  ended = false;
  person.Expect("optionsSheet", [&](QDialog& sheet) {
    const auto enter = [&sheet](const char* name, const char* text) {
      sheet.findChild<QLineEdit*>(QLatin1String(name))->setText(QLatin1String(text));
    };
    enter("UserName", "ana");
    enter("Port", "forty");
    enter("TemplatePath", "\\My Docu");
    std::raise(SIGTERM);
    Pass(5000, ended);
    data::Workspace& workspace = m_Device.GetWorkspace();
    workspace.ForgetOptions();
    EXPECT_EQ(workspace.Options().m_UserName, u"ana");
    EXPECT_EQ(workspace.PathsInUse().templatePath, u"\\My Documents\\Template_Data.cdb");
    sheet.reject();
    EXPECT_EQ(workspace.Options().m_UserName, u"") << "the program went on, and Cancel means what it says";
  });
  frame.OpenOptions();
  const device::Registry& registry = m_Device.GetWorkspace().GetMachine().registry;
  EXPECT_EQ(device::ReadLastPlace(registry),
            (device::LastPlace{Document().Inspection().m_InspectionID, roof, gutters}));

  m_Device.Visit(u"Condo");
  EXPECT_EQ(frame.Visit().Place().categoryID, 0) << "that was another inspection";
}

TEST_F(EndSignalsTest, CancelsTheRunUnderWayAndEndsAfterIt) {
  EndSignals signals;
  signals.Listen();
  CMainFrame frame(Document());
  frame.show();
  bool ended = false;
  signals.onEnd = [&] { frame.SaveAndThen([&] { ended = true; }); };
  auto action = std::make_unique<data::Transaction>(Data().Inspection());
  auto structure = std::make_unique<device::ui::QtProgressWindow>(u"Updating Structure...", false, &frame);
  auto deleting = std::make_unique<device::ui::QtProgressWindow>(u"Deleting Inspection...", true, &frame);
  std::raise(SIGTERM);
  QElapsedTimer clock;
  for (clock.start(); !deleting->Cancelled() && clock.elapsed() < 5000;) structure->Step();
  EXPECT_TRUE(deleting->Cancelled());
  EXPECT_FALSE(structure->Cancelled()) << "it offers none";
  EXPECT_FALSE(ended) << "in the middle of the action";
  deleting.reset();
  structure.reset();
  action.reset();
  Pass(5000, ended);
  EXPECT_TRUE(ended);
}

}  // namespace
}  // namespace inspector::app
