#include <QAbstractItemView>
#include <QDateTimeEdit>
#include <QWheelEvent>

#include "device/Format.h"
#include "inspection/ui/InspectionSetupView2.h"
#include "inspection/ui/InspectorView.h"
#include "support/Screens.h"
#include "support/VisitFixture.h"

namespace inspector::inspection::ui {
namespace {

using device::Answer;
using device::ui::PickerCombo;
using tests::Part;

class HeaderViewTest : public tests::VisitTest {
protected:
  bool IsClientStored(std::int32_t inspectionID) {
    data::InspectionTable row(Data());
    row.OpenSQL(device::Format(u"SELECT * FROM Inspection WHERE InspectionID = %d", inspectionID));
    return row.GetRecord(0) && row.m_ClientName == u"Ana Ruiz";
  }
  // Lets the program's loop run until it is so.
  template <typename Condition>
  static bool Wait(Condition condition) {
    return QTest::qWaitFor(condition, 10000);
  }
};

TEST_F(HeaderViewTest, WritesAMomentAfterTypingPauses) {
  const auto key = m_Device.Visit(u"House");
  CInspectorView view(Document());
  view.resize(480, 700);
  view.show();
  view.OnShow();
  Document().Inspection();
  QTest::keyClicks(&Part<QLineEdit>(view, "clientField"), QStringLiteral("Ana Ruiz"));
  EXPECT_TRUE(Wait([&] { return IsClientStored(key); }));

  // The other form and another inspection show their own, and undo brings nothing of the former one.
  auto& address = Part<QLineEdit>(view, "addressField");
  QTest::keyClicks(&address, QStringLiteral("9"));
  QTest::keyClick(&address, Qt::Key_Backspace);
  Document().SelectInspection(1000);
  view.OnShow();
  EXPECT_TRUE(Part<QLineEdit>(view, "clientField").text().isEmpty());
  EXPECT_FALSE(address.isUndoAvailable());
}

TEST_F(HeaderViewTest, TriesAgainWhateverWroteInVain) {
  const auto key = m_Device.Visit(u"House");
  CInspectorView view(Document());
  view.show();
  view.OnShow();
  m_Device.RunInVisits(tests::NoRoomFor("UPDATE ON Inspection"));
  QTest::keyClicks(&Part<QLineEdit>(view, "clientField"), QStringLiteral("Ana Ruiz"));
  EXPECT_FALSE(view.Flush()) << "the focus went elsewhere, say";
  m_Device.RunInVisits(tests::kRoomAgain);
  EXPECT_TRUE(Wait([&] { return IsClientStored(key); }));
}

TEST_F(HeaderViewTest, UndoKnowsWhatWasPickedFromAList) {
  PickerCombo combo;
  combo.SetChoices({u"Alder Creek", u"Elm Hill", u"Edit List..."});
  combo.SetValue(u"Foo Town");
  combo.show();
  combo.showPopup();
  combo.hidePopup();
  combo.setCurrentIndex(0);
  Q_EMIT combo.activated(0);
  EXPECT_EQ(combo.Value(), u"Alder Creek");
  combo.lineEdit()->undo();
  EXPECT_EQ(combo.Value(), u"Foo Town");

  // The next house: words that are typed, and happen to be an entry, bring nothing of the former one.
  combo.showPopup();
  combo.hidePopup();
  combo.SetValue(u"");
  QTest::keyClicks(combo.lineEdit(), QStringLiteral("Elm Hill"));
  Q_EMIT combo.activated(1);
  combo.lineEdit()->undo();
  EXPECT_EQ(combo.Value(), u"");
}

TEST_F(HeaderViewTest, ADropDownIsAsHighAsItsEntriesUpToALimit) {
  PickerCombo combo;
  combo.show();
  const auto heightWith = [&combo](std::size_t count) {
    combo.SetChoices(std::vector<device::Text>(count, u"Oak"));
    combo.showPopup();
    const int height = combo.view()->parentWidget()->height();
    const int entries = static_cast<int>(count) * combo.view()->sizeHintForRow(0);
    combo.hidePopup();
    return std::pair(height, entries);
  };
  const auto [two, entries] = heightWith(2);
  EXPECT_GE(two, entries);
  EXPECT_LT(two, entries * 3 / 2) << "no empty room below the last one";
  EXPECT_EQ(heightWith(20).first, 200);
}

TEST_F(HeaderViewTest, KeepsLineEndsThatNobodyTouched) {
  m_Device.Visit(u"House");
  Document().Inspection().m_GeneralInformation = u"One\rTwo";
  Document().SaveHeader();
  CInspectorView view(Document());
  view.OnShow();
  EXPECT_TRUE(view.Flush());
  EXPECT_EQ(Document().Inspection().m_GeneralInformation, u"One\rTwo");
  auto& general = Part<QPlainTextEdit>(view, "generalField");
  EXPECT_EQ(general.toPlainText(), QStringLiteral("One\nTwo"));
  general.appendPlainText(QStringLiteral("Three"));
  EXPECT_TRUE(view.Flush());
  EXPECT_EQ(Document().Inspection().m_GeneralInformation, u"One\r\nTwo\r\nThree");
}

TEST_F(HeaderViewTest, AppliesATypeWhileThePersonTypesOn) {
  const auto key = m_Device.Visit(u"");
  CInspectorView view(Document());
  view.show();
  view.OnShow();
  auto& general = Part<QPlainTextEdit>(view, "generalField");
  general.setPlainText(QStringLiteral("Dry day."));
  general.setFocus();
  general.moveCursor(QTextCursor::End);
  auto& type = Part<QComboBox>(view, "docTypeField");
  EXPECT_EQ(type.currentIndex(), -1);
  int changes = 0;
  view.onDocTypeChanged = [&] { ++changes; };
  tests::Choose(type, "House");
  Part<QLineEdit>(view, "clientField").setText(QStringLiteral("Ana Ruiz"));
  EXPECT_TRUE(Wait([&] { return changes == 1; }));
  EXPECT_EQ(general.toPlainText(), QStringLiteral("Dry day.  Seen from the ground.  Built in 1968."));
  EXPECT_GE(general.textCursor().position(), 8) << "who types on goes on where he was";
  EXPECT_TRUE(view.OnLeave());
  Document().SelectInspection(key);
  EXPECT_EQ(Document().Inspection().m_ClientName, u"Ana Ruiz");
  EXPECT_EQ(Document().Inspection().m_GeneralInformation, u"Dry day.  Seen from the ground.  Built in 1968.");
  EXPECT_EQ(m_Device.Outline(key).size(), 5U);

  // Cancel brings the former selection back.
  Prompts().Queue(u"Data Alert", Answer::Cancel);
  tests::Choose(type, "Condo");
  EXPECT_EQ(type.currentText(), QStringLiteral("House"));

  // Leaving while the worker runs waits for it and loses nothing.
  Prompts().Queue(u"Data Alert", Answer::Ok);
  tests::Choose(type, "Condo");
  Part<QLineEdit>(view, "clientField").setText(QStringLiteral("A. Ruiz"));
  EXPECT_TRUE(view.OnLeave());
  Document().SelectInspection(key);
  EXPECT_EQ(Document().Inspection().m_ClientName, u"A. Ruiz");
  EXPECT_EQ(Document().Inspection().m_DocType, u"Condo");
}

TEST_F(HeaderViewTest, SaysWhyATypeCouldNotBeApplied) {
  m_Device.Visit(u"");
  CInspectorView view(Document());
  view.show();
  view.OnShow();
  m_Device.RunInVisits(
      "CREATE TRIGGER Full BEFORE INSERT ON Category BEGIN SELECT RAISE(FAIL, 'no room'); END");
  std::vector<Text> reasons;
  view.onDocTypeFailed = [&](const Text& why) { reasons.push_back(why); };
  tests::Choose(Part<QComboBox>(view, "docTypeField"), "House");
  EXPECT_TRUE(Wait([&] { return !reasons.empty(); }));
  ASSERT_EQ(reasons.size(), 1U);
  EXPECT_TRUE(device::Contains(reasons[0], u"no room"));
  EXPECT_EQ(Part<QComboBox>(view, "docTypeField").currentText(), QString());
  const std::size_t told = Prompts().Transcript().size();
  m_Device.GetWorkspace().GetMachine().faults.ShowPending();
  EXPECT_EQ(Prompts().Transcript().size(), told) << "a line has said it";
}

// A report that is written at once, say, or the end of the program.
TEST_F(HeaderViewTest, WritesWhatWasTypedWithWhatATypeAddsToIt) {
  const auto key = m_Device.Visit(u"");
  CInspectorView view(Document());
  view.show();
  view.OnShow();
  tests::Choose(Part<QComboBox>(view, "docTypeField"), "House");
  Part<QPlainTextEdit>(view, "generalField").setPlainText(QStringLiteral("Dry day."));
  EXPECT_TRUE(view.Flush());
  Document().SelectInspection(key);
  EXPECT_EQ(Document().Inspection().m_DocType, u"House");
  EXPECT_TRUE(Document().Inspection().m_GeneralInformation.starts_with(u"Dry day."));
  EXPECT_TRUE(Document().Inspection().m_GeneralInformation.ends_with(u"Built in 1968."));
}

TEST_F(HeaderViewTest, OpensTheListEditorAndKeepsTheValue) {
  m_Device.Library().AddPicker(u"Realtor", u"M. Cole");
  m_Device.Visit(u"House");
  CInspectionSetupView2 view(Document());
  view.OnShow();
  auto& agent = Part<PickerCombo>(view, "agentField");
  ASSERT_EQ(agent.count(), 2);
  tests::Choose(agent, "M. Cole");
  EXPECT_EQ(agent.Value(), u"M. Cole");
  std::vector<Text> edited;
  view.onEditList = [&](const Text& list) {
    edited.push_back(list);
    m_Device.Library().AddPicker(list, u"P. Lind");
    view.ListsChanged();
  };
  tests::Choose(agent, "Edit List...");
  EXPECT_THAT(edited, ::testing::ElementsAre(u"Realtor"));
  EXPECT_EQ(agent.Value(), u"M. Cole");
  EXPECT_EQ(agent.count(), 3) << "the list is read again";
  QTest::keyClicks(view.findChild<QWidget*>(QStringLiteral("companyField")), QStringLiteral("Oak"));
  EXPECT_TRUE(view.Flush());
  Document().SelectInspection(1001);
  EXPECT_EQ(Document().Inspection().m_RealEstateCompany, u"Oak") << "typed after the list was edited";
}

TEST_F(HeaderViewTest, EditsTheDateAndLeavesNoneAlone) {
  m_Device.Visit(u"House");
  Document().Inspection().m_InspectionDate = {};
  Document().SaveHeader();
  CInspectionSetupView2 view(Document());
  view.OnShow();
  auto& date = Part<QDateTimeEdit>(view, "dateField");
  EXPECT_EQ(date.text(), QStringLiteral("No date"));
  view.show();
  view.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
  Part<QWidget>(view, "companyField").setFocus();
  for (const auto& [key, with] : {std::pair(Qt::Key_Tab, Qt::NoModifier),
                                  {Qt::Key_Tab, Qt::ShiftModifier},
                                  {Qt::Key_Tab, Qt::NoModifier},
                                  {Qt::Key_Shift, Qt::ShiftModifier}})
    QTest::keyClick(QApplication::focusWidget(), key, with);
  ASSERT_EQ(QApplication::focusWidget(), &date);
  EXPECT_TRUE(view.OnLeave());
  EXPECT_TRUE(Document().Inspection().m_InspectionDate.IsZero()) << "who passes by enters nothing";
  QTest::keyClicks(&date, QStringLiteral("05/28/2026 09:30 AM"));
  EXPECT_EQ(date.text().toStdString(), "05/28/2026 09:30 AM");
  EXPECT_TRUE(view.OnLeave());
  Document().SelectInspection(1001);
  EXPECT_EQ(Document().Inspection().m_InspectionDate, device::MakeCalendarTime(2026, 5, 28, 9, 30));

  // The wheel on a date that is none begins with today as well.
  Document().Inspection().m_InspectionDate = {};
  view.OnShow();
  QWheelEvent turn(QPointF(5, 5), date.mapToGlobal(QPointF(5, 5)), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                   Qt::NoScrollPhase, false);
  QApplication::sendEvent(&date, &turn);
  EXPECT_GE(date.date().year(), 2026);
}

TEST_F(HeaderViewTest, ShowsAnHourThatSpringLeavesOut) {
  qputenv("TZ", "America/New_York");
  m_Device.Visit(u"House");
  CInspectionSetupView2 view(Document());
  view.OnShow();
  Document().Inspection().m_InspectionDate = device::MakeCalendarTime(2026, 3, 8, 2, 30);
  Document().SaveHeader();
  view.OnShow();
  qunsetenv("TZ");
  EXPECT_EQ(Part<QDateTimeEdit>(view, "dateField").text(), QStringLiteral("03/08/2026 02:30 AM"));
}

}  // namespace
}  // namespace inspector::inspection::ui
