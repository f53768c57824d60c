#include "editing/ui/PickerEditorDialog.h"
#include "editing/ui/ShortcutEditorDialog.h"
#include "support/Screens.h"
#include "support/VisitFixture.h"

namespace inspector::editing::ui {
namespace {

using EditorDialogsTest = VisitTest;

TEST_F(EditorDialogsTest, PickersAreMadeAndEdited) {
  m_Device.Library().AddPicker(u"Colour", u"red");
  PickerEditorDialog dialog(m_Device.GetWorkspace(), u"Brand", nullptr);
  EXPECT_FALSE(Part<QAbstractButton>(dialog, "editItemButton").isEnabled());
  // After each button the words of the picker, and the row that is selected.
  const auto press = [&](const char* button, TextView question, const Text& answer) {
    Prompts().QueueText(Text(question), answer);
    PressButton(dialog, button);
    return Entries(dialog, "pickerItems") + " " +
           std::to_string(Part<QListWidget>(dialog, "pickerItems").currentRow());
  };
  EXPECT_EQ(press("newItemButton", u"Enter the new text for this picker.", u"Oak"), "Oak 0");
  EXPECT_EQ(press("editItemButton", u"Edit the text for this picker item.", u"Elm"), "Elm 0");
  EXPECT_EQ(press("newItemButton", u"Enter the new text for this picker.", u"Ash"), "Ash|Elm 0");
  EXPECT_EQ(press("editTextButton", u"Enter the new text for this item.", u"Yew"), "Elm|Yew 1");
  Prompts().Queue(u"Are you sure you want to delete \"Yew\" from this picker?", Answer::Yes);
  PressButton(dialog, "deleteItemButton");
  EXPECT_EQ(Entries(dialog, "pickerItems"), "Elm");
  Prompts().QueueText(u"Enter the name of the new picker.", u"Size");
  EXPECT_EQ(press("newPickerButton", u"Enter the new text for this picker.", u"large"), "large 0");
  Prompts().Queue(u"Are you sure you want to delete this picker and all its items?", Answer::Yes);
  PressButton(dialog, "deletePickerButton");
  EXPECT_THAT(PickerEditor(m_Device.GetWorkspace()).Names(), ElementsAre(u"Brand", u"Colour"));
}

TEST_F(EditorDialogsTest, ShortcutsAreAddedChangedAndDeleted) {
  ShortcutEditorDialog dialog(m_Device.GetWorkspace(), nullptr);
  Fill(dialog, "shortCut", "two words");
  Fill(dialog, "expanded", "One\nTwo");
  PressButton(dialog, "addShortcutButton");
  EXPECT_NE(Words(dialog, "problem"), "");
  Fill(dialog, "shortCut", "ot");
  PressButton(dialog, "addShortcutButton");
  EXPECT_EQ(Entries(dialog, "shortcuts"), "ot – One Two");
  Part<QListWidget>(dialog, "shortcuts").setCurrentRow(0);
  EXPECT_EQ(Part<QPlainTextEdit>(dialog, "expanded").toPlainText(), QStringLiteral("One\nTwo"));
  Fill(dialog, "expanded", "Three");
  PressButton(dialog, "changeShortcutButton");
  EXPECT_EQ(Entries(dialog, "shortcuts"), "ot – Three");
  Prompts().Queue(u"Are you sure you want to delete this shortcut?", Answer::Yes);
  PressButton(dialog, "deleteShortcutButton");
  EXPECT_EQ(Entries(dialog, "shortcuts"), "");
  EXPECT_FALSE(Part<QAbstractButton>(dialog, "deleteShortcutButton").isEnabled());
}

}  // namespace
}  // namespace inspector::editing::ui
