#include <QAbstractItemView>
#include <QDateTimeEdit>
#include <QWheelEvent>

#include "inspection/ui/InspectionSetupView2.h"
#include "inspection/ui/InspectorView.h"
#include "support/Screens.h"
#include "support/VisitFixture.h"

namespace inspector::inspection::ui {
namespace {

using device::ui::PickerCombo;

class HeaderViewTest : public VisitTest {
protected:
  // Shows the form for a new inspection of that type; returns its key.
  std::int32_t Show(const Text& type) {
    const auto key = m_Device.Visit(type);
    m_View.show();
    m_View.OnShow();
    return key;
  }
  // What the document reads of it anew.
  data::InspectionTable& Stored(std::int32_t inspectionID) {
    EXPECT_TRUE(Document().SelectInspection(inspectionID));
    return Document().Inspection();
  }
  bool WaitForClient(const char* name, std::int32_t key) {
    const std::string sql = "SELECT ClientName FROM Inspection WHERE InspectionID = " + std::to_string(key);
    return Wait([&] { return InVisits(sql) == name; });
  }
  // Lets the program's loop run until it is so.
  template <typename Condition>
  static bool Wait(Condition condition) {
    return QTest::qWaitFor(condition, 10000);
  }
  QLineEdit& Client() { return Part<QLineEdit>(m_View, "clientField"); }
  QPlainTextEdit& General() { return Part<QPlainTextEdit>(m_View, "generalField"); }
  QComboBox& DocType() { return Part<QComboBox>(m_View, "docTypeField"); }

