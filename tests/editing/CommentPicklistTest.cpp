#include "editing/CommentPicklist.h"

#include "device/Format.h"
#include "editing/CommentPicker.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

using Result = CommentPicklist::Result;

constexpr std::int32_t kShingles = 1;  // the step template
const Text kDeleteQuestion = u"Please confirm the deleting of these comments.";

class CommentPicklistTest : public VisitTest {
protected:
  void SetUp() override {
    m_Worn = m_Device.Library().AddCommentToStep(kShingles, u"Worn.", u"Wear");
    m_Device.Library().AddCommentToStep(kShingles, u"Brittle.", u"Wear");
    m_Device.Library().AddCommentToStep(kShingles, u"Steep.");
    m_Device.Library().AddCommentToStep(kShingles, u"Moss.", u"Growth");
    m_Device.Library().AddCommentToStep(2, u"Other step.");
  }
  Text Listed() { return Joined(m_Picklist.Comments(), std::mem_fn(&LibraryComment::text)); }
  Result Add(Answer answer, TextView comment, const TextSelection& selection = {}) {
    Prompts().Queue(u"Are you sure you want to add this comment to your picklist?", answer);
    return m_Picklist.Add(comment, selection, u"Poor");
  }
  Result Delete(Answer answer, const std::vector<Text>& texts) {
    Prompts().Queue(kDeleteQuestion, answer);
    return m_Picklist.Delete(texts);
  }
  std::string AskLibrary(const std::string& sql) {
    return Shell(Data().Template().File()).Ask("SELECT " + sql);
  }
  std::string LinksOf(std::int32_t commentID) {
    return AskLibrary("StepID, LinkKey FROM StepComment WHERE CommentID = " + std::to_string(commentID));
  }

  std::int32_t m_Worn = 0;
  CommentPicklist m_Picklist{m_Device.GetWorkspace(), kShingles};
};

TEST_F(CommentPicklistTest, AddsTheSelectionOrTheWholeWithItsRating) {
  EXPECT_EQ(Listed(), u"Steep.|Moss.|Brittle.|Worn.");
  EXPECT_EQ(Add(Answer::No, u"New."), Result::Refused);
  EXPECT_EQ(Add(Answer::Yes, u"x"), Result::Nothing);
  EXPECT_EQ(Add(Answer::Yes, u"One x", {4, 5}), Result::Nothing) << "one character is no comment";
  EXPECT_EQ(Add(Answer::Yes, u"Moss."), Result::Nothing) << "offered already";
  EXPECT_EQ(Add(Answer::Yes, u"Before. In \"it\". After.", {16, 8}), Result::Done);
  EXPECT_EQ(Add(Answer::Yes, u"Whole.", {3, 3}), Result::Done) << "a caret selects nothing";
  EXPECT_EQ(Add(Answer::Yes, u"Short.", {0, 99}), Result::Done);
  EXPECT_EQ(Prompts().Messages()[0].title, u"Caution");
  EXPECT_EQ(Listed(), u"Steep.|Moss.|Brittle.|Worn.|In \"it\".|Whole.|Short.") << "at the end";
  EXPECT_EQ(AskLibrary("Comments, Rating FROM Comments WHERE ID = 25000"), "In \"it\".|Poor");
  EXPECT_EQ(LinksOf(25000) + ", " + LinksOf(25001), "1|1-25000, 1|1-25001");
}

TEST_F(CommentPicklistTest, AddingIsWholeOrNotAtAll) {
  m_Device.RunInLibrary(NoRoomFor("INSERT ON StepComment"));
  EXPECT_EQ(Add(Answer::Yes, u"New."), Result::Failed);
  m_Device.RunInLibrary(kRoomAgain);
  // A key that the library has given to another comment, whose text the link would bring along.
  m_Device.RunInLibrary("DELETE FROM UniqueID; INSERT INTO UniqueID VALUES ('Comments', " +
                        std::to_string(m_Worn - 1) + ")");
  EXPECT_EQ(Add(Answer::Yes, u"New."), Result::Failed);
  EXPECT_TRUE(device::Contains(Prompts().Messages().back().text, u"check --repair"));
  EXPECT_EQ(Listed(), u"Steep.|Moss.|Brittle.|Worn.");
  EXPECT_EQ(LinksOf(m_Worn), "1|1-7");
  EXPECT_EQ(AskLibrary("count(*) FROM Comments WHERE Comments = 'New.'"), "0");
}

