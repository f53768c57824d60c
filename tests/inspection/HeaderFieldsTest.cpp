#include "inspection/HeaderFields.h"

#include "support/VisitFixture.h"

namespace inspector::inspection {
namespace {

using device::Answer;
using ::testing::ElementsAre;

class HeaderFieldsTest : public tests::VisitTest {};

TEST_F(HeaderFieldsTest, ControlCharactersBeforeATypedTextAreCutAndAWrongDateLeavesTheOldOne) {
  data::InspectionTable row(Data());
  EXPECT_EQ(FindHeaderField(u"CityStateZip"), FindHeaderField(u"citystatezip"));
  EXPECT_EQ(FindHeaderField(u"roof"), nullptr);
  EXPECT_TRUE(SetHeaderField(row, *FindHeaderField(u"client"), u"\t\r\nAnna=Bo"));
  EXPECT_EQ(row.m_ClientName, u"Anna=Bo");
  row.m_InspectionDate = device::MakeCalendarTime(2026, 5, 31, 14, 5);
  for (const TextView wrong : {u"2026-02-30 10:00", u"5/31/2026"})
    EXPECT_FALSE(SetHeaderField(row, *FindHeaderField(u"date"), wrong));
  EXPECT_EQ(row.m_InspectionDate, device::MakeCalendarTime(2026, 5, 31, 14, 5));
}

TEST_F(HeaderFieldsTest, PickerFallsBackAndEndsWithEditList) {
  const auto cities = [this] { return PickerChoices(Data(), *FindHeaderField(u"citystatezip")); };
  EXPECT_THAT(cities(), ElementsAre(u"Edit List..."));
  m_Device.RunInLibrary(
      "INSERT INTO Pickers VALUES ('EvalCityStateZip', 'Zella', 1), ('EvalCityStateZip', 'Alder Creek', 2), "
      "('Realtor', 'Dana', 3)");
  EXPECT_THAT(cities(), ElementsAre(u"Alder Creek", u"Zella", u"Edit List..."));
  m_Device.RunInLibrary("INSERT INTO Pickers VALUES ('Label01', 'Kettle Ridge', 4)");
  EXPECT_THAT(cities(), ElementsAre(u"Kettle Ridge", u"Edit List..."));
}

TEST_F(HeaderFieldsTest, ChangingATypeAsksOnlyWhereThereIsOne) {
  EXPECT_EQ(ConfirmDocTypeChange(Document(), u"House"), DocTypeChoice::Change) << "the first type";
  m_Device.Visit(u"House");
  EXPECT_EQ(ConfirmDocTypeChange(Document(), u"House"), DocTypeChoice::Same);
  EXPECT_TRUE(Prompts().Messages().empty());

  const Text question =
      u"Warning! Changing the Doc Type will remove all categories and steps for this inspection  Tap OK to "
      u"continue changing the Doc Type. \r\r Do you wish to proceed?";
  Prompts().Queue(question, Answer::Cancel);
  EXPECT_EQ(ConfirmDocTypeChange(Document(), u"Condo"), DocTypeChoice::Refused);
  Prompts().Queue(question, Answer::Ok);
  EXPECT_EQ(ConfirmDocTypeChange(Document(), u"Condo"), DocTypeChoice::Change);
  EXPECT_EQ(Prompts().Messages()[0].title, u"Data Alert");
  EXPECT_EQ(Prompts().Messages()[0].buttons, device::Buttons::OkCancel);
  EXPECT_EQ(Prompts().Messages()[0].icon, device::Icon::Exclamation);
}

}  // namespace
}  // namespace inspector::inspection
