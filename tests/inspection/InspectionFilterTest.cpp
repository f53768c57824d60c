#include "inspection/InspectionFilter.h"

#include "support/VisitFixture.h"

namespace inspector::inspection {
namespace {

using ::testing::ElementsAre;

class InspectionFilterTest : public tests::VisitTest {
protected:
  InspectionFilterTest() {
    for (const auto& [client, address] :
         {std::pair(u"Halvorsen", u"418 Juniper Lane"), std::pair(u"Ruiz", u"12 Elm Lane"),
          std::pair(u"Nu\u00F1ez", u"7 Juniper Court")})
      Document().CreateInspection([&](data::InspectionTable& row) {
        row.m_ClientName = client;
        row.m_DwellingAddress = address;
      });
    m_Overview.Refill();
  }
  std::vector<int> Shown(TextView typed) {
    m_Rows.SetFilter(typed);
    std::vector<int> positions;
    for (int n = 0; n < m_Rows.RowCount(); ++n) positions.push_back(m_Rows.PositionOf(n));
    return positions;
  }

  InspectionOverview m_Overview{Document()};
  InspectionFilter m_Rows{m_Overview};
};

TEST_F(InspectionFilterTest, ShowsWhatHoldsEveryWordInAnyColumn) {
  EXPECT_THAT(Shown(u""), ElementsAre(0, 1, 2, 3));
  EXPECT_THAT(Shown(u"lane"), ElementsAre(1, 2));
  EXPECT_THAT(Shown(u"lane halv"), ElementsAre(1));
  EXPECT_THAT(Shown(u"nunez jun"), ElementsAre(3));
  EXPECT_EQ(m_Rows.ShownRow(0).cells[1], u"7 Juniper Court");
  EXPECT_EQ(m_Rows.ShownOf(3), 0);
  EXPECT_EQ(m_Rows.ShownOf(1), -1);
  EXPECT_EQ(m_Rows.PositionOf(1), -1);
  EXPECT_THAT(Shown(u"jun"), ElementsAre(1, 3)) << "a filter that asks for less shows more again";
  EXPECT_THAT(Shown(u"xyz"), ElementsAre());
}

TEST_F(InspectionFilterTest, OffersEveryOtherInspectionForAMerge) {
  const auto never = [](device::RowSource&) -> std::optional<int> {
    ADD_FAILURE() << "nothing to choose from";
    return 0;
  };
  EXPECT_FALSE(m_Overview.OnMerge(-1, never));
  EXPECT_EQ(Prompts().Messages().back().title, u"Error");
  EXPECT_EQ(Prompts().Messages().back().text, u"You must select an inspection before pressing the button.");

  const auto pair = m_Overview.OnMerge(1, [](device::RowSource& others) {
    EXPECT_EQ(others.RowCount(), 3);
    EXPECT_EQ(others.ShownRow(1).cells[0], u"Ruiz");
    return std::optional(1);
  });
  ASSERT_TRUE(pair.has_value());
  EXPECT_EQ(pair->kept, 1001);
  EXPECT_EQ(pair->merged, 1002);
  EXPECT_FALSE(m_Overview.OnMerge(1, [](device::RowSource&) { return std::optional<int>(); }));
}

}  // namespace
}  // namespace inspector::inspection
