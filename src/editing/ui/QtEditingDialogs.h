// The dialogs of the editing screens over a window.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>

#include "editing/EditingDialogs.h"

namespace inspector::editing::ui {

// The sheet and the picker editor are brought by whoever puts the screens together.
class QtEditingDialogs : public EditingDialogs {
public:
  void SetWindow(QWidget* window) { m_Window = window; }

  std::function<bool(std::int32_t categoryID, std::int32_t stepID, std::optional<int> tab)>
      onOpenStepProperties;
  std::function<void(const Text& pickerName)> onOpenPickerEditor;

  std::optional<CategoryCopies> AskDuplicateCategory(const CategoryCopies& suggested) override;
  bool OpenStepProperties(std::int32_t categoryID, std::int32_t stepID, std::optional<int> tab) override;
  void OpenPickerEditor(const Text& pickerName) override;

private:
  QPointer<QWidget> m_Window;
};

}  // namespace inspector::editing::ui
