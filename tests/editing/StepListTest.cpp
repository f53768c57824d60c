#include "editing/StepList.h"

#include "support/ScriptedEditingDialogs.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

using ::testing::ElementsAre;
using Attention = StepList::Attention;

constexpr int kShingles = 0;
constexpr int kGutters = 1;
constexpr int kNotes = 2;

class StepListTest : public tests::VisitTest {
protected:
  void SetUp() override {
    m_Key = m_Device.Visit(u"House");
    m_Device.GetWorkspace().Options().m_ShowStepNumbers = -1;
    Show(u"Roof");
  }
  void Show(const Text& category) {
    data::CategoryTable& categories = Document().Categories();
    for (int n = 0; n < categories.RecordCount(); ++n) {
      ASSERT_TRUE(Document().SetCurrentCategory(n));
      if (categories.m_CategoryTitle == category) break;
    }
    ASSERT_EQ(m_List.CategoryTitle(), category);
    ASSERT_TRUE(m_List.Show());
  }
  // "label|rating|materials|comments|picture".
  Text Shown(int row) {
    const auto shown = m_List.RowAt(row);
    if (!shown) return u"gone";
    return shown->label + u"|" + shown->rating + u"|" + shown->materials + u"|" + shown->comments + u"|" +
           shown->picture;
  }
  // The number of the step whose sheet was opened last, and the place of its page.
  std::pair<Text, int> LastSheet() {
    const auto [step, tab] = m_Dialogs.SheetsOpened().back();
    return {m_Device.Finding(step).substr(0, 4), tab};
  }
  Text Finding(const Text& number) { return m_Device.Finding(m_Device.StepKey(number)); }
  bool IsComplete() { return Document().Categories().m_CompleteFlag != 0; }

  std::int32_t m_Key = 0;
  tests::ScriptedEditingDialogs m_Dialogs;
  StepList m_List{m_Device.Document(), m_Dialogs};
};

TEST_F(StepListTest, MakesTheStepsAndShowsWhatIsDone) {
  EXPECT_EQ(m_List.RowCount(), 3);
  EXPECT_EQ(Shown(kShingles), u"20.1. Shingles||Incomplete|Incomplete|Incomplete");
  EXPECT_EQ(Shown(kNotes), u"20.3. Notes||None|Incomplete|Incomplete");
  EXPECT_FALSE(m_List.RowAt(kGutters)->hasInfo) << "two characters are no help";
  EXPECT_TRUE(m_List.RowAt(kShingles)->hasInfo);
  m_Device.Enter(u"20.3",
                 "Materials = 'Tin;', Comments = 'Dry.', BitmapPath = '\\a.jpg', InspectResult = 'Fine'");
  m_Device.GetWorkspace().Options().m_ShowStepNumbers = 0;
  EXPECT_EQ(Shown(kNotes), u"Notes|Fine|Complete|Complete|Complete");
  EXPECT_EQ(m_List.LeftCaption(), u"2 of 3 steps to rate");
}

TEST_F(StepListTest, AMissingPictureIsMarkedBesideTheWordOfItsColumn) {
  const auto marked = [this] {
    std::vector<int> rows;
    for (int row = 0; row < m_List.RowCount(); ++row)
      for (const auto& warning : m_List.ShownRow(row).warnings)
        if (warning.cell == StepList::kPicture) rows.push_back(row);
    return rows;
  };
  m_Device.Put("there.jpg");
  m_Device.Put("card/1.jpg");
  m_Device.GetWorkspace().Options().m_DefaultPictCardPath = u"\\card\\";
  m_Device.RunInVisits("UPDATE Step SET InspectResult = 'Good'");
  m_Device.Enter(u"20.1", "BitmapPath = '\\gone.jpg'");
  m_Device.Enter(
      u"20.2", "BitmapPath = '\\there.jpg', Comments = '***Path=\\there.jpg*** ***Picture-1*** ***none***'");
  m_Device.Enter(u"20.3", "Comments = 'Dry. ***Picture-9***'");
  ASSERT_TRUE(m_List.Show());
  EXPECT_THAT(marked(), ElementsAre(kShingles, kNotes));
  const device::ListRow row = m_List.ShownRow(kShingles);
  EXPECT_EQ(row.cells[StepList::kPicture], u"Complete");
  EXPECT_EQ(row.warnings.back().words, u"a picture is missing");
  EXPECT_EQ(row.tone, device::RowTone::Attention);
  m_Device.Put("gone.jpg");
  EXPECT_THAT(marked(), ElementsAre(kShingles, kNotes)) << "looked for once while the list stands";
  m_List.Show();
  EXPECT_THAT(marked(), ElementsAre(kNotes));
}

