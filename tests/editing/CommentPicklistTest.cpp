#include "editing/CommentPicklist.h"

#include "data/CommentsTable.h"
#include "data/StepCommentTable.h"
#include "device/Format.h"
#include "editing/CommentPicker.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

using Result = CommentPicklist::Result;
using device::Answer;
using ::testing::ElementsAre;

constexpr std::int32_t kShingles = 1;  // the step template
const Text kAddQuestion = u"Are you sure you want to add this comment to your picklist?";
const Text kDeleteQuestion = u"Please confirm the deleting of these comments.";

class CommentPicklistTest : public tests::VisitTest {
protected:
  void SetUp() override {
    m_Worn = m_Device.Library().AddCommentToStep(kShingles, u"Worn.", u"Wear");
    m_Device.Library().AddCommentToStep(kShingles, u"Brittle.", u"Wear");
    m_Device.Library().AddCommentToStep(kShingles, u"Steep.");
    m_Device.Library().AddCommentToStep(kShingles, u"Moss.", u"Growth");
    m_Device.Library().AddCommentToStep(2, u"Other step.");
  }
  std::vector<Text> Listed() {
    std::vector<Text> texts;
    for (const LibraryComment& comment : m_Picklist.Comments()) texts.push_back(comment.text);
    return texts;
  }
  Result Add(Answer answer, TextView comment, const TextSelection& selection = {}) {
    Prompts().Queue(kAddQuestion, answer);
    return m_Picklist.Add(comment, selection, u"Poor");
  }
  Result Delete(Answer answer, const std::vector<Text>& texts) {
    Prompts().Queue(kDeleteQuestion, answer);
    return m_Picklist.Delete(texts);
  }
  std::vector<Text> LinksOf(std::int32_t commentID) {
    std::vector<Text> links;
    data::StepCommentTable link(Data());
    link.OpenSQL(device::Format(u"SELECT * FROM StepComment WHERE CommentID = %d", commentID));
    for (int n = 0; n < link.RecordCount() && link.GetRecord(n); ++n)
      links.push_back(device::Format(u"%d %s", link.m_StepID, link.m_LinkKey));
    return links;
  }

  std::int32_t m_Worn = 0;
  CommentPicklist m_Picklist{m_Device.GetWorkspace(), kShingles};
};

TEST_F(CommentPicklistTest, AddsTheSelectionOrTheWholeWithItsRating) {
  EXPECT_THAT(Listed(), ElementsAre(u"Steep.", u"Moss.", u"Brittle.", u"Worn."));
  EXPECT_EQ(Add(Answer::No, u"New."), Result::Refused);
  EXPECT_EQ(Add(Answer::Yes, u"x"), Result::Nothing);
  EXPECT_EQ(Add(Answer::Yes, u"One x", {4, 5}), Result::Nothing) << "one character is no comment";
  EXPECT_EQ(Add(Answer::Yes, u"Moss."), Result::Nothing) << "offered already";
  EXPECT_EQ(Add(Answer::Yes, u"Before. In \"it\". After.", {16, 8}), Result::Done);
  EXPECT_EQ(Add(Answer::Yes, u"Whole.", {3, 3}), Result::Done) << "a caret selects nothing";
  EXPECT_EQ(Add(Answer::Yes, u"Short.", {0, 99}), Result::Done);
  EXPECT_EQ(Prompts().Messages()[0].title, u"Caution");

  EXPECT_THAT(Listed(),
              ElementsAre(u"Steep.", u"Moss.", u"Brittle.", u"Worn.", u"In \"it\".", u"Whole.", u"Short."))
      << "at the end";
  data::CommentsTable comment(Data());
  comment.OpenSQL(u"SELECT * FROM Comments WHERE ID = 25000");
  ASSERT_TRUE(comment.GetRecord(0));
  EXPECT_EQ(comment.m_Comments, u"In \"it\".");
  EXPECT_EQ(comment.m_Rating, u"Poor");
  EXPECT_THAT(LinksOf(25000), ElementsAre(u"1 1-25000"));
  EXPECT_THAT(LinksOf(25001), ElementsAre(u"1 1-25001"));
}

TEST_F(CommentPicklistTest, AddingIsWholeOrNotAtAll) {
  m_Device.RunInLibrary(tests::NoRoomFor("INSERT ON StepComment"));
  EXPECT_EQ(Add(Answer::Yes, u"New."), Result::Failed);
  EXPECT_EQ(Listed().size(), 4u);
  m_Device.RunInLibrary(tests::kRoomAgain);
  // A key that the library has given to another comment, whose text the link would bring along.
  m_Device.RunInLibrary("DELETE FROM UniqueID; INSERT INTO UniqueID VALUES ('Comments', " +
                        std::to_string(m_Worn - 1) + ")");
  EXPECT_EQ(Add(Answer::Yes, u"New."), Result::Failed);
  EXPECT_TRUE(device::Contains(Prompts().Messages().back().text, u"check --repair"));
  EXPECT_EQ(LinksOf(m_Worn).size(), 1u);
  data::CommentsTable comments(Data());
  comments.OpenSQL(u"SELECT * FROM Comments WHERE Comments = \"New.\"");
  EXPECT_EQ(comments.RecordCount(), 0);
}

