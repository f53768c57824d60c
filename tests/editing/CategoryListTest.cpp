#include "editing/CategoryList.h"

#include "editing/StepEditing.h"
#include "support/ScriptedEditingDialogs.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

using device::Answer;
using ::testing::ElementsAre;
using Screen = CategoryList::Screen;

constexpr int kAttic = 0;
constexpr int kRoof = 1;
constexpr int kSafety = 2;
constexpr int kCellar = 3;
constexpr int kChecklist = 4;

class CategoryListTest : public tests::VisitTest {
protected:
  void SetUp() override {
    m_Key = m_Device.Visit(u"House");
    m_List.Show();
  }
  // The titles in their order, a star behind a mark, and the status of what is not incomplete.
  Text Rows() {
    Text rows;
    for (int n = 0; n < m_List.RowCount(); ++n) {
      const auto row = m_List.RowAt(n);
      rows += (n > 0 ? u", " : u"") + row->title + (row->marked ? u"*" : u"");
      if (row->status != u"Incomplete") rows += u" " + row->status;
    }
    return rows;
  }
  Text Status(int row) { return m_List.RowAt(row)->status; }
  void ExpectDuplicate(const Text& name, int copies, bool withData) {
    m_Dialogs.QueueCopies(EditingDialogs::CategoryCopies{name, copies, withData});
  }
  // "number title (status)" and the steps of each category.
  std::vector<Text> Outline() { return m_Device.Outline(m_Key); }

  std::int32_t m_Key = 0;
  tests::ScriptedEditingDialogs m_Dialogs;
  CategoryList m_List{m_Device.Document(), m_Dialogs};
};

TEST_F(CategoryListTest, ShowsTheCategoriesOfTheCurrentInspection) {
  EXPECT_EQ(Rows(), u"Attic, Roof, Safety, Cellar, Checklist");
  EXPECT_EQ(m_List.Caption(), u"");
  Document().Inspection().m_DwellingAddress = u"12 Elm";
  EXPECT_EQ(m_List.Caption(), u"12 Elm");
  Document().Inspection().m_CityStateZip = u"Ayer";
  EXPECT_EQ(m_List.Caption(), u"12 Elm, Ayer");

  m_Device.Visit(u"Condo");
  m_List.Show();
  EXPECT_EQ(Rows(), u"Kitchen");
  Document().ChangeDocType(u"House");
  m_List.Show();
  EXPECT_EQ(Rows(), u"Attic, Roof, Safety, Cellar, Checklist")
      << "the inspection is the same, its categories are not";
}

TEST_F(CategoryListTest, MarkColumnMarksOneRowAndKeepsIt) {
  EXPECT_FALSE(m_List.HasMarks());
  EXPECT_EQ(m_List.Click(kRoof, 0, 0), Screen::None);
  EXPECT_EQ(m_List.Click(kCellar, 0, 0), Screen::None);
  EXPECT_EQ(m_List.Click(kCellar, 0, 0), Screen::None) << "a second click leaves the mark";
  EXPECT_EQ(Rows(), u"Attic, Roof, Safety, Cellar*, Checklist");
  m_Device.Visit(u"Condo");
  m_List.Show();
  EXPECT_EQ(Rows(), u"Kitchen");
  EXPECT_FALSE(m_List.HasMarks()) << "what is marked belongs to the other house";
}

TEST_F(CategoryListTest, OpensByTypeAndComesBackToTheTopRow) {
  EXPECT_EQ(m_List.Click(kSafety, 2, 2), Screen::Steps);
  EXPECT_EQ(Document().Categories().m_CategoryTitle, u"Safety");
  EXPECT_EQ(m_List.TopRow(), 2);
  EXPECT_EQ(m_List.Click(kChecklist, 1, 3), Screen::Form);
  EXPECT_EQ(m_List.Click(kRoof, -1, 0), Screen::None) << "beside the columns";
  m_List.RowAt(kRoof);
  EXPECT_EQ(Document().Categories().m_CategoryTitle, u"Checklist") << "showing a row makes it not current";
  EXPECT_EQ(m_List.Click(7, 1, 0), Screen::None);
  EXPECT_THAT(Prompts().Transcript(), ElementsAre(u"Alert: No Category records in current selection."));
  EXPECT_EQ(m_List.TopRow(), 3);
  m_Device.Visit(u"Condo");
  EXPECT_EQ(m_List.TopRow(), 0);
}

