// Shortcuts and pickers: their use and their editors.
#include "editing/PickerEditor.h"
#include "editing/ShortcutEditor.h"
#include "editing/Shortcuts.h"
#include "support/VisitFixture.h"

namespace inspector::editing {
namespace {

using device::Answer;
using ::testing::ElementsAre;

class WordListsTest : public tests::VisitTest {
protected:
  Text Expanded(const Text& text, std::size_t wordEnd = Text::npos) {
    Text changed = text;
    const auto change = Shortcuts(Data()).Expand(text, wordEnd);
    if (change) change->ApplyTo(changed);
    return changed;
  }
  std::vector<Text> Shown() {
    std::vector<Text> lines;
    for (const auto& shortcut : m_Shortcuts.All())
      lines.push_back(shortcut.shortCut + u"=" + shortcut.expanded);
    return lines;
  }
  std::int32_t Item(std::size_t row) { return m_Pickers.Items(u"Colour").at(row).id; }
  std::vector<Text> Words() {
    std::vector<Text> words;
    for (const PickerEditor::Item& item : m_Pickers.Items(u"Colour")) words.push_back(item.word);
    return words;
  }

  ShortcutEditor m_Shortcuts{m_Device.GetWorkspace()};
  PickerEditor m_Pickers{m_Device.GetWorkspace()};
};

TEST_F(WordListsTest, AFinishedWordExpands) {
  m_Device.Library().AddShortcut(u"gfi", u"ground fault interrupter");
  m_Device.Library().AddShortcut(u"GFI", u"second row");
  m_Device.Library().AddShortcut(u"w/o", u"without");
  m_Device.Library().AddShortcut(u"", u"nothing");
  m_Device.Library().AddShortcut(u"Äg", u"ägyptisch");
  EXPECT_EQ(Expanded(u"No GFi"), u"No ground fault interrupter");
  EXPECT_EQ(Expanded(u"No gfi here", 6), u"No ground fault interrupter here");
  EXPECT_EQ(Expanded(u"(gfi"), u"(ground fault interrupter");
  EXPECT_EQ(Expanded(u"line\ngfi"), u"line\nground fault interrupter");
  EXPECT_EQ(Expanded(u"w/o"), u"without");
  EXPECT_EQ(Expanded(u"äG"), u"ägyptisch");
  for (const TextView other : {u"agfi", u"gfi ", u"gfis", u"", u" "}) EXPECT_EQ(Expanded(Text(other)), other);
  for (const char16_t ending : TextView(u" .,;:!?)\n\t")) EXPECT_TRUE(Shortcuts::EndsWord(ending));
  for (const char16_t letter : TextView(u"aZ9é_")) EXPECT_FALSE(Shortcuts::EndsWord(letter));
}

TEST_F(WordListsTest, ShortcutsAreSingleWordsThatStandForSomething) {
  using Result = ShortcutEditor::Result;
  EXPECT_EQ(m_Shortcuts.Add(u"b", u"bee"), Result::Done);
  EXPECT_EQ(m_Shortcuts.Add(u"A", u"\tay \"quoted\""), Result::Done);
  EXPECT_EQ(m_Shortcuts.Add(u"a", u"other"), Result::Taken);
  EXPECT_EQ(m_Shortcuts.Add(u"two words", u"x"), Result::NotOneWord);
  EXPECT_EQ(m_Shortcuts.Add(u"", u"x"), Result::NotOneWord);
  EXPECT_EQ(m_Shortcuts.Add(u"c", u""), Result::NothingToExpand);
  EXPECT_THAT(Shown(), ElementsAre(u"A=ay \"quoted\"", u"b=bee"));

  const std::int32_t a = m_Shortcuts.All()[0].id;
  EXPECT_EQ(m_Shortcuts.Change(a, u"B", u"x"), Result::Taken);
  EXPECT_EQ(m_Shortcuts.Change(a, u"a", u"hay"), Result::Done) << "its own word is not taken";
  Prompts().Queue(u"Are you sure you want to delete this shortcut?", Answer::No);
  EXPECT_FALSE(m_Shortcuts.Delete(a));
  EXPECT_THAT(Shown(), ElementsAre(u"a=hay", u"b=bee"));
  Prompts().Queue(u"Are you sure you want to delete this shortcut?", Answer::Yes);
  EXPECT_TRUE(m_Shortcuts.Delete(a));
  EXPECT_THAT(Shown(), ElementsAre(u"b=bee"));
  EXPECT_EQ(m_Shortcuts.Change(a, u"a", u"x"), Result::Failed) << "it is gone";
}

TEST_F(WordListsTest, PickersAreEditedWordByWordAndDeletedWhole) {
  m_Device.Library().AddPicker(u"Colour", u"red");
  m_Device.Library().AddPicker(u"Colour", u"blue");
  m_Device.Library().AddPicker(u"Brand \"A\"", u"one");
  EXPECT_THAT(m_Pickers.Names(), ElementsAre(u"Brand \"A\"", u"Colour"));
  Prompts().QueueText(u"Enter the new text for this picker.", u"green");
  EXPECT_TRUE(m_Pickers.AddItem(u"Colour"));
  Prompts().QueueText(u"Edit the text for this picker item.", u"azure");
  EXPECT_TRUE(m_Pickers.EditItem(Item(0)));
  EXPECT_EQ(Prompts().TextQuestions().back().initial, u"blue");
  Prompts().QueueText(u"Enter the new text for this item.", u"ruby");
  EXPECT_TRUE(m_Pickers.EditText(Item(2)));
  EXPECT_EQ(Prompts().TextQuestions().back().initial, u"");
  EXPECT_THAT(Words(), ElementsAre(u"azure", u"green", u"ruby"));
  Prompts().Queue(u"Are you sure you want to delete \"green\" from this picker?", Answer::Yes);
  const std::int32_t green = Item(1);
  EXPECT_TRUE(m_Pickers.DeleteItem(green));

  Prompts().QueueText(u"Enter the new text for this picker.", std::nullopt);
  EXPECT_FALSE(m_Pickers.AddItem(u"Colour"));
  Prompts().QueueText(u"Edit the text for this picker item.", u"");
  EXPECT_FALSE(m_Pickers.EditItem(Item(0)));
  EXPECT_THAT(Words(), ElementsAre(u"azure", u"ruby"));

  // Rows that another program moved change nothing about which word is meant; one that it deleted is told.
  const std::int32_t ruby = Item(1);
  m_Device.Library().AddPicker(u"Colour", u"amber");
  Prompts().QueueText(u"Enter the new text for this item.", u"teal");
  EXPECT_TRUE(m_Pickers.EditText(ruby));
  EXPECT_THAT(Words(), ElementsAre(u"amber", u"azure", u"teal"));
  Prompts().Forget();
  EXPECT_FALSE(m_Pickers.EditItem(green));
  EXPECT_FALSE(m_Pickers.DeleteItem(green));
  EXPECT_EQ(Prompts().Messages().size(), 1U) << "the same words once";

  const Text question = u"Are you sure you want to delete this picker and all its items?";
  Prompts().Queue(question, Answer::No);
  EXPECT_FALSE(m_Pickers.DeletePicker(u"Brand \"A\""));
  Prompts().Queue(question, Answer::Yes);
  EXPECT_TRUE(m_Pickers.DeletePicker(u"Brand \"A\""));
  EXPECT_THAT(m_Pickers.Names(), ElementsAre(u"Colour"));
}

}  // namespace
}  // namespace inspector::editing
