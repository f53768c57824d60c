#include "editing/ui/FieldFormView.h"

#include "editing/ui/FieldEditor.h"
#include "support/Screens.h"
#include "support/ScriptedEditingDialogs.h"
#include "support/VisitFixture.h"

namespace inspector::editing::ui {
namespace {

using tests::Part;

class FieldFormViewTest : public tests::VisitTest {
protected:
  // A field of each kind, in the order of their codes: Kind 1 to Kind 5.
  void SetUp() override {
    m_Device.RunInLibrary("DELETE FROM FieldTemplate");
    m_Device.RunInLibrary(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5) INSERT INTO "
        "FieldTemplate (ID, Label, Type, Sequence, CategoryID) SELECT i, 'Kind ' || i, i, i, (SELECT ID FROM "
        "CategoryTemplate WHERE Title = 'Checklist') FROM n");
    m_Device.Library().AddPicker(u"Kind 5", u"Clear");
    m_Device.Library().AddPicker(u"Kind 5", u"Rain");
    m_Key = m_Device.Visit(u"House");
    ASSERT_TRUE(Document().SetCurrentCategory(4));
    m_View.resize(480, 560);
    m_View.show();
    m_View.OnShow();
    QApplication::processEvents();
  }
  std::vector<Text> Stored() {
    std::vector<Text> lines = m_Device.Outline(m_Key);
    std::erase_if(lines, [](const Text& line) { return !line.starts_with(u"  Kind"); });
    return lines;
  }

  std::int32_t m_Key = 0;
  tests::ScriptedEditingDialogs m_Dialogs;
  CFieldFormView m_View{m_Device.Document(), m_Dialogs};
};

TEST_F(FieldFormViewTest, EveryKindIsStored) {
  Part<QPlainTextEdit>(m_View, "field0").setPlainText(QStringLiteral("Two\nlines"));
  Part<QLineEdit>(m_View, "field1").setText(QStringLiteral("about 72"));
  Part<QLineEdit>(m_View, "field2").setText(QStringLiteral("5/28/2026"));
  EXPECT_TRUE(m_View.Flush());
  Part<QPushButton>(m_View, "field3No").click();
  auto& picker = Part<QComboBox>(m_View, "field4");
  tests::Choose(picker, 1);
  EXPECT_THAT(Stored(), ::testing::ElementsAre(u"  Kind 1=Two\r\nlines", u"  Kind 2=about 72",
                                               u"  Kind 3=5/28/2026", u"  Kind 4=No", u"  Kind 5=Rain"));
  EXPECT_EQ(Part<QLabel>(m_View, "doubt1").text(), QStringLiteral("This is no number."));
  EXPECT_TRUE(Part<QLabel>(m_View, "doubt2").isHidden());
  EXPECT_EQ(Part<QLabel>(m_View, "whatIsLeft").text(), QStringLiteral("0 of 5 fields empty"));

  Part<QPushButton>(m_View, "field3No").click();
  EXPECT_EQ(Stored()[3], u"  Kind 4=") << "a second press takes the answer back";
  EXPECT_TRUE(m_View.OnLeave());
  EXPECT_NE(Document().Categories().m_CompleteFlag, 0);
}

TEST_F(FieldFormViewTest, WhatWasNotTouchedStaysAsItIs) {
  m_Device.RunInVisits("UPDATE Field SET AssignedValue = 'a' || char(10) || 'b' WHERE FieldLabel = 'Kind 1'");
  m_Device.RunInVisits("UPDATE Field SET AssignedValue = 'n/a' WHERE FieldLabel = 'Kind 4'");
  m_View.OnShow();
  EXPECT_EQ(Part<QLabel>(m_View, "doubt3").text(), QStringLiteral("Stored: n/a"));
  m_Device.RunInVisits("UPDATE Field SET AssignedValue = '3' WHERE FieldLabel = 'Kind 2'");
  Part<QPushButton>(m_View, "field3Yes").click();
  EXPECT_TRUE(m_View.OnLeave());
  EXPECT_THAT(Stored(), ::testing::ElementsAre(u"  Kind 1=a\nb", u"  Kind 2=3", u"  Kind 3=", u"  Kind 4=Yes",
                                               u"  Kind 5="));
}

TEST_F(FieldFormViewTest, TypingIsStoredAMomentLaterAlsoAfterAFailure) {
  auto& line = Part<QLineEdit>(m_View, "field1");
  line.setFocus();
  QTest::keyClick(&line, Qt::Key_7);
  line.setText(QStringLiteral("72"));
  m_Device.RunInVisits(tests::NoRoomFor("UPDATE ON Field"));
  line.clearFocus();
  EXPECT_FALSE(m_View.Flush());
  m_Device.RunInVisits(tests::kRoomAgain);
  EXPECT_TRUE(QTest::qWaitFor([this] { return Stored()[1] == u"  Kind 2=72"; }));
}

TEST_F(FieldFormViewTest, ListIsEditedAndTheValueStays) {
  auto& picker = Part<QComboBox>(m_View, "field4");
  picker.setEditText(QStringLiteral("Hail"));
  m_Dialogs.QueuePickerEdit([this] { m_Device.Library().AddPicker(u"Kind 5", u"Snow"); });
  tests::Choose(picker, picker.count() - 1);
  EXPECT_THAT(m_Dialogs.PickersEdited(), ::testing::ElementsAre(u"Kind 5"));
  EXPECT_GE(picker.findText(QStringLiteral("Snow")), 0);
  EXPECT_TRUE(m_View.Flush());
  EXPECT_EQ(Stored()[4], u"  Kind 5=Hail");
}

TEST_F(FieldFormViewTest, DayIsChosenFromACalendar) {
  tests::ScriptedDialogs dialogs;
  Part<QLineEdit>(m_View, "field2").setText(QStringLiteral("2/29/2024"));
  dialogs.ExpectPress("dateDialog", QStringLiteral("OK"));
  Part<QPushButton>(m_View, "calendarButton").click();
  EXPECT_EQ(Stored()[2], u"  Kind 3=2/29/2024");
}

}  // namespace
}  // namespace inspector::editing::ui
