#include "editing/CategoryOpening.h"

#include "editing/Completeness.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

class CategoryOpeningTest : public VisitTest {
protected:
  const std::int32_t m_Key = m_Device.Visit(u"House");
};

TEST_F(CategoryOpeningTest, StepsAndFieldsComeFromTheTemplatesOnce) {
  for (const Text title : {u"Roof", u"Roof", u"Checklist", u"Checklist"}) m_Device.OpenCategory(title);
  EXPECT_EQ(InVisits("SELECT StepID, StepNumber, StepTitle, MajorSystem, StepTemplateID, "
                     "RatingType, StepInfoExists, InspectResult, Materials, Comments FROM Step"),
            "1000|20.1|Shingles|Roof-Covering|1|Condition|1|||\n"
            "1001|20.2|Gutters|Roof-Drainage*|2|Condition|0|||\n"  // help of two characters
            "1002|20.3|Notes|Other|3||0|||");                      // no keyword, a type that is not there
  EXPECT_EQ(
      InVisits("SELECT ID, CategoryID, SequenceNumber, FieldType, FieldLabel, AssignedValue FROM Field"),
      "1000|1003|1|2|Stove off|\n1001|1003|2|2|Doors locked|");
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
  for (const auto& [table, row] : {std::pair("StepTemplate", 1),
                                   {"RatingType", 1},
                                   {"CategoryStep", 1},
                                   {"CategoryTemplate", 1},
                                   {"FieldTemplate", 4}}) {
    const MissingTable missing(m_Device, table);
    EXPECT_FALSE(open(row)) << table;
  }
  m_Device.RunInVisits(NoRoomFor("INSERT ON Step WHEN new.StepNumber = '20.3'"));
  EXPECT_FALSE(open(1));
  EXPECT_EQ(m_Device.Outline(m_Key), before);
}

TEST_F(CategoryOpeningTest, CompleteIsWhatHasNoStepWithoutAResult) {
  const auto category = m_Device.OpenCategory(u"Roof");
  for (const auto& [results, isComplete] : {std::pair("''", false),
                                            {"'Good'", true},
                                            {"' '", true},  // a single blank is a result
                                            {"replace(StepNumber, '20.2', '')", false},
                                            {"nullif(StepNumber, '20.2')", false}}) {
    m_Device.RunInVisits(std::string("UPDATE Step SET InspectResult = ") + results);
    EXPECT_EQ(IsComplete(Data(), category), isComplete) << results;
  }
  EXPECT_EQ(IsComplete(Data(), 4711), true);
  m_Device.RunInVisits("UPDATE Step SET InspectResult = 'Good'; ALTER TABLE Step RENAME TO Gone");
  EXPECT_EQ(IsComplete(Data(), category), std::nullopt) << "what cannot be read never completes";
  EXPECT_FALSE(RecomputeComplete(Data(), category));
  m_Device.RunInVisits("ALTER TABLE Gone RENAME TO Step");
  EXPECT_EQ(m_Device.Outline(m_Key)[1], u"20 Roof (Incomplete)");
  EXPECT_TRUE(RecomputeComplete(Data(), category));
}

}  // namespace
}  // namespace inspector::editing
