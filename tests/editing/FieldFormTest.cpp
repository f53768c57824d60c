#include "editing/FieldForm.h"

#include "support/Lines.h"
#include "support/ScriptedEditingDialogs.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

enum { kStove, kDoors };

class FieldFormTest : public tests::VisitTest {
protected:
  void SetUp() override {
    m_Device.RunInLibrary("UPDATE FieldTemplate SET Type = 5 WHERE Label = 'Doors locked'");
    for (const Text word : {u"Rear", u"All"}) m_Device.Library().AddPicker(u"Doors locked", word);
    m_Device.Visit(u"House");
    ASSERT_TRUE(Document().SetCurrentCategory(4));  // the checklist
    ASSERT_TRUE(m_Form.Show());
  }
  std::string Stored() { return m_Device.Visits().Ask("SELECT group_concat(AssignedValue, '|') FROM Field"); }
  Text Choices(int field) { return tests::Joined(m_Form.Choices(field)); }

  tests::ScriptedEditingDialogs m_Dialogs;
  FieldForm m_Form{m_Device.Document(), m_Dialogs};
};

TEST_F(FieldFormTest, FieldsInTheirOrderAreStoredAtOnce) {
  ASSERT_EQ(m_Form.FieldCount(), 2);
  EXPECT_EQ(m_Form.FieldAt(kStove)->label, u"Stove off");
  EXPECT_EQ(m_Form.EmptyFields(), 2);
  EXPECT_TRUE(m_Form.Enter(kStove, u"\n14 \"deg\""));
  EXPECT_EQ(m_Form.EmptyFields(), 1);
  EXPECT_EQ(Stored(), "14 \"deg\"|");
  EXPECT_NE(m_Form.FieldAt(kStove)->doubt, u"") << "kept all the same";
  m_Device.RunInVisits(tests::NoRoomFor("UPDATE ON Field"));
  EXPECT_FALSE(m_Form.Enter(kStove, u""));
  EXPECT_EQ(m_Form.FieldAt(kStove)->value, u"14 \"deg\"");
  EXPECT_FALSE(m_Form.FieldAt(2));
}

TEST_F(FieldFormTest, PickerOffersItsListAndTheEditor) {
  EXPECT_EQ(Choices(kStove), u"");
  EXPECT_EQ(Choices(kDoors), u"All|Rear|Edit List...");
  m_Dialogs.QueuePickerEdit([this] { m_Device.Library().AddPicker(u"Doors locked", u"Front"); });
  EXPECT_TRUE(m_Form.Enter(kDoors, u"Edit List..."));
  EXPECT_EQ(m_Dialogs.PickersEdited(), std::vector<Text>{u"Doors locked"});
  EXPECT_EQ(Choices(kDoors), u"All|Front|Rear|Edit List...");
  EXPECT_EQ(Stored(), "|");
  m_Device.RunInVisits("UPDATE Field SET FieldType = 4 WHERE FieldLabel = 'Doors locked'");
  EXPECT_EQ(Choices(kDoors), u"Yes|No");
  m_Device.RunInVisits("UPDATE Field SET FieldType = 6 WHERE FieldLabel = 'Doors locked'");
  EXPECT_EQ(m_Form.FieldAt(kDoors)->kind, FieldKind::Words);
}

TEST(FieldDoubtTest, IsAboutNumbersAndDates) {
  using Words = std::vector<Text>;
  const Words numbers = {u"", u"72", u"-4", u"+3.5", u"1,25", u".5", u"5."};
  const Words noNumbers = {u"-", u".", u"1.2.3", u"about 5", u"1968?"};
  const Words dates = {u"", u"5/28/2026", u"02/29/2024"};
  const Words noDates = {u"2026-05-28", u"2/29/2023", u"13/1/2026", u"5/28", u"5//2026", u"5/28/02026"};
  for (const auto& [kind, isDoubtful, words] : {std::tuple(FieldKind::Number, false, numbers),
                                                {FieldKind::Number, true, noNumbers},
                                                {FieldKind::Date, false, dates},
                                                {FieldKind::Date, true, noDates},
                                                {FieldKind::Words, false, noNumbers}})
    for (const Text& word : words)
      EXPECT_EQ(!DoubtAbout(kind, word).empty(), isDoubtful) << device::ToUtf8(word);
}

}  // namespace
}  // namespace inspector::editing
