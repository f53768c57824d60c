// The drop-down of the prepared comments.
#pragma once

#include <functional>
#include <vector>

#include "device/ui/PickerCombo.h"
#include "editing/CommentLibrary.h"

namespace inspector::editing::ui {

// Asks for its entries when it is opened: most steps are passed without a look at it. The list is as wide as
// the window and gives each comment two lines, so that those which begin alike can be told apart. Group
// headings stand between the entries and cannot be chosen.
class PicklistBox : public device::ui::DropDown {
public:
  explicit PicklistBox(QWidget* parent);

  std::function<void()> onOpen;

  // What was chosen stays chosen where it is among them.
  void SetComments(const std::vector<LibraryComment>& comments);
  // Empty when nothing is.
  Text Chosen() const;

  void showPopup() override;

private:
  class Entries;
  Entries* m_Entries;
};

}  // namespace inspector::editing::ui
