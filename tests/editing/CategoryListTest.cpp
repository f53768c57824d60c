#include "editing/CategoryList.h"

#include <span>

#include "editing/StepEditing.h"
#include "support/ScriptedEditingDialogs.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

using Screen = CategoryList::Screen;

enum { kAttic, kRoof, kSafety, kCellar, kChecklist };
const Text kAll = u"Attic, Roof, Safety, Cellar, Checklist";

class CategoryListTest : public VisitTest {
protected:
  void SetUp() override { m_List.Show(); }
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
  void Mark(const std::vector<int>& rows) {
    m_List.Click(rows[0], 0, 0);
    for (const int row : rows) m_List.MarkToo(row);
  }
  bool Duplicate(int row, const std::optional<EditingDialogs::CategoryCopies>& wanted) {
    Mark({row});
    m_Dialogs.QueueCopies(wanted);
    return m_List.Duplicate();
  }
  // Lines of the visit: "number title (status)" and the steps of each category.
  Text Outline(std::size_t first, std::size_t count) {
    const std::vector<Text> lines = m_Device.Outline(m_Key);
    return Joined(
        std::span(lines).subspan(first, count), [](const Text& line) { return line; }, u"\n");
  }

  const std::int32_t m_Key = m_Device.Visit(u"House");
  ScriptedEditingDialogs m_Dialogs;
  CategoryList m_List{m_Device.Document(), m_Dialogs};
};

TEST_F(CategoryListTest, ShowsTheCategoriesOfTheCurrentInspection) {
  EXPECT_EQ(Rows(), kAll);
  Document().Inspection().m_DwellingAddress = u"12 Elm";
  EXPECT_EQ(m_List.Caption(), u"12 Elm");
  Document().Inspection().m_CityStateZip = u"Ayer";
  EXPECT_EQ(m_List.Caption(), u"12 Elm, Ayer");

  m_Device.Visit(u"Condo");
  m_List.Show();
  EXPECT_EQ(Rows(), u"Kitchen");
  Document().ChangeDocType(u"House");
  m_List.Show();
  EXPECT_EQ(Rows(), kAll) << "the inspection is the same, its categories are not";
}

TEST_F(CategoryListTest, MarkColumnMarksOneRowAndKeepsIt) {
  for (const int row : {kRoof, kCellar, kCellar}) EXPECT_EQ(m_List.Click(row, 0, 0), Screen::None);
  EXPECT_EQ(Rows(), u"Attic, Roof, Safety, Cellar*, Checklist") << "a second click leaves the mark";
  m_Device.Visit(u"Condo");
  m_List.Show();
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
  EXPECT_EQ(m_List.TopRow(), 3);
  m_Device.Visit(u"Condo");
  EXPECT_EQ(m_List.TopRow(), 0);
}

// The first press always clears, whatever the row says: the caption is the state.
TEST_F(CategoryListTest, FirstPressOfNotPresentClearsTheFlag) {
  Mark({kRoof});
  for (const auto& [status, caption] : {std::pair(u"Incomplete", u"Set Not Present"),
                                        {u"Not Present", u"Set Present"},
                                        {u"Incomplete", u"Set Not Present"}}) {
    EXPECT_TRUE(m_List.TogglePresence());
    EXPECT_EQ(m_List.RowAt(kRoof)->status, status);
    EXPECT_EQ(m_List.ToggleCaption(), caption);
  }
  m_List.TogglePresence();
  for (const int column : {1, 2}) EXPECT_EQ(m_List.Click(kRoof, column, 0), Screen::None);
  Mark({kAttic});
  Mark({kRoof});
  EXPECT_TRUE(m_List.RowAt(kRoof)->marked) << "its mark still works";
  // Present in the document too, so that nothing writes the old flag back.
  Document().SetCurrentCategory(kRoof);
  m_List.TogglePresence();
  EXPECT_EQ(Document().Categories().m_NotPresentFlag, 0);
}

TEST_F(CategoryListTest, SeveralMarkedRowsAlternate) {
  Mark({kAttic, kRoof, kSafety});
  EXPECT_TRUE(m_List.TogglePresence());
  const Text alternating = u"Attic*, Roof* Not Present, Safety*, Cellar, Checklist";
  EXPECT_EQ(Rows(), alternating);
  m_Device.RunInVisits(NoRoomFor("UPDATE ON Category WHEN new.CategoryTitle = 'Safety'"));
  EXPECT_FALSE(m_List.TogglePresence());
  EXPECT_EQ(Rows(), alternating) << "all of a press or nothing";
  EXPECT_EQ(m_List.ToggleCaption(), u"Set Not Present");
}

