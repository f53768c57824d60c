#include "CommandLineFixture.h"

namespace inspector::cli {
namespace {

using device::Text;
using ::testing::Contains;
using ::testing::HasSubstr;

// Inspection 1001 of type House: categories 1000 Roof, 1001 Cellar, 1002 Safety, 1003 Checklist, 1004 Attic.
// Opening Roof makes the steps 1000 to 1002.
class StepCommandsTest : public tests::CommandLineTest {
protected:
  void SetUp() override {
    CommandLineTest::SetUp();
    Out({"new", "--type", "House"});
    Out({"steps", "1000"});
  }
};

TEST_F(StepCommandsTest, CategoriesAndStepsForProgramsAndForPeople) {
  EXPECT_EQ(Out({"categories", "1001"}),
            "ID    NUMBER  TITLE      STATUS\n"
            "1004  15      Attic      Incomplete\n"
            "1000  20      Roof       Incomplete\n"
            "1002  30      Safety     Incomplete\n"
            "1001  9       Cellar     Incomplete\n"
            "1003  99      Checklist  Incomplete\n");
  EXPECT_THAT(Out({"categories", "1001", "--json"}), ::testing::StartsWith(R"([
  {
    "id": 1004,
    "number": "15",
    "title": "Attic",
    "status": "Incomplete"
  },
)"));
  EXPECT_EQ(Out({"steps", "1001", "--json"}), R"([
  {
    "id": 1003,
    "number": "9.1",
    "title": "Sump",
    "rating": "",
    "materials": "",
    "comments": ""
  }
]
)") << "made by looking at them";
  Out({"material", "1000", "Wood"});
  Out({"material", "1000", "Slate"});
  EXPECT_THAT(Out({"steps", "1000", "--json"}), HasSubstr(R"("materials": "Wood;Other:Slate;")"));
  EXPECT_EQ(Out({"steps", "1000"}),
            "ID    NUMBER  TITLE     RATING  MATERIALS   COMMENTS\n"
            "1000  20.1    Shingles          Wood;Slate\n"
            "1001  20.2    Gutters\n"
            "1002  20.3    Notes\n");
  EXPECT_EQ(Out({"steps", "1003"}), "ID    FIELD         VALUE\n1000  Stove off\n1001  Doors locked\n");
  EXPECT_EQ(Out({"steps", "1003", "--json"}), "[]\n");
  EXPECT_EQ(Out({"steps", "1004", "--json"}), "[]\n");
  EXPECT_EQ(Cli({"steps", "4711"}).exit, 1);
  EXPECT_EQ(Cli({"categories", "4711"}).exit, 1);
  EXPECT_EQ(RowCounts(), u"Inspection 2, Category 5, Step 4, Field 2");
}

TEST_F(StepCommandsTest, RatingsAreThoseOfTheTypeAndComplete) {
  Out({"steps", "1001"});
  Out({"rate", "1003", "Yes"});
  EXPECT_THAT(Outline(1001), Contains(u"9 Cellar (Complete)"));
  Out({"rate", "1003", ""});
  EXPECT_THAT(Outline(1001), Contains(u"9 Cellar (Incomplete)"));
  const tests::CliRun wrong = Cli({"rate", "1000", "Yes"});
  EXPECT_EQ(wrong.exit, 1);
  EXPECT_THAT(wrong.err, HasSubstr("It offers: Good, Poor, Good \"as new\""));
  EXPECT_THAT(Cli({"rate", "1002", "Good"}).err, HasSubstr("It offers: <no ratings>"));
  EXPECT_THAT(Cli({"rate", "4711", "Good"}).err, HasSubstr("no step 4711"));
  const tests::CliRun prompting = Cli({"rate", "1000", "Poor"});
  EXPECT_EQ(prompting.exit, 0);
  EXPECT_THAT(prompting.err, HasSubstr("add a comment"));
}

TEST_F(StepCommandsTest, AnyTextIsAText) {
  for (const std::string text : {"- loose", "-5 C at noon", "new", "--", "-x", "NAME=VALUE", "", "[a]",
                                 "\"q\"", "it's", "--yes and --json"}) {
    Out({"comment", "1000", "--", text});
    if (text != "--") Out({"comment", "1001", text});
  }
  const Text joined = u"- loose  -5 C at noon  new  --  -x  NAME=VALUE  [a]  \"q\"  it's  --yes and --json";
  EXPECT_THAT(Outline(1001), Contains(u"  20.1|Shingles|||" + joined));
  const Text without = u"- loose  -5 C at noon  new  -x  NAME=VALUE  [a]  \"q\"  it's  --yes and --json";
  EXPECT_THAT(Outline(1001), Contains(u"  20.2|Gutters|||" + without));
  EXPECT_EQ(Cli({"comment", "1002", "--", "--json"}).exit, 0);
  EXPECT_THAT(Outline(1001), Contains(u"  20.3|Notes|||--json"));
  EXPECT_EQ(Cli({"comment", "1002", "--jsn"}).exit, 2) << "a mistyped option is no text";
  EXPECT_EQ(Cli({"comment", "1002"}).exit, 2);
  EXPECT_EQ(Cli({"comment", "1002", "one", "two"}).exit, 2);
  EXPECT_EQ(Cli({"comment", "x", "one"}).exit, 2);
  EXPECT_EQ(Cli({"comment", "99999999999", "one"}).exit, 2);
}

TEST_F(StepCommandsTest, MaterialMustBeOneOfTheStepsOrFitTheFreeBox) {
  const tests::CliRun commented = Cli({"material", "1000", "Asphalt"});
  EXPECT_EQ(commented.exit, 0);
  EXPECT_THAT(commented.err, HasSubstr("has comments"));
  const tests::CliRun wrong = Cli({"material", "1001", "Gold"});
  EXPECT_EQ(wrong.exit, 1);
  EXPECT_THAT(wrong.err, HasSubstr("Gold is no material"));
  EXPECT_EQ(Cli({"material", "1000", ""}).exit, 1);
  EXPECT_EQ(Cli({"material", "1000", "a;b"}).exit, 1);
}

}  // namespace
}  // namespace inspector::cli
