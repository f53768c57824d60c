// The picker editor: named lists of words, and the words of one.
#pragma once

#include <optional>
#include <vector>

#include "data/Workspace.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

// A picker is there as long as it has a word. Every change asks first, and is one transaction; false or
// nothing when the person cancels, or when it could not be written, which has been reported.
class PickerEditor {
public:
  explicit PickerEditor(data::Workspace& workspace) : m_Workspace(workspace) {}

  // In the order of their names.
  std::vector<Text> Names();
  // In their order; equal words as often as they are stored.
  std::vector<Text> Choices(TextView picker);

  // "New Item": asks for a word. For a name that is not there yet, this makes the picker.
  std::optional<Text> AddItem(TextView picker);
  // Both change one word: "Edit Item" offers it to be mended, "Edit Text" asks for another in its place. The
  // word that is stored now.
  std::optional<Text> EditItem(TextView picker, std::size_t choice);
  std::optional<Text> EditText(TextView picker, std::size_t choice);
  bool DeleteItem(TextView picker, std::size_t choice);
  // With all its words.
  bool DeletePicker(TextView picker);

private:
  std::optional<Text> Edit(TextView picker, std::size_t choice, const Text& prompt, const Text& title,
                           bool offersWord);

  data::Workspace& m_Workspace;
};

}  // namespace inspector::editing