// The first press always clears, whatever the row says: the caption is the state.
TEST_F(CategoryListTest, FirstPressOfNotPresentClearsTheFlag) {
  m_List.Click(kRoof, 0, 0);
  EXPECT_EQ(m_List.ToggleCaption(), u"Not Present");
  const std::vector<std::pair<Text, Text>> presses{{u"Incomplete", u"Set Not Present"},
                                                   {u"Not Present", u"Set Present"},
                                                   {u"Incomplete", u"Set Not Present"}};
  for (const auto& [status, caption] : presses) {
    EXPECT_TRUE(m_List.TogglePresence());
    EXPECT_EQ(Status(kRoof), status);
    EXPECT_EQ(m_List.ToggleCaption(), caption);
  }
  m_List.TogglePresence();
  for (const int column : {1, 2}) EXPECT_EQ(m_List.Click(kRoof, column, 0), Screen::None);
  m_List.Click(kAttic, 0, 0);
  m_List.Click(kRoof, 0, 0);
  EXPECT_TRUE(m_List.RowAt(kRoof)->marked) << "its mark still works";
  // Present in the document too, so that nothing writes the old flag back.
  Document().SetCurrentCategory(kRoof);
  m_List.TogglePresence();
  EXPECT_EQ(Document().Categories().m_NotPresentFlag, 0);
}

TEST_F(CategoryListTest, SeveralMarkedRowsAlternate) {
  m_List.Click(kAttic, 0, 0);
  m_List.MarkToo(kRoof);
  m_List.MarkToo(kSafety);
  m_List.MarkToo(kSafety);
  EXPECT_TRUE(m_List.TogglePresence());
  EXPECT_EQ(Rows(), u"Attic*, Roof* Not Present, Safety*, Cellar, Checklist");
  EXPECT_EQ(m_List.ToggleCaption(), u"Set Not Present");

  m_Device.RunInVisits(tests::NoRoomFor("UPDATE ON Category WHEN new.CategoryTitle = 'Safety'"));
  EXPECT_FALSE(m_List.TogglePresence());
  EXPECT_EQ(Status(kAttic), u"Incomplete") << "all of a press or nothing";
  EXPECT_EQ(m_List.ToggleCaption(), u"Set Not Present");
}

TEST_F(CategoryListTest, RenameAsksForEachMarkedRow) {
  m_List.Click(kAttic, 0, 0);
  m_List.MarkToo(kRoof);
  m_List.MarkToo(kCellar);
  Prompts().QueueText(u"Enter the new name for Attic", Text());
  Prompts().QueueText(u"Enter the new name for Roof", std::nullopt);
  Prompts().QueueText(u"Enter the new name for Cellar", u"Basement");
  EXPECT_TRUE(m_List.Rename());
  EXPECT_EQ(Prompts().TextQuestions()[1].title, u"Rename Category");
  EXPECT_EQ(Prompts().TextQuestions()[1].initial, u"Roof");
  EXPECT_EQ(Rows(), u"*, Roof*, Safety, Basement*, Checklist");
}

TEST_F(CategoryListTest, RowThatAnotherProgramDeletedDoesNothing) {
  m_List.Click(kRoof, 0, 0);
  m_Device.RunInVisits("DELETE FROM Category WHERE CategoryTitle = 'Roof'");
  EXPECT_FALSE(m_List.HasMarks());
  EXPECT_EQ(m_List.Click(kRoof, 1, 0), Screen::None);
  EXPECT_THAT(Prompts().Transcript(), ElementsAre(u"Alert: No Category records in current selection."));
  m_List.Show();
  EXPECT_EQ(m_List.RowCount(), 4);
}