TEST_F(StepListTest, CategoryWithoutStepsIsCompleteOnceSeen) {
  Show(u"Attic");
  EXPECT_EQ(m_List.RowCount(), 0);
  EXPECT_TRUE(IsComplete());
}

TEST_F(StepListTest, ColumnOpensItsPage) {
  struct Case {
    int row;
    int column;
    int tab;  // -1: nothing opens
  };
  for (const Case& each :
       {Case{kShingles, StepList::kRating, -1}, Case{kShingles, StepList::kMaterials, 0},
        Case{kShingles, StepList::kComments, 1}, Case{kShingles, StepList::kPicture, 2},
        Case{kShingles, StepList::kInfo, 3}, Case{kNotes, StepList::kMaterials, -1},
        Case{kNotes, StepList::kComments, 0}, Case{kNotes, StepList::kPicture, 1},
        Case{kNotes, StepList::kInfo, 2}, Case{kNotes, -1, -1}, Case{3, StepList::kComments, -1}}) {
    const std::size_t opened = m_Dialogs.SheetsOpened().size();
    if (each.tab >= 0) m_Dialogs.QueueSheet([] { return true; });
    EXPECT_EQ(m_List.Click(each.row, each.column), each.tab >= 0) << each.row << " " << each.column;
    if (each.tab < 0) continue;
    ASSERT_EQ(m_Dialogs.SheetsOpened().size(), opened + 1);
    EXPECT_EQ(LastSheet(), (std::pair{Text(each.row == kNotes ? u"20.3" : u"20.1"), each.tab}));
  }
}

TEST_F(StepListTest, ListShowsWhatWasDoneOnTheSheet) {
  m_List.SetFilter(u"gutt");
  m_Dialogs.QueueSheet([this] {
    m_List.RowAt(0);  // the list paints behind the sheet
    EXPECT_EQ(LastSheet().first, u"20.2");
    m_Device.Enter(u"20.2", "Comments = 'Leaves.'");
    return true;
  });
  EXPECT_TRUE(m_List.Click(0, StepList::kComments));
  EXPECT_EQ(Shown(0), u"20.2. Gutters||Incomplete|Complete|Incomplete");
}

TEST_F(StepListTest, RatingIsStoredAndCompletes) {
  EXPECT_THAT(m_List.RatingEntries(kShingles), ElementsAre(u"Good", u"Poor", u"Good \"as new\"", u"<clear>"));
  EXPECT_THAT(m_List.RatingEntries(kNotes), ElementsAre(u"<no ratings>"));
  EXPECT_TRUE(m_List.ChangeRating(kNotes, u"<no ratings>"));
  EXPECT_EQ(Finding(u"20.3"), u"20.3|Notes|<no ratings>||");
  EXPECT_FALSE(m_List.ChangeRating(kShingles, u"Yes")) << "no choice of its type";

  // What cannot be read is not the same as a type without choices.
  m_Device.RunInLibrary("ALTER TABLE RatingChoices RENAME TO Gone");
  ASSERT_TRUE(m_List.Show());
  EXPECT_THAT(m_List.RatingEntries(kShingles), ElementsAre());
  EXPECT_FALSE(m_List.ChangeRating(kShingles, u"<no ratings>"));
  m_Device.RunInLibrary("ALTER TABLE Gone RENAME TO RatingChoices");
  EXPECT_EQ(m_List.RatingEntries(kShingles).size(), 4U) << "asked for again";

  Show(u"Cellar");
  EXPECT_TRUE(m_List.ChangeRating(0, u"Yes"));
  EXPECT_TRUE(IsComplete());
  EXPECT_EQ(m_List.RowAt(0)->attention, Attention::None);
  EXPECT_TRUE(m_List.ChangeRating(0, u"<clear>"));
  EXPECT_FALSE(IsComplete());
  EXPECT_EQ(Shown(0), u"9.1. Sump||None|Incomplete|Incomplete");
  EXPECT_EQ(m_List.RowAt(0)->attention, Attention::NotRated);
}