  CInspectorView m_View{Document()};
};

TEST_F(HeaderViewTest, WritesAMomentAfterTypingPausesAndTriesAgainWhateverWroteInVain) {
  const auto key = Show(u"House");
  QTest::keyClicks(&Client(), QStringLiteral("Ana"));
  EXPECT_TRUE(WaitForClient("Ana", key));
  m_Device.RunInVisits(NoRoomFor("UPDATE ON Inspection"));
  QTest::keyClicks(&Client(), QStringLiteral(" Ruiz"));
  EXPECT_FALSE(m_View.Flush()) << "the focus went elsewhere, say";
  m_Device.RunInVisits(kRoomAgain);
  EXPECT_TRUE(WaitForClient("Ana Ruiz", key));

  // Another inspection shows its own, and undo brings nothing of the former one.
  auto& address = Part<QLineEdit>(m_View, "addressField");
  QTest::keyClicks(&address, QStringLiteral("9"));
  QTest::keyClick(&address, Qt::Key_Backspace);
  Document().SelectInspection(1000);
  m_View.OnShow();
  EXPECT_TRUE(Client().text().isEmpty());
  EXPECT_FALSE(address.isUndoAvailable());
}

TEST(PickerComboTest, UndoKnowsWhatWasPickedFromAList) {
  PickerCombo combo;
  combo.SetChoices({u"Alder Creek", u"Elm Hill", u"Edit List..."});
  combo.SetValue(u"Foo Town");
  combo.show();
  combo.showPopup();
  combo.hidePopup();
  Choose(combo, 0);
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

TEST(PickerComboTest, ADropDownIsAsHighAsItsEntriesUpToALimit) {
  PickerCombo combo;
  combo.show();
  for (const int count : {2, 20}) {
    combo.SetChoices(std::vector<Text>(static_cast<std::size_t>(count), u"Oak"));
    combo.showPopup();
    const int entries = std::min(count * combo.view()->sizeHintForRow(0), 200);
    const int height = combo.view()->parentWidget()->height();
    EXPECT_TRUE(height >= entries && height < entries * 3 / 2) << height << " for " << entries;
    combo.hidePopup();
  }
}

TEST_F(HeaderViewTest, KeepsLineEndsThatNobodyTouched) {
  m_Device.Visit(u"House");
  Document().Inspection().m_GeneralInformation = u"One\rTwo";
  Document().SaveHeader();
  m_View.OnShow();
  EXPECT_TRUE(m_View.Flush());
  EXPECT_EQ(Document().Inspection().m_GeneralInformation, u"One\rTwo");
  EXPECT_EQ(General().toPlainText(), QStringLiteral("One\nTwo"));
  General().appendPlainText(QStringLiteral("Three"));
  EXPECT_TRUE(m_View.Flush());
  EXPECT_EQ(Document().Inspection().m_GeneralInformation, u"One\r\nTwo\r\nThree");
}

TEST_F(HeaderViewTest, AppliesATypeWhileThePersonTypesOn) {
  const auto key = Show(u"");
  General().setPlainText(QStringLiteral("Dry day."));
  General().setFocus();
  General().moveCursor(QTextCursor::End);
  EXPECT_EQ(DocType().currentIndex(), -1);
  int changes = 0;
  m_View.onDocTypeChanged = [&] { ++changes; };
  Choose(DocType(), "House");
  Client().setText(QStringLiteral("Ana Ruiz"));
  EXPECT_TRUE(Wait([&] { return changes == 1; }));
  EXPECT_EQ(General().toPlainText(), QStringLiteral("Dry day.  Seen from the ground.  Built in 1968."));
  EXPECT_GE(General().textCursor().position(), 8) << "who types on goes on where he was";
  EXPECT_TRUE(m_View.OnLeave());
  EXPECT_EQ(Stored(key).m_ClientName, u"Ana Ruiz");
  EXPECT_EQ(Document().Inspection().m_GeneralInformation, u"Dry day.  Seen from the ground.  Built in 1968.");
  EXPECT_EQ(m_Device.Outline(key).size(), 5U);

  // Cancel brings the former selection back.
  Prompts().Queue(u"Data Alert", Answer::Cancel);
  Choose(DocType(), "Condo");
  EXPECT_EQ(DocType().currentText(), QStringLiteral("House"));

  // Writing while the worker runs, for a report, say, waits for it and loses nothing.
  Prompts().Queue(u"Data Alert", Answer::Ok);
  Choose(DocType(), "Condo");
  Client().setText(QStringLiteral("A. Ruiz"));
  EXPECT_TRUE(m_View.Flush());
  EXPECT_EQ(Stored(key).m_ClientName + Document().Inspection().m_DocType, u"A. RuizCondo");
}

TEST_F(HeaderViewTest, SaysWhyATypeCouldNotBeApplied) {
  Show(u"");
  m_Device.RunInVisits(NoRoomFor("INSERT ON Category"));
  std::string reasons;
  m_View.onDocTypeFailed = [&](const Text& why) { reasons += ToUtf8(why); };
  Choose(DocType(), "House");
  EXPECT_TRUE(Wait([&] { return !reasons.empty(); }));
  EXPECT_THAT(reasons, EndsWith("no room"));
  EXPECT_EQ(DocType().currentText(), QString());
  const std::size_t told = Prompts().Messages().size();
  m_Device.Faults().ShowPending();
  EXPECT_EQ(Prompts().Messages().size(), told) << "a line has said it";
}

// The second form, with agents and date.
class SetUpViewTest : public VisitTest {
protected:
  void Show(const device::CalendarTime& date) {
    Document().Inspection().m_InspectionDate = date;
    Document().SaveHeader();
    m_View.OnShow();
  }
  data::InspectionTable& Left() {
    EXPECT_TRUE(m_View.OnLeave());
    Document().SelectInspection(1000);
    return Document().Inspection();
  }

  CInspectionSetupView2 m_View{Document()};
  QDateTimeEdit& m_Date = Part<QDateTimeEdit>(m_View, "dateField");
};

TEST_F(SetUpViewTest, OpensTheListEditorAndKeepsTheValue) {
  m_Device.Library().AddPicker(u"Realtor", u"M. Cole");
  m_View.OnShow();
  auto& agent = Part<PickerCombo>(m_View, "agentField");
  ASSERT_EQ(agent.count(), 2);
  Choose(agent, "M. Cole");
  m_View.onEditList = [&](const Text& list) {
    EXPECT_EQ(list, u"Realtor");
    m_Device.Library().AddPicker(list, u"P. Lind");
    m_View.ListsChanged();
  };
  Choose(agent, "Edit List...");
  EXPECT_EQ(agent.Value(), u"M. Cole");
  EXPECT_EQ(agent.count(), 3) << "the list is read again";
  QTest::keyClicks(&Part<QWidget>(m_View, "companyField"), QStringLiteral("Oak"));
  EXPECT_EQ(Left().m_RealEstateCompany, u"Oak") << "typed after the list was edited";
}

TEST_F(SetUpViewTest, EditsTheDateAndLeavesNoneAlone) {
  Show({});
  EXPECT_EQ(m_Date.text(), QStringLiteral("No date"));
  m_View.show();
  m_View.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&m_View));
  Part<QWidget>(m_View, "companyField").setFocus();
  for (const auto& [key, with] : {std::pair(Qt::Key_Tab, Qt::NoModifier),
                                  {Qt::Key_Tab, Qt::ShiftModifier},
                                  {Qt::Key_Tab, Qt::NoModifier},
                                  {Qt::Key_Shift, Qt::ShiftModifier}})
    QTest::keyClick(QApplication::focusWidget(), key, with);
  ASSERT_EQ(QApplication::focusWidget(), &m_Date);
  EXPECT_TRUE(Left().m_InspectionDate.IsZero()) << "who passes by enters nothing";
  QTest::keyClicks(&m_Date, QStringLiteral("05/28/2026 09:30 AM"));
  EXPECT_EQ(m_Date.text(), QStringLiteral("05/28/2026 09:30 AM"));
  EXPECT_EQ(Left().m_InspectionDate, device::MakeCalendarTime(2026, 5, 28, 9, 30));

  // The wheel on a date that is none begins with today as well.
  Show({});
  QWheelEvent turn({5, 5}, m_Date.mapToGlobal(QPointF(5, 5)), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                   Qt::NoScrollPhase, false);
  QApplication::sendEvent(&m_Date, &turn);
  EXPECT_GE(m_Date.date().year(), 2026);
}

TEST_F(SetUpViewTest, ShowsAnHourThatSpringLeavesOut) {
  qputenv("TZ", "America/New_York");
  m_View.OnShow();
  Show(device::MakeCalendarTime(2026, 3, 8, 2, 30));
  qunsetenv("TZ");
  EXPECT_EQ(m_Date.text(), QStringLiteral("03/08/2026 02:30 AM"));
}

}  // namespace
}  // namespace inspector::inspection::ui