TEST_F(CategoryListTest, DuplicateNamesAndNumbersTheCopies) {
  m_Device.RunInVisits(
      "INSERT INTO Category (CategoryID, CategoryNumber, InspectionID) VALUES (1, '21', 1), (2, '022', "
      "1), (3, 'x', 1)");
  m_Device.RunInVisits("UPDATE Category SET CategoryTitle = 'Roof #3' WHERE CategoryTitle = 'Roof'");
  m_List.Show();
  m_List.Click(kRoof, 0, 0);
  Document().SetCategoryTopIndex(3);
  ExpectDuplicate(u"Porch roof", 3, false);
  EXPECT_TRUE(m_List.Duplicate());
  ASSERT_EQ(m_Dialogs.CopiesSuggested().size(), 1U);
  EXPECT_EQ(m_Dialogs.CopiesSuggested()[0].name, u"Roof #2");
  EXPECT_EQ(m_Dialogs.CopiesSuggested()[0].copies, 1);
  EXPECT_FALSE(m_Dialogs.CopiesSuggested()[0].withData);
  const std::vector<Text> lines = Outline();
  EXPECT_THAT(std::vector<Text>(lines.begin(), lines.begin() + 14),
              ElementsAre(u"15 Attic (Incomplete)", u"20 Roof #3 (Incomplete)",  //
                          u"23 Porch roof (Incomplete)", u"  20.1|Shingles|||", u"  20.2|Gutters|||",
                          u"  20.3|Notes|||",  //
                          u"24 Roof #3 (Incomplete)", u"  20.1|Shingles|||", u"  20.2|Gutters|||",
                          u"  20.3|Notes|||",  //
                          u"25 Roof #4 (Incomplete)", u"  20.1|Shingles|||", u"  20.2|Gutters|||",
                          u"  20.3|Notes|||"));
  EXPECT_EQ(m_List.RowCount(), 8);
  EXPECT_EQ(Document().Categories().RecordCount(), 8);
  EXPECT_EQ(m_List.TopRow(), 0);
}

TEST_F(CategoryListTest, BaseNameEndsBeforeTheCharacterBeforeTheMark) {
  const std::vector<std::pair<Text, Text>> cases{{u"Kitchen", u"Kitchen #2"},
                                                 {u"Roof #2", u"Roof #2"},
                                                 {u"Roof#2", u"Roo #2"},
                                                 {u"#1", u" #2"},
                                                 {u"a#", u" #2"},
                                                 {u"A #1 #2", u"A #2"}};
  for (const auto& [title, suggested] : cases) {
    m_List.Click(kRoof, 0, 0);
    Prompts().QueueText(u"Rename Category", title);
    EXPECT_TRUE(m_List.Rename());
    m_Dialogs.QueueCopies(std::nullopt);
    EXPECT_TRUE(m_List.Duplicate());
    EXPECT_EQ(m_Dialogs.CopiesSuggested().back().name, suggested);
  }
  EXPECT_EQ(m_List.RowCount(), 5) << "Cancel makes no copy";
}

TEST_F(CategoryListTest, DuplicateWithDataTakesFindingsAlong) {
  m_Device.OpenCategory(u"Roof");
  m_Device.Enter(
      u"20.2",
      "InspectResult = 'Poor', Comments = 'Sagging.', Materials = 'Copper;', StepNumber = '20.2b', "
      "SummaryComment = 'Replace.', PictureBefore = 1");
  m_Device.Enter(u"20.1", "StepTemplateID = 4711");
  m_Device.RunInVisits(
      "UPDATE Category SET Remarks = 'Steep.', NotPresentFlag = 1 WHERE CategoryTitle = 'Roof'");
  m_List.Click(kRoof, 0, 0);
  ExpectDuplicate(u"Shed", 2, true);
  EXPECT_TRUE(m_List.Duplicate());
  const Text alert = u"Alert: Incorrect number of  StepTemplate records for this step. ERROR INFO: i = 0";
  EXPECT_THAT(Prompts().Transcript(), ElementsAre(alert, alert));
  const std::vector<Text> lines = Outline();
  EXPECT_THAT(
      std::vector<Text>(lines.begin() + 5, lines.begin() + 11),
      ElementsAre(u"21 Shed (Not Present)", u"  21.2b|Gutters|Poor|Copper;|Sagging.", u"  21.3|Notes|||",
                  u"22 Roof #3 (Not Present)", u"  22.2b|Gutters|Poor|Copper;|Sagging.", u"  22.3|Notes|||"));
  ASSERT_TRUE(Document().SetCurrentCategory(kRoof + 1));
  EXPECT_EQ(Document().Categories().m_Remarks, u"Steep.");
  EXPECT_EQ(Document().Categories().m_CommentText, u"Walked on.");
  EXPECT_EQ(
      m_Device.Visits().Ask("SELECT SummaryComment, PictureBefore FROM Step WHERE StepNumber = '21.2b'"),
      "Replace.|1");
}

