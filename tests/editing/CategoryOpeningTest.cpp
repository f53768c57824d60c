#include "editing/CategoryOpening.h"

#include "editing/Completeness.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

using device::Text;
using device::TextView;

class CategoryOpeningTest : public tests::VisitTest {
protected:
  void SetUp() override { m_Key = m_Device.Visit(u"House"); }
  std::int32_t m_Key = 0;
};

TEST_F(CategoryOpeningTest, StepsComeFromTheTemplatesOnce) {
  m_Device.OpenCategory(u"Roof");
  m_Device.OpenCategory(u"Roof");
  EXPECT_EQ(m_Device.Visits().Ask("SELECT StepID, StepNumber, StepTitle, MajorSystem, StepTemplateID, "
                                  "RatingType, StepInfoExists, InspectResult, Materials, Comments FROM Step"),
            "1000|20.1|Shingles|Roof-Covering|1|Condition|1|||\n"
            "1001|20.2|Gutters|Roof-Drainage*|2|Condition|0|||\n"  // help of two characters
            "1002|20.3|Notes|Other|3||0|||");                      // no keyword, a type that is not there
}

TEST_F(CategoryOpeningTest, FormGetsItsFieldsInTheirOrder) {
  m_Device.OpenCategory(u"Checklist");
  m_Device.OpenCategory(u"Checklist");
  EXPECT_EQ(m_Device.Visits().Ask(
                "SELECT ID, CategoryID, SequenceNumber, FieldType, FieldLabel, AssignedValue FROM Field"),
            "1000|1003|1|2|Stove off|\n1001|1003|2|2|Doors locked|");
  EXPECT_EQ(m_Device.RowCounts(), u"Inspection 2, Category 5, Step 0, Field 2");
}

TEST_F(CategoryOpeningTest, WithoutStepTemplatesItIsComplete) {
  m_Device.OpenCategory(u"Attic");
  EXPECT_EQ(m_Device.Outline(m_Key)[0], u"15 Attic (Complete)");
  // The office adds a step later: what was complete then is not complete now.
  m_Device.RunInLibrary(
      "INSERT INTO StepTemplate (ID, StepNumber, RatingTypeID) VALUES (7, '15.1', 1); INSERT INTO "
      "CategoryStep VALUES (5, 7)");
  m_Device.OpenCategory(u"Attic");
  EXPECT_THAT(m_Device.Outline(m_Key)[0], u"15 Attic (Incomplete)");
}

TEST_F(CategoryOpeningTest, FailureMakesNoStepAndCompletesNothing) {
  const auto before = m_Device.Outline(m_Key);
  const auto open = [this](int row) {
    Document().LoadCategories();
    EXPECT_TRUE(Document().SetCurrentCategory(row));
    return OpenCategory(Data(), Document().Categories());
  };
  for (const char* table : {"StepTemplate", "RatingType", "CategoryStep", "CategoryTemplate"}) {
    m_Device.RunInLibrary(std::string("ALTER TABLE ") + table + " RENAME TO Gone");
    EXPECT_FALSE(open(1)) << table;
    m_Device.RunInLibrary(std::string("ALTER TABLE Gone RENAME TO ") + table);
  }
  m_Device.RunInLibrary("ALTER TABLE FieldTemplate RENAME TO Gone");
  EXPECT_FALSE(open(4));
  m_Device.RunInVisits(tests::NoRoomFor("INSERT ON Step WHEN new.StepNumber = '20.3'"));
  EXPECT_FALSE(open(1));
  EXPECT_EQ(m_Device.Outline(m_Key), before);
}

TEST_F(CategoryOpeningTest, CompleteIsWhatHasNoStepWithoutAResult) {
  const auto category = m_Device.OpenCategory(u"Roof");
  const auto rate = [&](const std::string& result, const std::string& where = "") {
    m_Device.RunInVisits("UPDATE Step SET InspectResult = " + result + where);
  };
  EXPECT_EQ(IsComplete(Data(), category), false);
  rate("'Good'");
  EXPECT_EQ(IsComplete(Data(), category), true);
  rate("' '");
  EXPECT_EQ(IsComplete(Data(), category), true) << "a single blank is a result";
  rate("''", " WHERE StepNumber = '20.2'");
  EXPECT_EQ(IsComplete(Data(), category), false);
  rate("NULL", " WHERE StepNumber = '20.2'");
  EXPECT_EQ(IsComplete(Data(), category), false) << "another program may leave a result out";
  EXPECT_EQ(IsComplete(Data(), 4711), true);
}

TEST_F(CategoryOpeningTest, FailedReadNeverCompletes) {
  const auto category = m_Device.OpenCategory(u"Roof");
  m_Device.RunInVisits("ALTER TABLE Step RENAME TO Gone");
  EXPECT_EQ(IsComplete(Data(), category), std::nullopt);
  EXPECT_FALSE(RecomputeComplete(Data(), category));
  m_Device.RunInVisits("ALTER TABLE Gone RENAME TO Step");
  EXPECT_EQ(m_Device.Outline(m_Key)[1], u"20 Roof (Incomplete)");
  EXPECT_TRUE(RecomputeComplete(Data(), category));
}

TEST_F(CategoryOpeningTest, StatusWords) {
  data::CategoryTable category(Data());
  category.PrepareNew();
  EXPECT_EQ(StatusOf(category), u"Incomplete");
  category.m_CompleteFlag = -1;
  EXPECT_EQ(StatusOf(category), u"Complete");
  category.m_NotPresentFlag = -1;
  EXPECT_EQ(StatusOf(category), u"Not Present");
}

}  // namespace
}  // namespace inspector::editing
