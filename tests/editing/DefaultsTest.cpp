#include "editing/Defaults.h"

#include "editing/Completeness.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

using ::testing::ElementsAre;

constexpr auto kQuestion = u"Please confirm the applying of all defaults. This action can not be undone.";

class DefaultsTest : public tests::VisitTest {
protected:
  void SetUp() override { m_Key = m_Device.Visit(u"House"); }
  DefaultsResult Apply() {
    Prompts().Queue(kQuestion, device::Answer::Yes);
    return ApplyDefaults(Document());
  }
  void Break(const std::string& table) { m_Device.RunInLibrary("ALTER TABLE " + table + " RENAME TO Gone"); }
  void Repair(const std::string& table) { m_Device.RunInLibrary("ALTER TABLE Gone RENAME TO " + table); }
  std::vector<Text> Outline() { return m_Device.Outline(m_Key); }

  std::int32_t m_Key = 0;
};

TEST_F(DefaultsTest, WholeInspectionFromEmptyCategories) {
  EXPECT_EQ(Apply(), DefaultsResult::Done);
  EXPECT_THAT(Prompts().Transcript(), ElementsAre(Text(u"Caution: ") + kQuestion, u"Alert: Done!"));
  EXPECT_THAT(Outline(),
              ElementsAre(u"15 Attic (Complete)",   // no steps at all
                          u"20 Roof (Incomplete)",  // 20.3 has no rating type and stays empty
                          u"  20.1|Shingles|Good|Asphalt;|Shingles last 20 years.",
                          u"  20.2|Gutters|Good|Copper;|", u"  20.3|Notes|||",
                          u"30 Safety (Incomplete)",  // excluded: no steps are made either
                          u"9 Cellar (Incomplete)",   // its rating type has no default
                          u"  9.1|Sump|||", u"99 Checklist (Complete)"));
  ASSERT_TRUE(Document().Categories().GetRecord(0));
  EXPECT_NE(Document().Categories().m_CompleteFlag, 0) << "the document shows the new flags";
}

TEST_F(DefaultsTest, LeavesWhatWasFoundAlone) {
  m_Device.OpenCategory(u"Roof");
  m_Device.OpenCategory(u"Safety");
  m_Device.RunInVisits("UPDATE Step SET InspectResult = 'Omit' WHERE StepNumber = '20.1'");
  m_Device.RunInVisits(
      "UPDATE Step SET Materials = 'Other:Vinyl;', Comments = 'Seen.' WHERE StepNumber = '20.2'");
  m_Device.RunInVisits("UPDATE Step SET InspectResult = 'Poor' WHERE StepNumber = '20.3'");
  ASSERT_TRUE(Document().SetCurrentCategory(1));
  Document().Categories().m_NotPresentFlag = -1;
  ASSERT_TRUE(Document().Categories().Write());
  EXPECT_EQ(Apply(), DefaultsResult::Done);
  EXPECT_THAT(Outline(), ElementsAre(u"15 Attic (Complete)",
                                     u"20 Roof (Not Present)",   // takes part, and keeps its flag
                                     u"  20.1|Shingles|Omit||",  // a result without materials gets none
                                     u"  20.2|Gutters|Good|Other:Vinyl;|Seen.", u"  20.3|Notes|Poor||",
                                     u"30 Safety (Incomplete)", u"  30.1|Alarms|||", u"9 Cellar (Incomplete)",
                                     u"  9.1|Sump|||", u"99 Checklist (Complete)"));
  ASSERT_TRUE(Document().Categories().GetRecord(1));
  EXPECT_NE(Document().Categories().m_CompleteFlag, 0);
}

TEST_F(DefaultsTest, FirstOfSeveralDefaultsWinsAndItsCommentIsAppendedWithoutASeparator) {
  m_Device.RunInLibrary(
      "INSERT INTO MaterialTemplate (ID, StepID, Material, DefaultMaterial) VALUES (6, 1, 'Slate', 1); "
      "INSERT INTO RatingType (ID, RatingType) VALUES (3, 'Condition'); INSERT INTO RatingChoices "
      "(RatingTypeID, ChoiceName, DefaultFlag) VALUES (3, 'Second', 1)");
  m_Device.OpenCategory(u"Roof");
  m_Device.RunInVisits("UPDATE Step SET Comments = 'Old.' WHERE StepNumber = '20.1'");
  EXPECT_EQ(Apply(), DefaultsResult::Done);
  EXPECT_EQ(m_Device.Finding(m_Device.StepKey(u"20.1")),
            u"20.1|Shingles|Good|Asphalt;|Old.Shingles last 20 years.");
}