TEST_F(CommentPicklistTest, DeletingDisablesTheLink) {
  m_Device.Library().AddCommentToStep(2, u"Worn.");
  EXPECT_EQ(m_Picklist.Delete({}), Result::Nothing) << "and asks nothing";
  EXPECT_EQ(Delete(Answer::No, {u"Worn."}), Result::Refused);
  EXPECT_EQ(Delete(Answer::Yes, {u"Worn.", u"worn.", u"Steep."}), Result::Done);
  EXPECT_THAT(Listed(), ElementsAre(u"Moss.", u"Brittle."));
  EXPECT_THAT(LinksOf(m_Worn), ElementsAre(device::Format(u"-1 -1-%d", m_Worn)));
  data::CommentsTable comments(Data());
  comments.Open();
  EXPECT_EQ(comments.RecordCount(), 12) << "the library keeps its comments";
  EXPECT_EQ(CommentPicklist(m_Device.GetWorkspace(), 2).Comments().size(), 2u);
}

TEST_F(CommentPicklistTest, ALinkToTwoCommentsIsToldAndStays) {
  m_Device.RunInLibrary("INSERT INTO Comments SELECT * FROM Comments WHERE Comments = 'Worn.'");
  Prompts().Forget();
  EXPECT_EQ(Delete(Answer::Yes, {u"Worn.", u"Moss."}), Result::Done);
  EXPECT_THAT(Prompts().Transcript(),
              ElementsAre(u"Caution: " + kDeleteQuestion,
                          u"Alert: [ERROR CODE => 999] CCommentsPage::OnCommentPicker.",
                          u"Alert: [ERROR CODE => 999] CCommentsPage::OnCommentPicker."));
  EXPECT_THAT(LinksOf(m_Worn), ElementsAre(device::Format(u"1 1-%d", m_Worn)));
  EXPECT_THAT(Listed(), ElementsAre(u"Steep.", u"Brittle.", u"Worn.", u"Worn."));
}

TEST(InsertCommentTest, KeepsTheSeparatorOnEitherSideAndTheSelectedText) {
  struct Case {
    Text text;
    TextSelection selection;
    Text after;
    std::size_t caret;
  };
  for (const auto& [text, selection, after, caret] : std::vector<Case>{
           {u"", {}, u"New.", 4},
           {u"Old.", {4, 4}, u"Old.  New.", 10},
           {u"Old.", {}, u"New.  Old.", 6},
           {u"Old.", {9, 9}, u"Old.  New.", 10},
           {u"One.  Two.", {4, 4}, u"One.  New.  Two.", 10},
           {u"One.  Two.", {6, 6}, u"One.  New.  Two.", 12},
           {u"One. Two.", {4, 0}, u"One.  New.   Two.", 12},  // marked from its end to its beginning
       }) {
    Text changed = text;
    const TextChange change = InsertComment(text, selection, u"New.", u"  ");
    change.ApplyTo(changed);
    EXPECT_EQ(changed, after);
    EXPECT_EQ(change.CaretAfter(), caret) << device::ToUtf8(after);
  }
}

// The rows of the picker, chosen ones with a star.
std::vector<Text> RowsOf(const CommentPicker& picker) {
  std::vector<Text> rows;
  for (const CommentPicker::Row& row : picker.Rows())
    rows.push_back((picker.IsChosen(row) ? u"*" : u"") + picker.TextOf(row));
  return rows;
}

TEST(CommentPickerTest, GroupsFoldAndTypingFinds) {
  CommentPicker picker({{1, u"Steep.", u"", u""},
                        {2, u"Moss on the eaves.", u"", u"Growth"},
                        {3, u"Brittle.", u"", u"Wear"},
                        {4, u"Déjà worn at the eaves.", u"", u"Wear"}},
                       true);
  EXPECT_THAT(RowsOf(picker), ElementsAre(u"Steep.", u"<<Growth>>", u"Moss on the eaves.", u"<<Wear>>",
                                          u"Brittle.", u"Déjà worn at the eaves."));
  picker.ToggleGroup(2);
  EXPECT_THAT(RowsOf(picker), ElementsAre(u"Steep.", u"<<Growth>>", u"Moss on the eaves.", u"<<Wear>>"));
  picker.SetFilter(u"eaves DEJA");
  EXPECT_THAT(RowsOf(picker), ElementsAre(u"<<Wear>>", u"Déjà worn at the eaves."));
  picker.SetFilter(u"wear");
  EXPECT_THAT(RowsOf(picker), ElementsAre(u"<<Wear>>", u"Brittle.", u"Déjà worn at the eaves."))
      << "a group is found by its name, and no longer narrowed by what was typed before";
  picker.SetFilter(u"nothing");
  EXPECT_THAT(RowsOf(picker), ElementsAre());
  picker.SetFilter(u"");
  EXPECT_EQ(picker.Rows().size(), 4u);
}

TEST(CommentPickerTest, InsertsInTheOrderOfChoosing) {
  CommentPicker picker({{1, u"A", u"", u""}, {2, u"B", u"", u""}, {3, u"C", u"", u""}}, true);
  picker.ToggleChoice(2);
  picker.ToggleChoice(0);
  picker.ToggleChoice(1);
  picker.ToggleChoice(0);
  picker.ToggleChoice(0);
  EXPECT_THAT(RowsOf(picker), ElementsAre(u"*A", u"*B", u"*C"));
  picker.Delete(1);
  EXPECT_THAT(picker.Chosen(), ElementsAre(u"C", u"A"));
  EXPECT_THAT(picker.Deleted(), ElementsAre(u"B"));
  picker.SetFilter(u"b");
  EXPECT_THAT(RowsOf(picker), ElementsAre());

  CommentPicker readOnly({{1, u"A", u"", u""}}, false);
  readOnly.Delete(0);
  EXPECT_THAT(RowsOf(readOnly), ElementsAre(u"A"));
}

}  // namespace
}  // namespace inspector::editing