TEST_F(CategoryListTest, RenameAsksForEachMarkedRow) {
  Mark({kAttic, kRoof, kCellar});
  Prompts().QueueText(u"Enter the new name for Attic", Text());
  Prompts().QueueText(u"Enter the new name for Roof", std::nullopt);
  Prompts().QueueText(u"Enter the new name for Cellar", u"Basement");
  EXPECT_TRUE(m_List.Rename());
  EXPECT_EQ(Prompts().TextQuestions()[1].title, u"Rename Category");
  EXPECT_EQ(Prompts().TextQuestions()[1].initial, u"Roof");
  EXPECT_EQ(Rows(), u"*, Roof*, Safety, Basement*, Checklist");
}

TEST_F(CategoryListTest, RowThatAnotherProgramDeletedDoesNothing) {
  Mark({kRoof});
  m_Device.RunInVisits("DELETE FROM Category WHERE CategoryTitle = 'Roof'");
  EXPECT_FALSE(m_List.HasMarks());
  for (const int row : {int{kRoof}, 7}) EXPECT_EQ(m_List.Click(row, 1, 0), Screen::None);
  const Text alert = u"Alert: No Category records in current selection.";
  EXPECT_THAT(Prompts().Transcript(), ElementsAre(alert, alert));
  m_List.Show();
  EXPECT_EQ(Rows(), u"Attic, Safety, Cellar, Checklist");
}

TEST_F(CategoryListTest, DuplicateNamesAndNumbersTheCopies) {
  m_Device.RunInVisits(
      "INSERT INTO Category (CategoryID, CategoryNumber, InspectionID) VALUES (1, '21', 1), (2, '022', 1), "
      "(3, 'x', 1); UPDATE Category SET CategoryTitle = 'Roof #3' WHERE CategoryTitle = 'Roof'");
  m_List.Show();
  Document().SetCategoryTopIndex(3);
  EXPECT_TRUE(Duplicate(kRoof, {{u"Porch roof", 3, false}}));
  const EditingDialogs::CategoryCopies& suggested = m_Dialogs.CopiesSuggested().at(0);
  EXPECT_EQ(std::tie(suggested.name, suggested.copies, suggested.withData), std::tuple(u"Roof #2", 1, false));
  const Text steps = u"\n  20.1|Shingles|||\n  20.2|Gutters|||\n  20.3|Notes|||";
  EXPECT_EQ(Outline(1, 13), u"20 Roof #3 (Incomplete)\n23 Porch roof (Incomplete)" + steps +
                                u"\n24 Roof #3 (Incomplete)" + steps + u"\n25 Roof #4 (Incomplete)" + steps);
  EXPECT_EQ(std::pair(m_List.RowCount(), Document().Categories().RecordCount()), std::pair(8, 8));
  EXPECT_EQ(m_List.TopRow(), 0);
}

TEST_F(CategoryListTest, BaseNameEndsBeforeTheCharacterBeforeTheMark) {
  for (const auto& [title, suggested] : {std::pair(u"Kitchen", u"Kitchen #2"),
                                         {u"Roof #2", u"Roof #2"},
                                         {u"Roof#2", u"Roo #2"},
                                         {u"#1", u" #2"},
                                         {u"a#", u" #2"},
                                         {u"A #1 #2", u"A #2"}}) {
    Mark({kRoof});
    Prompts().QueueText(u"Rename Category", title);
    EXPECT_TRUE(m_List.Rename());
    EXPECT_TRUE(Duplicate(kRoof, std::nullopt));
    EXPECT_EQ(m_Dialogs.CopiesSuggested().back().name, suggested);
  }
  EXPECT_EQ(m_List.RowCount(), 5) << "Cancel makes no copy";
}

