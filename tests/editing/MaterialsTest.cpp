#include "editing/Materials.h"

#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

TEST(MaterialsForDisplayTest, ShowsTheInspectorsWordsOnly) {
  ExpectEach<Text, Text>(
      {{u"", u""},
       {u";", u""},
       {u"Asphalt;", u"Asphalt"},
       {u"Asphalt", u"Asphalt"},
       {u"Asphalt;Wood;Other:Slate;", u"Asphalt;Wood;Slate"},
       {u"Other:Slate;", u"Slate"},
       {u"Other:Slate;Other:Tin;", u"Slate;Tin"},
       {u"other:Slate;", u"other:Slate"},  // of an older step; only the capital form is a marker here
       {u"Wood;Other:;", u"Wood;"},
       {u"No Other:marker;", u"No Other:marker"}},
      MaterialsForDisplay);
}

using MaterialBoxesTest = VisitTest;

TEST_F(MaterialBoxesTest, TicksWhatTheStoredTextHolds) {
  for (const auto& [stored, boxes] : std::vector<std::pair<Text, Text>>{
           {u"", u"Asphalt|Wood|Wood Siding|Other:"},
           {u"Wood Siding;", u"Asphalt|Wood|[x] Wood Siding|Other:"},  // no Wood
           {u"Asphalt;Wood;Other:Slate;", u"[x] Asphalt|[x] Wood|Wood Siding|[x] Other:Slate"},
           {u"other:slate;", u"Asphalt|Wood|Wood Siding|[x] other:slate"},  // of an older step
           {u"other:a;Other:b;", u"Asphalt|Wood|Wood Siding|[x] Other:b"},  // the capital form first
           {u"Other:no end", u"Asphalt|Wood|Wood Siding|[x] Other:no end"}})
    EXPECT_EQ(Joined(MaterialBoxes(Data(), 1, stored).Boxes(),
                     [](const MaterialBox& box) { return (box.ticked ? u"[x] " : u"") + box.caption; }),
              boxes);
  EXPECT_TRUE(MaterialBoxes(Data(), 4711, u"Wood;").Boxes().empty());
}

TEST_F(MaterialBoxesTest, StoresTheTickedInBoxOrder) {
  MaterialBoxes boxes(Data(), 1, u"Wood;Asphalt;");
  EXPECT_EQ(boxes.Stored(), u"Asphalt;Wood;");
  boxes.TickFree(3, u"Slate");
  boxes.Tick(0, false);
  EXPECT_EQ(boxes.Stored(), u"Wood;Other:Slate;");
  EXPECT_TRUE(boxes.Boxes()[0].hasComments);
  EXPECT_FALSE(boxes.Boxes()[1].hasComments);
}

}  // namespace
}  // namespace inspector::editing
