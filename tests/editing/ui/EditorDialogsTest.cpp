
#include "device/ui/TextConversion.h"
#include "editing/ui/PickerEditorDialog.h"
#include "editing/ui/ShortcutEditorDialog.h"
#include "support/Screens.h"
#include "support/VisitFixture.h"

namespace inspector::editing::ui {
namespace {

using device::Answer;
using ::testing::ElementsAre;
using tests::Part;

class EditorDialogsTest : public tests::VisitTest {
protected:
  static std::vector<Text> Items(const QListWidget& list) {
    std::vector<Text> items;
    for (int n = 0; n < list.count(); ++n) items.push_back(device::ui::FromQString(list.item(n)->text()));
    return items;
  }
};

TEST_F(EditorDialogsTest, PickersAreMadeAndEdited) {
  m_Device.Library().AddPicker(u"Colour", u"red");
  PickerEditorDialog dialog(m_Device.GetWorkspace(), u"Brand", nullptr);
  const auto& items = Part<QListWidget>(dialog, "pickerItems");
  EXPECT_EQ(Part<QComboBox>(dialog, "pickers").currentText(), QStringLiteral("Brand"));
  EXPECT_FALSE(Part<QAbstractButton>(dialog, "editItemButton").isEnabled());
  Prompts().QueueText(u"Enter the new text for this picker.", u"Oak");
  tests::PressButton(dialog, "newItemButton");
  Prompts().QueueText(u"Edit the text for this picker item.", u"Elm");
  tests::PressButton(dialog, "editItemButton");
  Prompts().QueueText(u"Enter the new text for this picker.", u"Ash");
  tests::PressButton(dialog, "newItemButton");
  EXPECT_EQ(items.currentRow(), 0) << "the new one";
  Prompts().QueueText(u"Enter the new text for this item.", u"Yew");
  tests::PressButton(dialog, "editTextButton");
  EXPECT_THAT(Items(items), ElementsAre(u"Elm", u"Yew"));
  EXPECT_EQ(items.currentRow(), 1);
  Prompts().Queue(u"Are you sure you want to delete \"Yew\" from this picker?", Answer::Yes);
  tests::PressButton(dialog, "deleteItemButton");
  EXPECT_THAT(Items(items), ElementsAre(u"Elm"));
  Prompts().QueueText(u"Enter the name of the new picker.", u"Size");
  Prompts().QueueText(u"Enter the new text for this picker.", u"large");
  tests::PressButton(dialog, "newPickerButton");
  EXPECT_THAT(Items(items), ElementsAre(u"large"));
  Prompts().Queue(u"Are you sure you want to delete this picker and all its items?", Answer::Yes);
  tests::PressButton(dialog, "deletePickerButton");
  EXPECT_THAT(PickerEditor(m_Device.GetWorkspace()).Names(), ElementsAre(u"Brand", u"Colour"));
}

TEST_F(EditorDialogsTest, ShortcutsAreAddedChangedAndDeleted) {
  ShortcutEditorDialog dialog(m_Device.GetWorkspace(), nullptr);
  auto& word = Part<QLineEdit>(dialog, "shortCut");
  auto& expanded = Part<QPlainTextEdit>(dialog, "expanded");
  auto& list = Part<QListWidget>(dialog, "shortcuts");
  word.setText(QStringLiteral("two words"));
  expanded.setPlainText(QStringLiteral("One\nTwo"));
  tests::PressButton(dialog, "addShortcutButton");
  EXPECT_FALSE(Part<QLabel>(dialog, "problem").text().isEmpty());
  word.setText(QStringLiteral("ot"));
  tests::PressButton(dialog, "addShortcutButton");
  EXPECT_THAT(Items(list), ElementsAre(u"ot – One Two"));
  list.setCurrentRow(0);
  EXPECT_EQ(expanded.toPlainText(), QStringLiteral("One\nTwo"));
  expanded.setPlainText(QStringLiteral("Three"));
  tests::PressButton(dialog, "changeShortcutButton");
  EXPECT_THAT(Items(list), ElementsAre(u"ot – Three"));
  Prompts().Queue(u"Are you sure you want to delete this shortcut?", Answer::Yes);
  tests::PressButton(dialog, "deleteShortcutButton");
  EXPECT_THAT(Items(list), ElementsAre());
  EXPECT_FALSE(Part<QAbstractButton>(dialog, "deleteShortcutButton").isEnabled());
}

}  // namespace
}  // namespace inspector::editing::ui
