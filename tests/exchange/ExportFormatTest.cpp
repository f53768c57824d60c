#include "exchange/ExportFormat.h"

#include "data/InspectionTable.h"
#include "data/StepTable.h"
#include "support/VisitFixture.h"

namespace inspector::exchange {
namespace {

class ExportFormatTest : public VisitTest {
protected:
  // What a reader makes of a text in the n-th field of an inspection.
  Text TakenDate(TextView date, TextView time) {
    data::InspectionTable row(Data(), u"MERGE_Inspection");
    row.PrepareNew();
    TakeField(row, InspectionFields()[5], date);
    TakeField(row, InspectionFields()[6], time);
    return FromUtf8(device::ToIso(row.m_InspectionDate));
  }
};

TEST_F(ExportFormatTest, EveryColumnButKeysOwnersAndPrivateNotesHasItsField) {
  const auto without = [](std::span<const ExportField> fields, int columns) {
    std::vector<int> left;
    for (int ordinal = 0; ordinal < columns; ++ordinal)
      if (std::none_of(fields.begin(), fields.end(),
                       [=](const auto& each) { return each.ordinal == ordinal; }))
        left.push_back(ordinal);
    return left;
  };
  EXPECT_THAT(without(InspectionFields(), 19), ElementsAre(0, 18));
  EXPECT_THAT(without(CategoryFields(), 10), ElementsAre(0, 7));
  EXPECT_THAT(without(StepFields(), 17), ElementsAre(0, 3));
}

TEST_F(ExportFormatTest, TextsOfDatesAndTimesBecomeTheDateOrNone) {
  EXPECT_EQ(TakenDate(u"7/3/2002", u"9:5"), u"2002-07-03T09:05:00");
  EXPECT_EQ(TakenDate(u"12/31/2026", u"23:59"), u"2026-12-31T23:59:00");
  for (const TextView time : {u"", u"24:0", u"9", u"9:", u":5", u"9:5:1", u"-1:5", u"999:1"})
    EXPECT_EQ(TakenDate(u"7/3/2002", time), u"2002-07-03T00:00:00") << ToUtf8(time);
  for (const TextView date : {u"", u"2/30/2002", u"2002-07-03", u"7/3", u"July"})
    EXPECT_EQ(TakenDate(date, u"9:5"), u"") << ToUtf8(date);
}

TEST_F(ExportFormatTest, FlagsAndNumbersAreReadAsTheyAreWrittenButForOne) {
  data::StepTable step(Data());
  const auto written = [&](std::size_t field, std::int32_t value) {
    step.m_StepTemplateID = step.m_Reserve11 = step.m_StepInfoExists = step.m_PictureBefore = value;
    return FieldText(step, StepFields()[field]);
  };
  const auto taken = [&](std::size_t field, TextView text) {
    TakeField(step, StepFields()[field], text);
    return std::array{step.m_StepTemplateID, step.m_Reserve11, step.m_StepInfoExists, step.m_PictureBefore};
  };
  EXPECT_EQ(Joined(std::vector<Text>{written(8, -5), written(9, -1), written(9, 0), written(11, -1),
                                     written(11, 0), written(14, -1), written(14, 0)}),
            u"-5|TRUE|FALSE|-1|0|TRUE|FALSE");
  EXPECT_EQ(taken(8, u"-5 or so")[0], -5);
  EXPECT_EQ(taken(8, u"TRUE")[0], 0);
  for (const auto& [text, flag] : {std::pair{u"TRUE", -1}, {u"true", 0}, {u"1", 0}, {u" TRUE", 0}, {u"", 0}})
    EXPECT_EQ(taken(9, text)[1], flag) << ToUtf8(text);
  for (const std::size_t field : {std::size_t{11}, std::size_t{14}})
    for (const auto& [text, flag] : {std::pair{u"-1", -1}, {u"7", -1}, {u"TRUE", 0}, {u"", 0}})
      EXPECT_EQ(taken(field, text)[field == 11 ? 2 : 3], flag) << ToUtf8(text);
}

}  // namespace
}  // namespace inspector::exchange