// Whatever cannot be read or written: no step is made, no result lost, no category completed.
TEST_F(DefaultsTest, FailureLeavesEverythingAsItWas) {
  m_Device.OpenCategory(u"Cellar");
  const auto before = Outline();
  for (const char* table : {"CategoryTemplate", "StepTemplate", "CategoryStep", "RatingType",
                            "MaterialTemplate", "MaterialComment", "RatingChoices"}) {
    Break(table);
    EXPECT_EQ(Apply(), DefaultsResult::Failed) << table;
    Repair(table);
    EXPECT_EQ(Outline(), before) << table;
  }
  m_Device.RunInVisits(tests::NoRoomFor("UPDATE ON Category WHEN new.CategoryTitle = 'Checklist'"));
  EXPECT_EQ(Apply(), DefaultsResult::Failed);
  EXPECT_EQ(Outline(), before);
  for (const Text& line : Prompts().Transcript()) EXPECT_NE(line, u"Alert: Done!");
}

TEST_F(DefaultsTest, OfOneCategoryFillMaterialsWhateverTheResult) {
  const auto category = m_Device.OpenCategory(u"Roof");
  m_Device.RunInVisits("UPDATE Step SET InspectResult = 'Poor' WHERE StepNumber = '20.1'");
  m_Device.RunInVisits(
      "UPDATE Step SET InspectResult = 'Gone with an older library', Materials = 'Wood;' WHERE StepNumber = "
      "'20.2'");
  m_Device.RunInVisits("UPDATE Step SET InspectResult = 'Poor' WHERE StepNumber = '20.3'");
  EXPECT_TRUE(ApplyStepDefaults(Data(), category));
  const std::vector<Text> lines = Outline();
  EXPECT_THAT(std::vector<Text>(lines.begin() + 1, lines.begin() + 5),
              ElementsAre(u"20 Roof (Incomplete)", u"  20.1|Shingles|Poor|Asphalt;|Shingles last 20 years.",
                          u"  20.2|Gutters|Good|Wood;|",  // not a choice of the type: the default instead
                          u"  20.3|Notes|||"));           // no choices: nothing can be selected

  m_Device.RunInVisits("UPDATE Step SET InspectResult = '<no ratings>' WHERE StepNumber = '20.3'");
  EXPECT_TRUE(ApplyStepDefaults(Data(), category));
  EXPECT_EQ(Outline()[1], u"20 Roof (Complete)") << "the one entry of its drop-down is selected";

  m_Device.RunInVisits(
      "UPDATE Step SET RatingType = 'Condition', InspectResult = 'Good \"as new\"' WHERE StepNumber = "
      "'20.3'");
  EXPECT_TRUE(ApplyStepDefaults(Data(), category));
  EXPECT_EQ(Outline()[1], u"20 Roof (Complete)");
  EXPECT_EQ(m_Device.Finding(m_Device.StepKey(u"20.3")), u"20.3|Notes|Good \"as new\"||");
}

// When the choices cannot be read, every rating looks as if its type did not know it.
TEST_F(DefaultsTest, OfOneCategoryNeverReplaceARatingThatCouldNotBeLookedUp) {
  const auto category = m_Device.OpenCategory(u"Roof");
  m_Device.RunInVisits("UPDATE Step SET InspectResult = 'Poor' WHERE StepNumber = '20.1'");
  const auto before = Outline();
  for (const char* table : {"RatingChoices", "MaterialTemplate"}) {
    Break(table);
    EXPECT_FALSE(ApplyStepDefaults(Data(), category)) << table;
    Repair(table);
    EXPECT_EQ(Outline(), before) << table;
  }
}

}  // namespace
}  // namespace inspector::editing
