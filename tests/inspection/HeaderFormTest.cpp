#include "inspection/HeaderForm.h"

#include "support/VisitFixture.h"

namespace inspector::inspection {
namespace {

class HeaderFormTest : public VisitTest {
protected:
  static const HeaderField* Field(TextView name) { return FindHeaderField(name); }
  bool SaveClient(const Text& name) { return m_Form.Save({{Field(u"client"), name}}); }
  std::string StoredClient(int key) {
    return InVisits("SELECT ClientName FROM Inspection WHERE InspectionID = " + std::to_string(key));
  }

  HeaderForm m_Form{Document()};
};

TEST_F(HeaderFormTest, IsFilledForAnotherInspectionOnly) {
  EXPECT_TRUE(m_Form.MustFill());
  EXPECT_FALSE(m_Form.MustFill());
  m_Device.Visit(u"House");
  EXPECT_TRUE(m_Form.MustFill());
  Document().SelectInspection(1000);
  EXPECT_TRUE(m_Form.MustFill());
}

TEST_F(HeaderFormTest, WritesOnceWhatWasTyped) {
  const auto key = m_Device.Visit(u"House");
  m_Form.MustFill();
  EXPECT_TRUE(SaveClient(u"\tAna Ruiz"));
  EXPECT_EQ(StoredClient(key), "Ana Ruiz");
  // Nothing differs: the row of another program must not be written over.
  m_Device.RunInVisits("UPDATE Inspection SET ClientName = 'Other' WHERE InspectionID = 1001");
  EXPECT_TRUE(SaveClient(u"Ana Ruiz"));
  EXPECT_EQ(StoredClient(key), "Other");
  // Nor may a column that nobody touched here.
  EXPECT_TRUE(m_Form.Save({{Field(u"client"), u"Ana Ruiz"}, {Field(u"phone"), u"555-0163"}}));
  EXPECT_EQ(Document().Inspection().m_ClientPhone, u"555-0163");
  EXPECT_EQ(StoredClient(key), "Other");
}

// The window still holds the words of the former inspection when the document has gone to another one.
TEST_F(HeaderFormTest, WritesNothingIntoAnotherInspection) {
  m_Device.Visit(u"House");
  m_Form.MustFill();
  Document().SelectInspection(1000);
  EXPECT_TRUE(SaveClient(u"Ana Ruiz"));
  m_Form.TakeOverDate(device::MakeCalendarTime(2000, 1, 1));
  EXPECT_EQ(Document().Inspection().m_InspectionDate, device::MakeCalendarTime(2026, 5, 31, 14, 5));
  EXPECT_EQ(StoredClient(1000), "");
}

TEST_F(HeaderFormTest, EditsTheListThatIsOffered) {
  const HeaderField& field = *Field(u"citystatezip");
  EXPECT_EQ(m_Form.ListToEdit(field), u"Label01");
  EXPECT_THAT(m_Form.Choices(field), ElementsAre(u"Edit List..."));
  for (const auto* city : {u"Zella", u"Alder Creek"}) m_Device.Library().AddPicker(u"EvalCityStateZip", city);
  m_Device.Library().AddPicker(u"Realtor", u"Dana");
  EXPECT_EQ(m_Form.ListToEdit(field), u"EvalCityStateZip");
  EXPECT_THAT(m_Form.Choices(field), ElementsAre(u"Alder Creek", u"Zella", u"Edit List..."));
  m_Device.Library().AddPicker(u"Label01", u"Birch Falls");
  EXPECT_EQ(m_Form.ListToEdit(field), u"Label01");
  EXPECT_THAT(m_Form.Choices(field), ElementsAre(u"Birch Falls", u"Edit List..."));
}

// In this order: take over what was typed, compare, ask, hand on.
TEST_F(HeaderFormTest, ChangesTheTypeAfterTakingOverAndAsking) {
  const auto key = m_Device.Visit(u"");
  m_Form.MustFill();
  const HeaderForm::EnteredFields entered{{Field(u"client"), u"Ana Ruiz"}};
  EXPECT_EQ(m_Form.SelectDocType(entered, u""), DocTypeChoice::Same);
  EXPECT_EQ(Document().Inspection().m_ClientName, u"Ana Ruiz");
  EXPECT_EQ(m_Form.SelectDocType(entered, u"House"), DocTypeChoice::Change) << "the first without a question";
  EXPECT_TRUE(Document().FinishDocTypeChange());
  EXPECT_TRUE(m_Form.Save(entered));
  EXPECT_EQ(m_Form.SelectDocType(entered, u"House"), DocTypeChoice::Same);
  EXPECT_TRUE(Prompts().Messages().empty());
  const auto outline = m_Device.Outline(key);
  const Text question =
      u"Warning! Changing the Doc Type will remove all categories and steps for this inspection  Tap OK to "
      u"continue changing the Doc Type. \r\r Do you wish to proceed?";
  Prompts().Queue(question, Answer::Cancel);
  EXPECT_EQ(m_Form.SelectDocType(entered, u"Condo"), DocTypeChoice::Refused);
  Document().FinishDocTypeChange();
  EXPECT_EQ(m_Device.Outline(key), outline);
  EXPECT_EQ(StoredClient(key), "Ana Ruiz");
  Prompts().Queue(question, Answer::Ok);
  EXPECT_EQ(m_Form.SelectDocType(entered, u"Condo"), DocTypeChoice::Change);
  EXPECT_EQ(Prompts().Messages()[0].title, u"Data Alert");
}

}  // namespace
}  // namespace inspector::inspection
