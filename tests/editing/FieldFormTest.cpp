#include "editing/FieldForm.h"

#include "support/ScriptedEditingDialogs.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

using ::testing::ElementsAre;

constexpr int kChecklist = 4;
constexpr int kStove = 0;
constexpr int kDoors = 1;

class FieldFormTest : public tests::VisitTest {
protected:
  void SetUp() override {
    m_Device.RunInLibrary("UPDATE FieldTemplate SET Type = 5 WHERE Label = 'Doors locked'");
    m_Device.Library().AddPicker(u"Doors locked", u"Rear");
    m_Device.Library().AddPicker(u"Doors locked", u"All");
    m_Key = m_Device.Visit(u"House");
    ASSERT_TRUE(Document().SetCurrentCategory(kChecklist));
    ASSERT_TRUE(m_Form.Show());
  }
  Text Value(int field) { return m_Form.FieldAt(field)->value; }

  std::int32_t m_Key = 0;
  tests::ScriptedEditingDialogs m_Dialogs;
  FieldForm m_Form{m_Device.Document(), m_Dialogs};
};

TEST_F(FieldFormTest, FieldsInTheirOrderAreStoredAtOnce) {
  ASSERT_EQ(m_Form.FieldCount(), 2);
  EXPECT_EQ(m_Form.FieldAt(kStove)->label, u"Stove off");
  EXPECT_EQ(m_Form.FieldAt(kStove)->kind, FieldKind::Number);
  EXPECT_EQ(m_Form.EmptyFields(), 2);
  EXPECT_TRUE(m_Form.Enter(kStove, u"\n14 \"deg\""));
  EXPECT_EQ(m_Form.EmptyFields(), 1);
  EXPECT_THAT(m_Device.Outline(m_Key), ::testing::Contains(u"  Stove off=14 \"deg\""));
  EXPECT_NE(m_Form.FieldAt(kStove)->doubt, u"") << "kept all the same";
  m_Device.RunInVisits(tests::NoRoomFor("UPDATE ON Field"));
  EXPECT_TRUE(m_Form.Enter(kStove, u"14 \"deg\"")) << "nothing to write";
  EXPECT_FALSE(m_Form.Enter(kStove, u""));
  EXPECT_EQ(Value(kStove), u"14 \"deg\"");
  EXPECT_FALSE(m_Form.FieldAt(2));
}

TEST_F(FieldFormTest, PickerOffersItsListAndTheEditor) {
  EXPECT_THAT(m_Form.Choices(kStove), ElementsAre());
  EXPECT_THAT(m_Form.Choices(kDoors), ElementsAre(u"All", u"Rear", u"Edit List..."));
  m_Dialogs.QueuePickerEdit([this] { m_Device.Library().AddPicker(u"Doors locked", u"Front"); });
  EXPECT_TRUE(m_Form.Enter(kDoors, u"Edit List..."));
  EXPECT_THAT(m_Dialogs.PickersEdited(), ElementsAre(u"Doors locked"));
  EXPECT_THAT(m_Form.Choices(kDoors), ElementsAre(u"All", u"Front", u"Rear", u"Edit List..."));
  EXPECT_EQ(Value(kDoors), u"");
  EXPECT_TRUE(m_Form.Enter(kDoors, u"Front"));
  EXPECT_EQ(Value(kDoors), u"Front");
  m_Device.RunInVisits("UPDATE Field SET FieldType = 4 WHERE FieldLabel = 'Doors locked'");
  EXPECT_THAT(m_Form.Choices(kDoors), ElementsAre(u"Yes", u"No"));
  m_Device.RunInVisits("UPDATE Field SET FieldType = 6 WHERE FieldLabel = 'Doors locked'");
  EXPECT_EQ(m_Form.FieldAt(kDoors)->kind, FieldKind::Words);
}

TEST_F(FieldFormTest, LeavingMakesTheFlagFollow) {
  EXPECT_EQ(Document().Categories().m_CompleteFlag, 0);
  EXPECT_TRUE(m_Form.Leave());
  EXPECT_NE(Document().Categories().m_CompleteFlag, 0);
  m_Device.RunInVisits(tests::NoRoomFor("UPDATE ON Category"));
  EXPECT_TRUE(m_Form.Leave()) << "nothing to write any more";
}

TEST(FieldDoubtTest, IsAboutNumbersAndDates) {
  for (const TextView number : {u"", u"72", u"-4", u"+3.5", u"1,25", u".5", u"5."})
    EXPECT_EQ(DoubtAbout(FieldKind::Number, number), u"");
  for (const TextView word : {u"-", u".", u"1.2.3", u"about 5", u"1968?"})
    EXPECT_NE(DoubtAbout(FieldKind::Number, word), u"");
  for (const TextView date : {u"", u"5/28/2026", u"02/29/2024"})
    EXPECT_EQ(DoubtAbout(FieldKind::Date, date), u"");
  for (const TextView word : {u"2026-05-28", u"2/29/2023", u"13/1/2026", u"5/28", u"5//2026", u"5/28/02026"})
    EXPECT_NE(DoubtAbout(FieldKind::Date, word), u"");
  EXPECT_EQ(DoubtAbout(FieldKind::Words, u"about 5"), u"");
}

}  // namespace
}  // namespace inspector::editing
