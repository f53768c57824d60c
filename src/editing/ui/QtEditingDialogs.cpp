#include "editing/ui/QtEditingDialogs.h"

#include "editing/ui/DuplicateCategoryDialog.h"

namespace inspector::editing::ui {

std::optional<EditingDialogs::CategoryCopies> QtEditingDialogs::AskDuplicateCategory(
    const CategoryCopies& suggested) {
  DuplicateCategoryDialog dialog(suggested, m_Window);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Wanted();
}

bool QtEditingDialogs::OpenStepProperties(std::int32_t categoryID, std::int32_t stepID,
                                          std::optional<int> tab) {
  return onOpenStepProperties && onOpenStepProperties(categoryID, stepID, tab);
}

void QtEditingDialogs::OpenPickerEditor(const Text& pickerName) {
  if (onOpenPickerEditor) onOpenPickerEditor(pickerName);
}

}  // namespace inspector::editing::ui
