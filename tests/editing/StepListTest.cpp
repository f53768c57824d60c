#include "editing/StepList.h"

#include "support/ScriptedEditingDialogs.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

using Attention = StepList::Attention;

enum { kShingles, kGutters, kNotes };

class StepListTest : public VisitTest {
protected:
  void SetUp() override {
    m_Device.GetWorkspace().Options().m_ShowStepNumbers = -1;
    Show(u"Roof");
  }
  void Show(const Text& category) {
    for (int n = 0; n == 0 || m_List.CategoryTitle() != category; ++n)
      ASSERT_TRUE(Document().SetCurrentCategory(n));
    ASSERT_TRUE(m_List.Show());
  }
  // "label|rating|materials|comments|picture".
  Text Shown(int row) {
    const auto shown = m_List.RowAt(row);
    if (!shown) return u"gone";
    return Joined({shown->label, shown->rating, shown->materials, shown->comments, shown->picture});
  }
  // The number of each step whose sheet was opened, and the place of its page.
  Text Sheets() {
    return Joined(m_Dialogs.SheetsOpened(), [this](const auto& sheet) {
      return m_Device.Finding(sheet.first).substr(0, 4) + u" " + Decimal(sheet.second);
    });
  }
  std::optional<std::int32_t> Duplicate(int row, const std::optional<Text>& name) {
    Prompts().QueueText(u"Enter the name for the new duplicated step:", name);
    return m_List.DuplicateStep(row);
  }
  bool IsComplete() { return Document().Categories().m_CompleteFlag != 0; }

  const std::int32_t m_Key = m_Device.Visit(u"House");
  ScriptedEditingDialogs m_Dialogs;
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
  Show(u"Attic");
  EXPECT_TRUE(IsComplete()) << "without steps it is complete once seen";
}

TEST_F(StepListTest, AMissingPictureIsMarkedBesideTheWordOfItsColumn) {
  const auto marked = [this] {
    std::vector<int> rows;
    for (int row = 0; row < m_List.RowCount(); ++row)
      if (m_List.RowAt(row)->lacksPicture) rows.push_back(row);
    return rows;
  };
  const std::string photograph("\xFF\xD8\xFF\xC0\0\x8\x8\0\x1\0\x1\0", 12);
  for (const char* there : {"there.jpg", "card/1.jpg"}) m_Device.Put(there, photograph);
  m_Device.GetWorkspace().Options().m_DefaultPictCardPath = u"\\card\\";
  m_Device.RunInVisits("UPDATE Step SET InspectResult = 'Good'");
  m_Device.Enter(u"20.1", "BitmapPath = '\\gone.jpg'");
  m_Device.Enter(
      u"20.2", "BitmapPath = '\\there.jpg', Comments = '***Path=\\there.jpg*** ***Picture-1*** ***none***'");
  m_Device.Enter(u"20.3", "Comments = 'Dry. ***Picture-9***'");
  ASSERT_TRUE(m_List.Show());
  EXPECT_THAT(marked(), ElementsAre(kShingles, kNotes));
  const device::ListRow row = m_List.ShownRow(kShingles);
  EXPECT_EQ(
      Joined(row.warnings, [](const auto& warning) { return Decimal(warning.cell) + u" " + warning.words; }),
      u"4 a picture is missing");
  EXPECT_EQ(row.tone, device::RowTone::Attention);
  m_Device.Put("gone.jpg", "\xFF\xD8\xFF");
  m_List.Show();
  EXPECT_THAT(marked(), ElementsAre(kShingles, kNotes)) << "nothing of it is left but its beginning";
  m_Device.Put("gone.jpg", photograph);
  EXPECT_THAT(marked(), ElementsAre(kShingles, kNotes)) << "looked for once while the list stands";
  m_List.Show();
  EXPECT_THAT(marked(), ElementsAre(kNotes));
}

TEST_F(StepListTest, ColumnOpensItsPage) {
  for (int n = 0; n < 7; ++n) m_Dialogs.QueueSheet([] { return true; });
  int opened = 0;
  for (const int row : {int{kShingles}, int{kNotes}, 3})
    for (const int column : {-1, int{StepList::kRating}, int{StepList::kMaterials}, int{StepList::kComments},
                             int{StepList::kPicture}, int{StepList::kInfo}})
      opened += m_List.Click(row, column);
  EXPECT_EQ(opened, 7);
  EXPECT_EQ(Sheets(), u"20.1 0|20.1 1|20.1 2|20.1 3|20.3 0|20.3 1|20.3 2") << "without a page of materials";
}

