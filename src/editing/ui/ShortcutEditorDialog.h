// The shortcut editor on the screen.
#pragma once

#include <QDialog>
#include <optional>
#include <vector>

#include "editing/ShortcutEditor.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;

namespace inspector::editing::ui {

class ShortcutEditorDialog : public QDialog {
public:
  ShortcutEditorDialog(data::Workspace& workspace, QWidget* parent);

  void reject() override;

private:
  // What was typed is stored, or the person can do without it.
  bool MayDrop();
  void Select(int row);
  void Fill();
  void ShowSelected();
  void Store(std::optional<std::int32_t> id);

  device::Prompts& m_Prompts;
  ShortcutEditor m_Editor;
  int m_Row = -1;  // whose shortcut stands in the fields
  std::vector<ShortcutEditor::Shortcut> m_Shown;
  QListWidget* m_List;
  QLineEdit* m_ShortCut;
  QPlainTextEdit* m_Expanded;
  QLabel* m_Problem;
  QPushButton* m_Change;
  QPushButton* m_Delete;
};

}  // namespace inspector::editing::ui