TEST_F(CommentPicklistTest, DeletingDisablesTheLink) {
  m_Device.Library().AddCommentToStep(2, u"Worn.");
  EXPECT_EQ(m_Picklist.Delete({}), Result::Nothing) << "and asks nothing";
  EXPECT_EQ(Delete(Answer::No, {u"Worn."}), Result::Refused);
  EXPECT_EQ(Delete(Answer::Yes, {u"Worn.", u"worn.", u"Steep."}), Result::Done);
  EXPECT_EQ(Listed(), u"Moss.|Brittle.");
  EXPECT_EQ(LinksOf(m_Worn), "-1|-1-7");
  EXPECT_EQ(AskLibrary("count(*) FROM Comments"), "12") << "the library keeps its comments";
  EXPECT_EQ(CommentPicklist(m_Device.GetWorkspace(), 2).Comments().size(), 2u);
}

TEST_F(CommentPicklistTest, ALinkToTwoCommentsIsToldAndStays) {
  m_Device.RunInLibrary("INSERT INTO Comments SELECT * FROM Comments WHERE Comments = 'Worn.'");
  Prompts().Forget();
  EXPECT_EQ(Delete(Answer::Yes, {u"Worn.", u"Moss."}), Result::Done);
  const Text alert = u"Alert: [ERROR CODE => 999] CCommentsPage::OnCommentPicker.";
  EXPECT_THAT(Prompts().Transcript(), ElementsAre(u"Caution: " + kDeleteQuestion, alert, alert));
  EXPECT_EQ(LinksOf(m_Worn), "1|1-7");
  EXPECT_EQ(Listed(), u"Steep.|Brittle.|Worn.|Worn.");
}

TEST(InsertCommentTest, KeepsTheSeparatorOnEitherSideAndTheSelectedText) {
  for (const auto& [text, selection, after, caret] :
       std::vector<std::tuple<Text, TextSelection, Text, std::size_t>>{
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
    EXPECT_EQ(change.CaretAfter(), caret) << ToUtf8(after);
  }
}

// The rows of the picker, chosen ones with a star.
Text RowsOf(const CommentPicker& picker) {
  return Joined(picker.Rows(), [&picker](const CommentPicker::Row& row) {
    return (picker.IsChosen(row) ? u"*" : u"") + picker.TextOf(row);
  });
}

TEST(CommentPickerTest, GroupsFoldAndTypingFinds) {
  CommentPicker picker({{1, u"Steep.", u"", u""},
                        {2, u"Moss on the eaves.", u"", u"Growth"},
                        {3, u"Brittle.", u"", u"Wear"},
                        {4, u"Déjà worn at the eaves.", u"", u"Wear"}},
                       true);
  const Text unworn = u"Steep.|<<Growth>>|Moss on the eaves.|<<Wear>>";
  EXPECT_EQ(RowsOf(picker), unworn + u"|Brittle.|Déjà worn at the eaves.");
  picker.ToggleGroup(2);
  EXPECT_EQ(RowsOf(picker), unworn);
  for (const auto& [typed, rows] : {std::pair(u"eaves DEJA", u"<<Wear>>|Déjà worn at the eaves."),
                                    // A group is found by its name, whatever was typed before.
                                    {u"wear", u"<<Wear>>|Brittle.|Déjà worn at the eaves."},
                                    {u"nothing", u""}}) {
    picker.SetFilter(typed);
    EXPECT_EQ(RowsOf(picker), rows);
  }
  picker.SetFilter(u"");
  EXPECT_EQ(RowsOf(picker), unworn);
}

TEST(CommentPickerTest, InsertsInTheOrderOfChoosing) {
  CommentPicker picker({{1, u"A", u"", u""}, {2, u"B", u"", u""}, {3, u"C", u"", u""}}, true);
  for (const std::size_t comment : {2, 0, 1, 0, 0}) picker.ToggleChoice(comment);
  EXPECT_EQ(RowsOf(picker), u"*A|*B|*C");
  picker.Delete(1);
  EXPECT_THAT(picker.Chosen(), ElementsAre(u"C", u"A"));
  EXPECT_THAT(picker.Deleted(), ElementsAre(u"B"));
  picker.SetFilter(u"b");
  EXPECT_EQ(RowsOf(picker), u"");

  CommentPicker readOnly({{1, u"A", u"", u""}}, false);
  readOnly.Delete(0);
  EXPECT_EQ(RowsOf(readOnly), u"A");
}

}  // namespace
}  // namespace inspector::editing
