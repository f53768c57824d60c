// Undo and redo of what was typed, for a finger: a handheld has no Ctrl key.
#pragma once

#include <QPointer>
#include <QWidget>

class QAbstractButton;
class QHBoxLayout;

namespace inspector::device::ui {

// Two buttons that act on the text field within `scope` that has the focus. They leave it there; once it goes
// to anything else than them, there is nothing that they could be meant for.
class TypingHistory : public QWidget {
public:
  explicit TypingHistory(QWidget& scope);

  // As if `field`, a text field within the scope, had got the focus; null for none.
  void Follow(QWidget* field);

private:
  QAbstractButton* AddButton(const QString& arrow, const char* name, const QString& caption, bool forward);
  void ShowWhatCanBeDone();

  QWidget& m_Scope;
  QPointer<QWidget> m_Field;
  QAbstractButton* m_Undo;
  QAbstractButton* m_Redo;
};

// The row at the foot of a dialog with text fields.
QHBoxLayout* HistoryBeside(QWidget& dialog, QWidget* buttons);

}  // namespace inspector::device::ui
