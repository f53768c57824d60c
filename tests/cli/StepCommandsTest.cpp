#include "CommandLineFixture.h"

namespace inspector::cli {
namespace {

// Inspection 1001 of type House: categories 1000 Roof, 1001 Cellar, 1002 Safety, 1003 Checklist, 1004 Attic.
// Opening Roof makes the steps 1000 to 1002.
class StepCommandsTest : public CommandLineTest {
protected:
  void SetUp() override {
    CommandLineTest::SetUp();
    Out("new --type House");
    Out("steps 1000");
  }
};

TEST_F(StepCommandsTest, CategoriesAndStepsForProgramsAndForPeople) {
  EXPECT_EQ(Out("categories 1001"),
            "ID    NUMBER  TITLE      STATUS\n"
            "1004  15      Attic      Incomplete\n"
            "1000  20      Roof       Incomplete\n"
            "1002  30      Safety     Incomplete\n"
            "1001  9       Cellar     Incomplete\n"
            "1003  99      Checklist  Incomplete\n");
  EXPECT_EQ(Json("categories 1001")[0].dump(),
            R"({"id":1004,"number":"15","title":"Attic","status":"Incomplete"})");
  EXPECT_EQ(Json("steps 1001").dump(),
            R"([{"id":1003,"number":"9.1","title":"Sump","rating":"","materials":"","comments":""}])")
      << "made by looking at them";
  Out("material 1000 Wood");
  Out("material 1000 Slate");
  EXPECT_EQ(Json("steps 1000")[0]["materials"], "Wood;Other:Slate;");
  EXPECT_EQ(Out("steps 1000"),
            "ID    NUMBER  TITLE     RATING  MATERIALS   COMMENTS\n"
            "1000  20.1    Shingles          Wood;Slate\n"
            "1001  20.2    Gutters\n"
            "1002  20.3    Notes\n");
  EXPECT_EQ(Out("steps 1003"), "ID    FIELD         VALUE\n1000  Stove off\n1001  Doors locked\n");
  for (const std::string key : {"1003", "1004"}) EXPECT_EQ(Json("steps " + key).dump(), "[]") << key;
  ExpectRefused(1, "steps 4711");
  ExpectRefused(1, "categories 4711");
  EXPECT_EQ(RowCounts(), u"Inspection 2, Category 5, Step 4, Field 2");
}

TEST_F(StepCommandsTest, RatingsAreThoseOfTheTypeAndComplete) {
  Out("steps 1001");
  Out("rate 1003 Yes");
  EXPECT_THAT(Outline(1001), ::testing::Contains(u"9 Cellar (Complete)"));
  ExpectRefused(1, "rate 1000 Yes", "It offers: Good, Poor, Good \"as new\"");
  ExpectRefused(1, "rate 1002 Good", "It offers: <no ratings>");
  ExpectRefused(1, "rate 4711 Good", "no step 4711");
  ExpectDone("rate 1000 Poor", "add a comment");
}

TEST_F(StepCommandsTest, AnyTextIsAText) {
  for (const std::string text : {"- loose", "-5 C at noon", "new", "--", "-x", "NAME=VALUE", "", "[a]",
                                 "\"q\"", "it is", "--yes and --json"}) {
    Out("comment 1000 -- '" + text + "'");
    if (text != "--") Out("comment 1001 '" + text + "'");
  }
  const Text before = u"|||- loose  -5 C at noon  new  ";
  const Text behind = u"-x  NAME=VALUE  [a]  \"q\"  it is  --yes and --json";
  Out("comment 1002 -- --json");
  EXPECT_THAT(Outline(1001),
              IsSupersetOf({u"  20.1|Shingles" + before + u"--  " + behind,
                            u"  20.2|Gutters" + before + behind, Text(u"  20.3|Notes|||--json")}));
  for (const std::string wrong : {"1002 --jsn", "1002", "1002 one two", "x one", "99999999999 one"})
    ExpectRefused(2, "comment " + wrong);
}

TEST_F(StepCommandsTest, MaterialMustBeOneOfTheStepsOrFitTheFreeBox) {
  ExpectDone("material 1000 Asphalt", "has comments");
  ExpectRefused(1, "material 1001 Gold", "Gold is no material");
  ExpectRefused(1, "material 1000 ''");
  ExpectRefused(1, "material 1000 a;b");
}

}  // namespace
}  // namespace inspector::cli
