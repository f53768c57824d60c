
#include <QAbstractItemView>
#include <QApplication>
#include <QDateTimeEdit>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>

#include "device/Format.h"
#include "inspection/ui/InspectionSetupView2.h"
#include "inspection/ui/InspectorView.h"
#include "support/VisitFixture.h"

namespace inspector::inspection::ui {
namespace {

using device::Answer;
using device::ui::PickerCombo;

class HeaderViewTest : public tests::VisitTest {
protected:
  template <typename Field>
  static Field& Find(QWidget& view, const char* name) {
    return *dynamic_cast<Field*>(view.findChild<QWidget*>(QLatin1String(name)));
  }
  static void Choose(QComboBox& combo, const QString& text) {
    combo.setCurrentIndex(combo.findText(text));
    Q_EMIT combo.activated(combo.currentIndex());
  }
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
  QTest::keyClicks(&Find<QLineEdit>(view, "clientField"), QStringLiteral("Ana Ruiz"));
  EXPECT_TRUE(Wait([&] { return IsClientStored(key); }));

  // The other form and another inspection show their own.
  Document().SelectInspection(1000);
  view.OnShow();
  EXPECT_TRUE(Find<QLineEdit>(view, "clientField").text().isEmpty());
}

TEST_F(HeaderViewTest, TriesAgainWhateverWroteInVain) {
  const auto key = m_Device.Visit(u"House");
  CInspectorView view(Document());
  view.show();
  view.OnShow();
  m_Device.RunInVisits(tests::NoRoomFor("UPDATE ON Inspection"));
  QTest::keyClicks(&Find<QLineEdit>(view, "clientField"), QStringLiteral("Ana Ruiz"));
  EXPECT_FALSE(view.Flush()) << "the focus went elsewhere, say";
  m_Device.RunInVisits(tests::kRoomAgain);
  EXPECT_TRUE(Wait([&] { return IsClientStored(key); }));
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
  auto& general = Find<QPlainTextEdit>(view, "generalField");
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
  auto& general = Find<QPlainTextEdit>(view, "generalField");
  general.setPlainText(QStringLiteral("Dry day."));
  general.setFocus();
  general.moveCursor(QTextCursor::End);
  auto& type = Find<QComboBox>(view, "docTypeField");
  EXPECT_EQ(type.currentIndex(), -1);
  int changes = 0;
  view.onDocTypeChanged = [&] { ++changes; };
  Choose(type, QStringLiteral("House"));
  Find<QLineEdit>(view, "clientField").setText(QStringLiteral("Ana Ruiz"));
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
  Choose(type, QStringLiteral("Condo"));
  EXPECT_EQ(type.currentText(), QStringLiteral("House"));

  // Leaving while the worker runs waits for it and loses nothing.
  Prompts().Queue(u"Data Alert", Answer::Ok);
  Choose(type, QStringLiteral("Condo"));
  Find<QLineEdit>(view, "clientField").setText(QStringLiteral("A. Ruiz"));
  EXPECT_TRUE(view.OnLeave());
  Document().SelectInspection(key);
  EXPECT_EQ(Document().Inspection().m_ClientName, u"A. Ruiz");
  EXPECT_EQ(Document().Inspection().m_DocType, u"Condo");
}

// A report that is written at once, say, or the end of the program.
TEST_F(HeaderViewTest, WritesWhatWasTypedWithWhatATypeAddsToIt) {
  const auto key = m_Device.Visit(u"");
  CInspectorView view(Document());
  view.show();
  view.OnShow();
  Choose(Find<QComboBox>(view, "docTypeField"), QStringLiteral("House"));
  Find<QPlainTextEdit>(view, "generalField").setPlainText(QStringLiteral("Dry day."));
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
  auto& agent = Find<PickerCombo>(view, "agentField");
  ASSERT_EQ(agent.count(), 2);
  Choose(agent, QStringLiteral("M. Cole"));
  EXPECT_EQ(agent.Value(), u"M. Cole");
  std::vector<Text> edited;
  view.onEditList = [&](const Text& list) {
    edited.push_back(list);
    m_Device.Library().AddPicker(list, u"P. Lind");
  };
  Choose(agent, QStringLiteral("Edit List..."));
  EXPECT_THAT(edited, ::testing::ElementsAre(u"Realtor"));
  EXPECT_EQ(agent.Value(), u"M. Cole");
  EXPECT_EQ(agent.count(), 3) << "the list is read again";
}

TEST_F(HeaderViewTest, EditsTheDateAndLeavesNoneAlone) {
  m_Device.Visit(u"House");
  Document().Inspection().m_InspectionDate = {};
  Document().SaveHeader();
  CInspectionSetupView2 view(Document());
  view.OnShow();
  auto& date = Find<QDateTimeEdit>(view, "dateField");
  EXPECT_EQ(date.text(), QStringLiteral("No date"));
  view.show();
  view.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
  Find<QWidget>(view, "companyField").setFocus();
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
}

}  // namespace
}  // namespace inspector::inspection::ui
