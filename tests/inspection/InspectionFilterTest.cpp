#include "inspection/InspectionFilter.h"

#include "support/VisitFixture.h"

namespace inspector::inspection {
namespace {

class InspectionFilterTest : public VisitTest {
protected:
  InspectionFilterTest() {
    m_Device.RunInVisits(
        "INSERT INTO Inspection (InspectionID, ClientName, DwellingAddress) VALUES (1001, 'Halvorsen', '418 "
        "Juniper Lane'), (1002, 'Ruiz', '12 Elm Lane'), (1003, 'Nu\u00F1ez', '7 Juniper Court')");
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
  EXPECT_EQ(std::pair(m_Rows.ShownOf(3), m_Rows.ShownOf(1)), std::pair(0, -1));
  EXPECT_EQ(m_Rows.PositionOf(1), -1);
  EXPECT_THAT(Shown(u"jun"), ElementsAre(1, 3)) << "a filter that asks for less shows more again";
  EXPECT_THAT(Shown(u"xyz"), ElementsAre());
}

}  // namespace
}  // namespace inspector::inspection
