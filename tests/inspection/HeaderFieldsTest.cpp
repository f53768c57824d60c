#include "inspection/HeaderFields.h"

#include <gmock/gmock.h>

#include <set>

#include "support/VisitFixture.h"

namespace inspector::inspection {
namespace {

using device::Answer;
using ::testing::ElementsAre;

class HeaderFieldsTest : public tests::VisitTest {};

TEST_F(HeaderFieldsTest, EachNameSetsAColumnOfItsOwn) {
  data::InspectionTable row(Data());
  std::set<const Text*> columns;
  for (const HeaderField& field : HeaderFields()) {
    EXPECT_EQ(FindHeaderField(field.name), &field);
    if (field.text) columns.insert(&(row.*field.text));
  }
  EXPECT_EQ(columns.size(), 12U);
  EXPECT_EQ(FindHeaderField(u"CityStateZip"), FindHeaderField(u"citystatezip"));
  EXPECT_EQ(FindHeaderField(u"roof"), nullptr);

  EXPECT_TRUE(SetHeaderField(row, *FindHeaderField(u"client"), u"\t\r\nAnna=Bo"));
  EXPECT_EQ(row.m_ClientName, u"Anna=Bo") << "control characters before a typed text are cut";
  EXPECT_TRUE(SetHeaderField(row, *FindHeaderField(u"client"), u""));
  EXPECT_EQ(row.m_ClientName, u"");
}

TEST_F(HeaderFieldsTest, DateIsADateOrNothing) {
  data::InspectionTable row(Data());
  const HeaderField& date = *FindHeaderField(u"date");
  EXPECT_TRUE(SetHeaderField(row, date, u"2026-05-31 14:05"));
  EXPECT_EQ(row.m_InspectionDate, device::MakeCalendarTime(2026, 5, 31, 14, 5));
  for (const TextView wrong : {u"2026-02-30 10:00", u"5/31/2026", u"soon"}) {
    EXPECT_FALSE(SetHeaderField(row, date, wrong));
    EXPECT_EQ(row.m_InspectionDate.year, 2026) << "a wrong date leaves the old one";
  }
  EXPECT_TRUE(SetHeaderField(row, date, u""));
  EXPECT_TRUE(row.m_InspectionDate.IsZero());
}

TEST_F(HeaderFieldsTest, PickerFallsBackAndEndsWithEditList) {
  const auto cities = [this] { return PickerChoices(Data(), *FindHeaderField(u"citystatezip")); };
  EXPECT_THAT(cities(), ElementsAre(u"Edit List..."));
  m_Device.Library().AddPicker(u"EvalCityStateZip", u"Zella");
  m_Device.Library().AddPicker(u"EvalCityStateZip", u"Alder Creek");
  m_Device.Library().AddPicker(u"Realtor", u"Dana");
  EXPECT_THAT(cities(), ElementsAre(u"Alder Creek", u"Zella", u"Edit List..."));
  m_Device.Library().AddPicker(u"Label01", u"Kettle Ridge");
  EXPECT_THAT(cities(), ElementsAre(u"Kettle Ridge", u"Edit List..."));
}

TEST_F(HeaderFieldsTest, ChangingATypeAsksOnlyWhereThereIsOne) {
  EXPECT_EQ(ConfirmDocTypeChange(Document(), u"House"), DocTypeChoice::Change) << "the first type";
  m_Device.Visit(u"House");
  EXPECT_EQ(ConfirmDocTypeChange(Document(), u"House"), DocTypeChoice::Same);
  EXPECT_TRUE(Prompts().Messages().empty());

  const Text question =
      u"Warning! Changing the Doc Type will remove all categories and steps for this inspection  "
      u"Tap OK to continue changing the Doc Type. \r\r Do you wish to proceed?";
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
