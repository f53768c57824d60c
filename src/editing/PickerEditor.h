// The picker editor: named lists of words, and the words of one.
#pragma once

#include <optional>
#include <vector>

#include "data/PickersTable.h"
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
  struct Item {
    std::int32_t id = 0;
    Text word;
  };
  // In the order of the words; equal ones as often as they are stored.
  std::vector<Item> Items(TextView picker);

  // "New Item": asks for a word. For a name that is not there yet, this makes the picker. The id of the word.
  std::optional<std::int32_t> AddItem(TextView picker);
  // Both change one word: "Edit Item" offers it to be mended, "Edit Text" asks for another in its place. Says
  // so when another program has deleted it.
  bool EditItem(std::int32_t id);
  bool EditText(std::int32_t id);
  bool DeleteItem(std::int32_t id);
  // With all its words.
  bool DeletePicker(TextView picker);

private:
  bool Edit(std::int32_t id, const Text& prompt, const Text& title, bool offersWord);
  bool Find(data::PickersTable& row, std::int32_t id);

  data::Workspace& m_Workspace;
};

}  // namespace inspector::editing