TEST_F(StepListTest, RatingThatAsksForACommentOpensTheCommentsPage) {
  m_Device.Enter(u"20.3", "RatingType = 'Condition'");
  m_Dialogs.QueueSheet([this] {
    EXPECT_EQ(Finding(u"20.1"), u"20.1|Shingles|Poor||") << "stored before the sheet opens";
    return false;
  });
  EXPECT_TRUE(m_List.ChangeRating(kShingles, u"Poor"));
  EXPECT_EQ(m_List.RowAt(kShingles)->attention, Attention::CommentAsked);
  m_Dialogs.QueueSheet([this] {
    m_Device.Enter(u"20.3", "Comments = 'Loose.'");
    return true;
  });
  EXPECT_TRUE(m_List.ChangeRating(kNotes, u"Poor"));
  EXPECT_EQ(Shown(kNotes), u"20.3. Notes|Poor|None|Complete|Incomplete");
  EXPECT_EQ(m_List.RowAt(kNotes)->attention, Attention::None);
  EXPECT_EQ(m_Dialogs.SheetsOpened().front().second, 1);
  EXPECT_EQ(LastSheet(), (std::pair{Text(u"20.3"), 0}));
}

TEST_F(StepListTest, DuplicateIsLetteredByTheStepsCalledAlike) {
  m_Device.Enter(
      u"20.2",
      "InspectResult = 'Good', Comments = 'Leaves.', Materials = 'Copper;', SummaryComment = 'Clean.', "
      "Reserve8 = '8', MaterialNote = '9', BitmapPath = '\\a.jpg', StepInfoExists = 1");
  const auto duplicate = [this](int row, const Text& suggested, const Text& name) {
    Prompts().QueueText(u"Enter the name for the new duplicated step:", name);
    const std::optional<std::int32_t> copy = m_List.DuplicateStep(row);
    EXPECT_EQ(Prompts().TextQuestions().back().title, u"Duplicate Step");
    EXPECT_EQ(Prompts().TextQuestions().back().initial, suggested);
    return m_List.RowOf(copy.value_or(-1));
  };
  EXPECT_EQ(duplicate(kGutters, u"Gutters #2", u"Downspouts"), 2);
  EXPECT_EQ(duplicate(kGutters, u"Gutters #2", u"Gutters #2"), 3) << "another name does not count";
  EXPECT_EQ(duplicate(kGutters, u"Gutters #3", u"Gutters #3"), 4);
  EXPECT_EQ(duplicate(3, u"Gutters #4", u"Gutters"), 4) << "of a copy: 20.2ac";
  EXPECT_THAT(
      m_Device.Outline(m_Key),
      ::testing::IsSupersetOf({u"  20.2|Gutters|Good|Copper;|Leaves.", u"  20.2a|Downspouts|||",
                               u"  20.2a|Gutters #2|||", u"  20.2b|Gutters #3|||", u"  20.2ac|Gutters|||"}));
  // The hyphen is dropped, the star kept.
  EXPECT_EQ(m_Device.Visits().Ask("SELECT MajorSystem, Reserve8, MaterialNote, BitmapPath, SummaryComment, "
                                  "StepInfoExists, RatingType FROM Step WHERE StepNumber = '20.2b'"),
            "RoofGutters #3*|8|9|\\a.jpg||1|Condition");
  Prompts().QueueText(u"Duplicate Step", std::nullopt);
  EXPECT_EQ(m_List.DuplicateStep(kGutters), std::nullopt);
  EXPECT_EQ(m_List.RowCount(), 7);
}

TEST_F(StepListTest, CopyMakesACompleteCategoryIncomplete) {
  Show(u"Cellar");
  EXPECT_TRUE(m_List.ChangeRating(0, u"No"));
  Prompts().QueueText(u"Duplicate Step", u"Pit");
  EXPECT_EQ(m_List.RowOf(m_List.DuplicateStep(0).value_or(-1)), 1);
  EXPECT_FALSE(IsComplete());
  m_Device.RunInVisits("DELETE FROM Step WHERE StepTitle = 'Pit'");
  EXPECT_EQ(Shown(1), u"gone");
  EXPECT_FALSE(m_List.Click(1, StepList::kComments));
  EXPECT_EQ(m_List.DuplicateStep(1), std::nullopt);
}

}  // namespace
}  // namespace inspector::editing