TEST_F(StepListTest, RatingIsStoredAndCompletes) {
  EXPECT_THAT(m_List.RatingEntries(kShingles), ElementsAre(u"Good", u"Poor", u"Good \"as new\"", u"<clear>"));
  EXPECT_THAT(m_List.RatingEntries(kNotes), ElementsAre(u"<no ratings>"));
  EXPECT_TRUE(m_List.ChangeRating(kNotes, u"<no ratings>"));
  EXPECT_EQ(Finding(u"20.3"), u"20.3|Notes|<no ratings>||");
  EXPECT_FALSE(m_List.ChangeRating(kShingles, u"Yes")) << "no choice of its type";
  {
    // What cannot be read is not the same as a type without choices.
    const MissingTable missing(m_Device, "RatingChoices");
    ASSERT_TRUE(m_List.Show());
    EXPECT_THAT(m_List.RatingEntries(kShingles), ElementsAre());
    EXPECT_FALSE(m_List.ChangeRating(kShingles, u"<no ratings>"));
  }
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
    m_List.RowAt(0);  // the list paints behind the sheet
    m_Device.Enter(u"20.3", "Comments = 'Loose.'");
    return true;
  });
  m_List.SetFilter(u"note");
  EXPECT_TRUE(m_List.ChangeRating(0, u"Poor"));
  EXPECT_EQ(Shown(0), u"20.3. Notes|Poor|None|Complete|Incomplete");
  EXPECT_EQ(m_List.RowAt(0)->attention, Attention::None);
  EXPECT_EQ(Sheets(), u"20.1 1|20.3 0");
}

TEST_F(StepListTest, DuplicateIsLetteredByTheStepsCalledAlike) {
  m_Device.Enter(u"20.2",
                 "InspectResult = 'Good', Comments = 'Leaves.', Materials = 'Copper;', SummaryComment = "
                 "'Clean.', Reserve8 = '8', MaterialNote = '9', BitmapPath = '\\a.jpg', StepInfoExists = 1");
  for (const auto& [row, suggested, name, copyRow] :
       {std::tuple(1, u"Gutters #2", u"Downspouts", 2),
        {1, u"Gutters #2", u"Gutters #2", 3},  // another name does not count
        {1, u"Gutters #3", u"Gutters #3", 4},
        {3, u"Gutters #4", u"Gutters", 4}}) {  // of a copy: 20.2ac
    EXPECT_EQ(m_List.RowOf(Duplicate(row, name).value_or(-1)), copyRow);
    EXPECT_EQ(Prompts().TextQuestions().back().title, u"Duplicate Step");
    EXPECT_EQ(Prompts().TextQuestions().back().initial, suggested);
  }
  EXPECT_THAT(m_Device.Outline(m_Key),
              IsSupersetOf({u"  20.2|Gutters|Good|Copper;|Leaves.", u"  20.2a|Downspouts|||",
                            u"  20.2a|Gutters #2|||", u"  20.2b|Gutters #3|||", u"  20.2ac|Gutters|||"}));
  // The hyphen is dropped, the star kept.
  EXPECT_EQ(InVisits("SELECT MajorSystem, Reserve8, MaterialNote, BitmapPath, SummaryComment, "
                     "StepInfoExists, RatingType FROM Step WHERE StepNumber = '20.2b'"),
            "RoofGutters #3*|8|9|\\a.jpg||1|Condition");
  EXPECT_EQ(Duplicate(kGutters, std::nullopt), std::nullopt);
  EXPECT_EQ(m_List.RowCount(), 7);
}

TEST_F(StepListTest, CopyMakesACompleteCategoryIncomplete) {
  Show(u"Cellar");
  EXPECT_TRUE(m_List.ChangeRating(0, u"No"));
  EXPECT_EQ(m_List.RowOf(Duplicate(0, u"Pit").value_or(-1)), 1);
  EXPECT_FALSE(IsComplete());
  m_Device.RunInVisits("DELETE FROM Step WHERE StepTitle = 'Pit'");
  EXPECT_EQ(Shown(1), u"gone");
  EXPECT_FALSE(m_List.Click(1, StepList::kComments));
  EXPECT_EQ(m_List.DuplicateStep(1), std::nullopt);
}

}  // namespace
}  // namespace inspector::editing
