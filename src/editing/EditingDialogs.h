// What the editing screens ask that is richer than a message box or a line of text, and the sheets they open.
#pragma once

#include <cstdint>
#include <optional>

#include "device/Text.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

// The screens bring dialogs, the tests scripted answers. Nothing and false stand for Cancel.
class EditingDialogs {
public:
  virtual ~EditingDialogs() = default;

  // "Duplicate Category": name, "How Many :" and "Duplicate with data?".
  struct CategoryCopies {
    Text name;  // of the first copy
    int copies = 1;
    bool withData = false;
  };
  virtual std::optional<CategoryCopies> AskDuplicateCategory(const CategoryCopies& suggested) = 0;

  // Opens "Step Properties" on a step, with the page that stands at `tab` among those the step has; without,
  // on the option's. True when it was closed with OK; what was entered is kept in either case.
  virtual bool OpenStepProperties(std::int32_t categoryID, std::int32_t stepID, std::optional<int> tab) = 0;

  // The editor of picker lists, with this list chosen.
  virtual void OpenPickerEditor(const Text& pickerName) = 0;
};

}  // namespace inspector::editing
