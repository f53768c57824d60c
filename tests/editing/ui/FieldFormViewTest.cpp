#include "editing/ui/FieldFormView.h"

#include "editing/ui/FieldEditor.h"
#include "support/Screens.h"
#include "support/ScriptedEditingDialogs.h"
#include "support/VisitFixture.h"

namespace inspector::editing::ui {
namespace {

class FieldFormViewTest : public VisitTest {
protected:
  // A field of each kind, in the order of their codes: Kind 1 to Kind 5.
  void SetUp() override {
    m_Device.RunInLibrary(
        "DELETE FROM FieldTemplate; WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
        "5) INSERT INTO FieldTemplate (ID, Label, Type, Sequence, CategoryID) SELECT 6 - i, 'Kind ' || i, i, "
        "i, 4 FROM n");
    for (const Text weather : {u"Clear", u"Rain"}) m_Device.Library().AddPicker(u"Kind 5", weather);
    m_Device.Visit(u"House");
    ASSERT_TRUE(Document().SetCurrentCategory(4));
    ShowOnHandheld(m_View);
  }
  // The values of the fields.
  std::string Stored() { return InVisits("SELECT group_concat(AssignedValue, '|') FROM Field"); }
  void Store(const std::string& value, const std::string& field) {
    m_Device.RunInVisits("UPDATE Field SET AssignedValue = " + value + " WHERE FieldLabel = '" + field + "'");
  }

  ScriptedEditingDialogs m_Dialogs;
  CFieldFormView m_View{m_Device.Document(), m_Dialogs};
};

TEST_F(FieldFormViewTest, EveryKindIsStored) {
  Fill(m_View, "field0", "\nTwo\nlines");
  Fill(m_View, "field1", "about 72");
  Fill(m_View, "field2", "5/28/2026");
  EXPECT_TRUE(m_View.Flush());
  PressButton(m_View, "field3No");
  Choose(Part<QComboBox>(m_View, "field4"), 1);
  EXPECT_EQ(Stored(), "Two\r\nlines|about 72|5/28/2026|No|Rain");
  EXPECT_EQ(Words(m_View, "doubt1"), "This is no number.");
  EXPECT_TRUE(Part<QLabel>(m_View, "doubt2").isHidden());
  EXPECT_EQ(Words(m_View, "whatIsLeft"), "0 of 5 fields empty");
  PressButton(m_View, "field3No");
  EXPECT_EQ(Stored(), "Two\r\nlines|about 72|5/28/2026||Rain") << "a second press takes the answer back";
  EXPECT_TRUE(m_View.OnLeave());
  EXPECT_NE(Document().Categories().m_CompleteFlag, 0);
}

TEST_F(FieldFormViewTest, WhatWasNotTouchedStaysAsItIs) {
  Store("'a' || char(10) || 'b'", "Kind 1");
  Store("'n/a'", "Kind 4");
  m_Device.RunInVisits("UPDATE Field SET FieldType = 6 WHERE FieldType = 1");  // which is none: words again
  m_View.OnShow();
  EXPECT_EQ(Words(m_View, "doubt3"), "Stored: n/a");
  Store("'3'", "Kind 2");
  PressButton(m_View, "field3Yes");
  EXPECT_TRUE(m_View.OnLeave());
  EXPECT_EQ(Stored(), "a\nb|3||Yes|");
}

TEST_F(FieldFormViewTest, TypingIsStoredAMomentLaterAlsoAfterAFailure) {
  auto& line = Part<QLineEdit>(m_View, "field1");
  line.setFocus();
  QTest::keyClicks(&line, QStringLiteral("72"));
  m_Device.RunInVisits(NoRoomFor("UPDATE ON Field"));
  line.clearFocus();
  EXPECT_FALSE(m_View.Flush());
  m_Device.RunInVisits(kRoomAgain);
  EXPECT_TRUE(QTest::qWaitFor([this] { return Stored() == "|72|||"; }));
}

TEST_F(FieldFormViewTest, ListIsEditedAndTheValueStays) {
  auto& picker = Part<QComboBox>(m_View, "field4");
  picker.setEditText(QStringLiteral("Hail"));
  m_Dialogs.QueuePickerEdit([this] { m_Device.Library().AddPicker(u"Kind 5", u"Drizzle"); });
  Choose(picker, picker.count() - 1);
  EXPECT_EQ(m_Dialogs.PickersEdited(), std::vector<Text>{u"Kind 5"});
  EXPECT_EQ(picker.findText(QStringLiteral("Drizzle")), 1) << "in the order of the alphabet";
  EXPECT_TRUE(m_View.Flush());
  EXPECT_EQ(Stored(), "||||Hail");
}

TEST_F(FieldFormViewTest, DayIsChosenFromACalendar) {
  ScriptedDialogs dialogs;
  Fill(m_View, "field2", "2/29/2024");
  dialogs.ExpectPress("dateDialog", QStringLiteral("OK"));
  PressButton(m_View, "calendarButton");
  EXPECT_EQ(Stored(), "||2/29/2024||");
}

}  // namespace
}  // namespace inspector::editing::ui