TEST_F(CategoryListTest, DuplicateOfAFormTakesWhatWasEntered) {
  m_Device.OpenCategory(u"Checklist");
  m_Device.RunInVisits("UPDATE Field SET AssignedValue = 'Yes'");
  m_List.Click(kChecklist, 0, 0);
  ExpectDuplicate(u"Again", 1, true);
  EXPECT_TRUE(m_List.Duplicate());
  EXPECT_THAT(Outline(), ::testing::IsSupersetOf(
                             {u"100 Again (Incomplete)", u"  Doors locked=Yes", u"  Stove off=Yes"}));
}

TEST_F(CategoryListTest, FailedDuplicateLeavesNothing) {
  m_Device.OpenCategory(u"Roof");
  const Text before = m_Device.RowCounts();
  m_Device.RunInVisits(tests::NoRoomFor("INSERT ON Step WHEN new.StepTitle = 'Notes'"));
  for (const bool withData : {false, true}) {
    m_List.Click(kRoof, 0, 0);
    ExpectDuplicate(u"Shed", 2, withData);
    EXPECT_FALSE(m_List.Duplicate());
    EXPECT_EQ(m_Device.RowCounts(), before);
  }
}

TEST_F(CategoryListTest, TellsWhatIsLeft) {
  EXPECT_FALSE(m_List.RowAt(kRoof)->opened);
  EXPECT_EQ(m_List.ShownRow(kRoof).remark, u"not opened yet");
  m_Device.OpenCategory(u"Roof");
  m_Device.OpenCategory(u"Cellar");
  StepEditing editing(m_Device.GetWorkspace());
  editing.Rate(m_Device.StepKey(u"20.1"), u"Good");
  editing.Rate(m_Device.StepKey(u"20.2"), u"Poor");  // which asks for a comment
  editing.Rate(m_Device.StepKey(u"9.1"), u"Yes");
  m_List.Show();
  EXPECT_EQ(m_List.ShownRow(kRoof).remark, u"2 to do");
  EXPECT_EQ(m_List.RowAt(kRoof)->status, u"Incomplete");
  EXPECT_EQ(m_List.RowAt(kCellar)->toDo, 0);
  EXPECT_EQ(m_List.LeftCaption(), u"4 of 5 categories to complete (2 not opened yet), 2 steps to do");
}

TEST_F(CategoryListTest, FilterLeavesRowsThatHoldTheWords) {
  m_List.Click(kRoof, 0, 0);
  m_List.SetFilter(u" C ");
  EXPECT_EQ(Rows(), u"Attic, Cellar, Checklist");
  EXPECT_FALSE(m_List.HasMarks()) << "nobody presses a button for a row out of sight";
  m_List.SetFilter(u"LIST check");
  EXPECT_EQ(Rows(), u"Checklist");
  EXPECT_EQ(m_List.Click(0, 1, 0), Screen::Form);
  EXPECT_EQ(Document().Categories().m_CategoryTitle, u"Checklist");
  m_List.SetFilter(u"");
  EXPECT_EQ(m_List.RowCount(), 5);
  EXPECT_TRUE(m_List.HasMarks());
}

}  // namespace
}  // namespace inspector::editing