TEST_F(CategoryListTest, DuplicateWithDataTakesFindingsAlong) {
  m_Device.OpenCategory(u"Roof");
  m_Device.Enter(u"20.2",
                 "InspectResult = 'Poor', Comments = 'Sagging.', Materials = 'Copper;', StepNumber = "
                 "'20.2b', SummaryComment = 'Replace.', PictureBefore = 1");
  m_Device.Enter(u"20.1", "StepTemplateID = 4711");
  m_Device.RunInVisits(
      "UPDATE Category SET Remarks = 'Steep.', NotPresentFlag = 1 WHERE CategoryTitle = 'Roof'");
  EXPECT_TRUE(Duplicate(kRoof, {{u"Shed", 2, true}}));
  const Text alert = u"Alert: Incorrect number of  StepTemplate records for this step. ERROR INFO: i = 0";
  EXPECT_THAT(Prompts().Transcript(), ElementsAre(alert, alert));
  EXPECT_EQ(Outline(5, 6),
            u"21 Shed (Not Present)\n  21.2b|Gutters|Poor|Copper;|Sagging.\n  21.3|Notes|||\n"
            u"22 Roof #3 (Not Present)\n  22.2b|Gutters|Poor|Copper;|Sagging.\n  22.3|Notes|||");
  EXPECT_EQ(InVisits("SELECT Remarks, CommentText, SummaryComment, PictureBefore FROM Step JOIN Category "
                     "USING (CategoryID) WHERE StepNumber = '21.2b'"),
            "Steep.|Walked on.|Replace.|1");
  // Of a form what was entered.
  m_Device.OpenCategory(u"Checklist");
  m_Device.RunInVisits("UPDATE Field SET AssignedValue = 'Yes'");
  EXPECT_TRUE(Duplicate(m_List.RowCount() - 1, {{u"Again", 1, true}}));
  EXPECT_EQ(Outline(0, 3), u"100 Again (Incomplete)\n  Stove off=Yes\n  Doors locked=Yes");
}

TEST_F(CategoryListTest, FailedDuplicateLeavesNothing) {
  m_Device.OpenCategory(u"Roof");
  const Text before = m_Device.RowCounts();
  m_Device.RunInVisits(NoRoomFor("INSERT ON Step WHEN new.StepTitle = 'Notes'"));
  for (const bool withData : {false, true}) {
    EXPECT_FALSE(Duplicate(kRoof, {{u"Shed", 2, withData}}));
    EXPECT_EQ(m_Device.RowCounts(), before) << withData;
  }
}

TEST_F(CategoryListTest, TellsWhatIsLeft) {
  EXPECT_EQ(m_List.ShownRow(kRoof).remark, u"not opened yet");
  for (const Text title : {u"Roof", u"Cellar"}) m_Device.OpenCategory(title);
  StepEditing editing(m_Device.GetWorkspace());
  for (const auto& [step, rating] : {std::pair(u"20.1", u"Good"), {u"20.2", u"Poor"}, {u"9.1", u"Yes"}})
    editing.Rate(m_Device.StepKey(step), rating);  // a poor one asks for a comment
  m_Device.RunInVisits(
      "UPDATE Category SET NotPresentFlag = 1, CompleteFlag = 1 WHERE CategoryTitle = 'Safety'");
  m_List.Show();
  EXPECT_EQ(m_List.ShownRow(kRoof).remark, u"2 to do");
  EXPECT_EQ(m_List.RowAt(kCellar)->toDo, 0);
  EXPECT_EQ(Rows(), u"Attic, Roof, Safety Not Present, Cellar Complete, Checklist");
  EXPECT_EQ(m_List.LeftCaption(), u"3 of 5 categories to complete (1 not opened yet), 2 steps to do");
}

TEST_F(CategoryListTest, FilterLeavesRowsThatHoldTheWords) {
  Mark({kRoof});
  m_List.SetFilter(u" C ");
  EXPECT_EQ(Rows(), u"Attic, Cellar, Checklist");
  EXPECT_FALSE(m_List.HasMarks()) << "nobody presses a button for a row out of sight";
  m_List.SetFilter(u"LIST check");
  EXPECT_EQ(Rows(), u"Checklist");
  EXPECT_EQ(m_List.Click(0, 1, 0), Screen::Form);
  EXPECT_EQ(Document().Categories().m_CategoryTitle, u"Checklist");
  m_List.SetFilter(u"");
  EXPECT_EQ(Rows(), u"Attic, Roof*, Safety, Cellar, Checklist");
}

}  // namespace
}  // namespace inspector::editing
