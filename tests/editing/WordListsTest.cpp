// Shortcuts and pickers: their use and their editors.
#include "editing/PickerEditor.h"
#include "editing/ShortcutEditor.h"
#include "editing/Shortcuts.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

class WordListsTest : public VisitTest {
protected:
  Text Expanded(Text text, std::size_t wordEnd = Text::npos) {
    if (const auto change = Shortcuts(Data()).Expand(text, wordEnd)) change->ApplyTo(text);
    return text;
  }
  Text Listed() {
    return Joined(m_Shortcuts.All(),
                  [](const auto& shortcut) { return shortcut.shortCut + u"=" + shortcut.expanded; });
  }
  std::int32_t Item(std::size_t row) { return m_Pickers.Items(u"Colour").at(row).id; }
  Text Words() { return Joined(m_Pickers.Items(u"Colour"), std::mem_fn(&PickerEditor::Item::word)); }

  ShortcutEditor m_Shortcuts{m_Device.GetWorkspace()};
  PickerEditor m_Pickers{m_Device.GetWorkspace()};
};

TEST_F(WordListsTest, AFinishedWordExpands) {
  for (const auto& [shortCut, expanded] : {std::pair(u"gfi", u"ground fault interrupter"),
                                           {u"GFI", u"second row"},
                                           {u"w/o", u"without"},
                                           {u"", u"nothing"},
                                           {u"Äg", u"ägyptisch"}})
    m_Device.Library().AddShortcut(shortCut, expanded);
  for (const auto& [line, changed] : {std::pair(u"No GFi", u"No ground fault interrupter"),
                                      {u"(gfi", u"(ground fault interrupter"},
                                      {u"line\ngfi", u"line\nground fault interrupter"},
                                      {u"w/o", u"without"},
                                      {u"äG", u"ägyptisch"}})
    EXPECT_EQ(Expanded(line), changed);
  EXPECT_EQ(Expanded(u"No gfi here", 6), u"No ground fault interrupter here");
  for (const Text other : {u"agfi", u"gfi ", u"gfis", u"", u" "}) EXPECT_EQ(Expanded(other), other);
  for (const char16_t unit : TextView(u" .,;:!?)\n\taZ9é_"))
    EXPECT_EQ(Shortcuts::EndsWord(unit), !device::Contains(u"aZ9é_", {&unit, 1})) << int{unit};
}

TEST_F(WordListsTest, ShortcutsAreSingleWordsThatStandForSomething) {
  using Result = ShortcutEditor::Result;
  EXPECT_EQ(m_Shortcuts.Add(u"b", u"bee"), Result::Done);
  EXPECT_EQ(m_Shortcuts.Add(u"A", u"\tay \"quoted\""), Result::Done);
  EXPECT_EQ(m_Shortcuts.Add(u"a", u"other"), Result::Taken);
  EXPECT_EQ(m_Shortcuts.Add(u"two words", u"x"), Result::NotOneWord);
  EXPECT_EQ(m_Shortcuts.Add(u"", u"x"), Result::NotOneWord);
  EXPECT_EQ(m_Shortcuts.Add(u"c", u""), Result::NothingToExpand);
  EXPECT_EQ(Listed(), u"A=ay \"quoted\"|b=bee");

  const std::int32_t a = m_Shortcuts.All()[0].id;
  EXPECT_EQ(m_Shortcuts.Change(a, u"B", u"x"), Result::Taken);
  EXPECT_EQ(m_Shortcuts.Change(a, u"a", u"hay"), Result::Done) << "its own word is not taken";
  for (const auto answer : {Answer::No, Answer::Yes}) {
    EXPECT_EQ(Listed(), u"a=hay|b=bee");
    Prompts().Queue(u"Are you sure you want to delete this shortcut?", answer);
    EXPECT_EQ(m_Shortcuts.Delete(a), answer == Answer::Yes);
  }
  EXPECT_EQ(m_Shortcuts.Change(a, u"a", u"x"), Result::Failed) << "it is gone";
}

TEST_F(WordListsTest, PickersAreEditedWordByWordAndDeletedWhole) {
  m_Device.Library().AddPicker(u"Colour", u"red");
  m_Device.Library().AddPicker(u"Colour", u"blue");
  m_Device.Library().AddPicker(u"Brand \"A\"", u"one");
  EXPECT_EQ(Joined(m_Pickers.Names()), u"Brand \"A\"|Colour");
  Prompts().QueueText(u"Enter the new text for this picker.", std::nullopt);
  EXPECT_FALSE(m_Pickers.AddItem(u"Colour"));
  Prompts().QueueText(u"Edit the text for this picker item.", u"");
  EXPECT_FALSE(m_Pickers.EditItem(Item(0)));
  EXPECT_EQ(Prompts().TextQuestions().back().initial, u"blue");
  // Rows that another program moved change nothing about which word is meant; one that it deleted is told.
  const std::int32_t red = Item(1);
  m_Device.Library().AddPicker(u"Colour", u"amber");
  Prompts().QueueText(u"Enter the new text for this item.", u"teal");
  EXPECT_TRUE(m_Pickers.EditText(red));
  EXPECT_EQ(Prompts().TextQuestions().back().initial, u"");
  EXPECT_EQ(Words(), u"amber|blue|teal");
  const std::int32_t amber = Item(0);
  m_Device.RunInLibrary("DELETE FROM Pickers WHERE PickerChoice = 'amber'");
  EXPECT_FALSE(m_Pickers.EditItem(amber));
  EXPECT_FALSE(m_Pickers.DeleteItem(amber));
  EXPECT_EQ(Prompts().Messages().size(), 1U) << "the same words once";

  for (const auto& [answer, left] :
       {std::pair(Answer::No, u"Brand \"A\"|Colour"), {Answer::Yes, u"Colour"}}) {
    Prompts().Queue(u"Are you sure you want to delete this picker and all its items?", answer);
    EXPECT_EQ(m_Pickers.DeletePicker(u"Brand \"A\""), answer == Answer::Yes);
    EXPECT_EQ(Joined(m_Pickers.Names()), left);
  }
}

}  // namespace
}  // namespace inspector::editing
