#include "editing/Materials.h"

#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

using ::testing::ElementsAre;

TEST(MaterialsForDisplayTest, ShowsTheInspectorsWordsOnly) {
  struct Case {
    TextView stored;
    TextView shown;
  };
  for (const auto& [stored, shown] : std::initializer_list<Case>{
           {u"", u""},
           {u";", u""},
           {u"Asphalt;", u"Asphalt"},
           {u"Asphalt", u"Asphalt"},
           {u"Asphalt;Wood;Other:Slate;", u"Asphalt;Wood;Slate"},
           {u"Other:Slate;", u"Slate"},
           {u"Other:Slate;Other:Tin;", u"Slate;Tin"},
           {u"other:Slate;",
            u"other:Slate"},  // written by an older step; only the capital form is a marker here
           {u"Wood;Other:;", u"Wood;"},
           {u"No Other:marker;", u"No Other:marker"},
       })
    EXPECT_EQ(MaterialsForDisplay(stored), shown) << device::ToUtf8(stored);
}

class MaterialBoxesTest : public tests::VisitTest {
protected:
  // The boxes of step template 1 as "[x] caption" or "[ ] caption".
  std::vector<Text> Shown(TextView stored) {
    std::vector<Text> lines;
    const MaterialBoxes boxes(Data(), 1, stored);
    for (const MaterialBox& box : boxes.Boxes())
      lines.push_back((box.ticked ? u"[x] " : u"[ ] ") + box.caption);
    return lines;
  }
};

TEST_F(MaterialBoxesTest, TicksWhatTheStoredTextHolds) {
  EXPECT_THAT(Shown(u""), ElementsAre(u"[ ] Asphalt", u"[ ] Wood", u"[ ] Wood Siding", u"[ ] Other:"));
  EXPECT_THAT(Shown(u"Wood Siding;"),
              ElementsAre(u"[ ] Asphalt", u"[ ] Wood", u"[x] Wood Siding", u"[ ] Other:"))
      << "Wood Siding is no Wood";
  EXPECT_THAT(Shown(u"Asphalt;Wood;Other:Slate;"),
              ElementsAre(u"[x] Asphalt", u"[x] Wood", u"[ ] Wood Siding", u"[x] Other:Slate"));
  EXPECT_THAT(Shown(u"other:slate;"),
              ElementsAre(u"[ ] Asphalt", u"[ ] Wood", u"[ ] Wood Siding", u"[x] other:slate"))
      << "an older step wrote it so";
  EXPECT_EQ(Shown(u"other:a;Other:b;")[3], u"[x] Other:b") << "the capital form is looked for first";
  EXPECT_EQ(Shown(u"Other:no end")[3], u"[x] Other:no end");
  EXPECT_TRUE(MaterialBoxes(Data(), 4711, u"Wood;").Boxes().empty());
}

TEST_F(MaterialBoxesTest, StoresTheTickedInBoxOrder) {
  MaterialBoxes boxes(Data(), 1, u"Wood;Asphalt;");
  EXPECT_EQ(boxes.Stored(), u"Asphalt;Wood;");
  EXPECT_TRUE(boxes.Boxes()[3].IsFree());
  boxes.TickFree(3, u"Slate");
  boxes.Tick(0, false);
  EXPECT_EQ(boxes.Stored(), u"Wood;Other:Slate;");
  EXPECT_FALSE(boxes.Failed());
  EXPECT_TRUE(boxes.Boxes()[0].hasComments);
  EXPECT_FALSE(boxes.Boxes()[1].hasComments);
}

}  // namespace
}  // namespace inspector::editing
