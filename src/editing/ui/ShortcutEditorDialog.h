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

private:
  void Fill();
  void ShowSelected();
  void Store(std::optional<std::int32_t> id);

  ShortcutEditor m_Editor;
  std::vector<ShortcutEditor::Shortcut> m_Shown;
  QListWidget* m_List;
  QLineEdit* m_ShortCut;
  QPlainTextEdit* m_Expanded;
  QLabel* m_Problem;
  QPushButton* m_Change;
  QPushButton* m_Delete;
};

}  // namespace inspector::editing::ui
