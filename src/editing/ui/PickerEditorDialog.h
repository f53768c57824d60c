// The picker editor on the screen.
#pragma once

#include <QDialog>

#include "editing/PickerEditor.h"

class QComboBox;
class QListWidget;
class QPushButton;

namespace inspector::editing::ui {

class PickerEditorDialog : public QDialog {
public:
  // With this picker chosen; it need not exist yet.
  PickerEditorDialog(data::Workspace& workspace, const Text& picker, QWidget* parent);

private:
  Text Picker() const;
  void FillPickers(const Text& chosen);
  std::optional<std::int32_t> Selected() const;
  void FillItems(std::optional<std::int32_t> selected = std::nullopt);
  void NewPicker();

  data::Workspace& m_Workspace;
  PickerEditor m_Editor;
  QComboBox* m_Pickers;
  QListWidget* m_Items;
  std::vector<PickerEditor::Item> m_Shown;
  QPushButton* m_Edit;
  QPushButton* m_EditText;
  QPushButton* m_Delete;
  QPushButton* m_New;
  QPushButton* m_DeletePicker;
};

}  // namespace inspector::editing::ui
