#include "editing/Defaults.h"

#include "editing/Completeness.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

constexpr auto kQuestion = u"Please confirm the applying of all defaults. This action can not be undone.";

class DefaultsTest : public VisitTest {
protected:
  DefaultsResult Apply() {
    Prompts().Queue(kQuestion, Answer::Yes);
    return ApplyDefaults(Document());
  }
  Text Outline() { return Joined(m_Device.Outline(m_Key), u"\n"); }

  const std::int32_t m_Key = m_Device.Visit(u"House");
};

TEST_F(DefaultsTest, WholeInspectionFromEmptyCategories) {
  EXPECT_EQ(Apply(), DefaultsResult::Done);
  EXPECT_THAT(Prompts().Transcript(), ElementsAre(Text(u"Caution: ") + kQuestion, u"Alert: Done!"));
  EXPECT_EQ(Outline(),
            u"15 Attic (Complete)\n"   // no steps at all
            u"20 Roof (Incomplete)\n"  // 20.3 has no rating type and stays empty
            u"  20.1|Shingles|Good|Asphalt;|Shingles last 20 years.\n"
            u"  20.2|Gutters|Good|Copper;|\n  20.3|Notes|||\n"
            u"30 Safety (Incomplete)\n"                // excluded: no steps are made either
            u"9 Cellar (Incomplete)\n  9.1|Sump|||\n"  // its rating type has no default
            u"99 Checklist (Complete)");
  ASSERT_TRUE(Document().Categories().GetRecord(0));
  EXPECT_NE(Document().Categories().m_CompleteFlag, 0) << "the document shows the new flags";
}

TEST_F(DefaultsTest, LeavesWhatWasFoundAlone) {
  m_Device.OpenCategory(u"Roof");
  m_Device.OpenCategory(u"Safety");
  m_Device.Enter(u"20.1", "InspectResult = 'Omit'");
  m_Device.Enter(u"20.2", "Materials = 'Other:Vinyl;', Comments = 'Seen.'");
  m_Device.Enter(u"20.3", "InspectResult = 'Poor'");
  ASSERT_TRUE(Document().SetCurrentCategory(1));
  Document().Categories().m_NotPresentFlag = -1;
  ASSERT_TRUE(Document().Categories().Write());
  EXPECT_EQ(Apply(), DefaultsResult::Done);
  EXPECT_EQ(Outline(),
            u"15 Attic (Complete)\n20 Roof (Not Present)\n"  // takes part, and keeps its flag
            u"  20.1|Shingles|Omit||\n"                      // a result without materials gets none
            u"  20.2|Gutters|Good|Other:Vinyl;|Seen.\n  20.3|Notes|Poor||\n"
            u"30 Safety (Incomplete)\n  30.1|Alarms|||\n9 Cellar (Incomplete)\n  9.1|Sump|||\n"
            u"99 Checklist (Complete)");
  ASSERT_TRUE(Document().Categories().GetRecord(1));
  EXPECT_NE(Document().Categories().m_CompleteFlag, 0);
}

TEST_F(DefaultsTest, FirstOfSeveralDefaultsWinsAndItsCommentIsAppendedWithoutASeparator) {
  m_Device.RunInLibrary(
      "INSERT INTO MaterialTemplate (ID, StepID, Material, DefaultMaterial) VALUES (6, 1, 'Slate', 1); "
      "INSERT INTO RatingType (ID, RatingType) VALUES (3, 'Condition'); INSERT INTO RatingChoices "
      "(RatingTypeID, ChoiceName, DefaultFlag) VALUES (3, 'Second', 1)");
  m_Device.OpenCategory(u"Roof");
  m_Device.Enter(u"20.1", "Comments = 'Old.'");
  EXPECT_EQ(Apply(), DefaultsResult::Done);
  EXPECT_EQ(Finding(u"20.1"), u"20.1|Shingles|Good|Asphalt;|Old.Shingles last 20 years.");
}

// Whatever cannot be read or written: no step is made, no result lost, no category completed. When the
// choices cannot be read, every rating looks as if its type did not know it.
TEST_F(DefaultsTest, FailureLeavesEverythingAsItWas) {
  const auto cellar = m_Device.OpenCategory(u"Cellar");
  m_Device.Enter(u"9.1", "InspectResult = 'No'");
  const Text before = Outline();
  for (const std::string table : {"CategoryTemplate", "StepTemplate", "CategoryStep", "RatingType",
                                  "MaterialComment", "MaterialTemplate", "RatingChoices"}) {
    const MissingTable missing(m_Device, table);
    EXPECT_EQ(Apply(), DefaultsResult::Failed) << table;
    if (table == "MaterialTemplate" || table == "RatingChoices") {
      EXPECT_FALSE(ApplyStepDefaults(Data(), cellar)) << table;
    }
    EXPECT_EQ(Outline(), before) << table;
  }
  m_Device.RunInVisits(NoRoomFor("UPDATE ON Category WHEN new.CategoryTitle = 'Checklist'"));
  EXPECT_EQ(Apply(), DefaultsResult::Failed);
  EXPECT_EQ(Outline(), before);
  EXPECT_THAT(Prompts().Transcript(), Not(::testing::Contains(u"Alert: Done!")));
}

TEST_F(DefaultsTest, OfOneCategoryFillMaterialsWhateverTheResult) {
  const auto category = m_Device.OpenCategory(u"Roof");
  // What "20.3" was rated, and what becomes of it and of the category.
  const auto apply = [this, category](const std::string& entered) {
    m_Device.Enter(u"20.3", entered);
    EXPECT_TRUE(ApplyStepDefaults(Data(), category));
    return m_Device.Outline(m_Key)[1] + Finding(u"20.3");
  };
  m_Device.Enter(u"20.1", "InspectResult = 'Poor'");
  m_Device.Enter(u"20.2", "InspectResult = 'Gone with an older library', Materials = 'Wood;'");
  EXPECT_EQ(apply("InspectResult = 'Poor'"), u"20 Roof (Incomplete)20.3|Notes|||")
      << "without choices nothing can be selected";
  EXPECT_EQ(Finding(u"20.1"), u"20.1|Shingles|Poor|Asphalt;|Shingles last 20 years.");
  EXPECT_EQ(Finding(u"20.2"), u"20.2|Gutters|Good|Wood;|") << "not a choice of the type: the default instead";
  EXPECT_EQ(apply("InspectResult = '<no ratings>'"), u"20 Roof (Complete)20.3|Notes|<no ratings>||");
  EXPECT_EQ(apply("RatingType = 'Condition', InspectResult = 'Good \"as new\"'"),
            u"20 Roof (Complete)20.3|Notes|Good \"as new\"||");
}

}  // namespace
}  // namespace inspector::editing
