#include "device/ui/TypingHistory.h"

#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <functional>

#include "device/ListColumns.h"

namespace inspector::device::ui {
namespace {

// What a field can do, whatever its class.
struct History {
  bool canUndo = false;
  bool canRedo = false;
  std::function<void()> undo;
  std::function<void()> redo;
};

History HistoryOf(QWidget* field) {
  if (auto* line = qobject_cast<QLineEdit*>(field); line && line->isEnabled() && !line->isReadOnly())
    return {line->isUndoAvailable(), line->isRedoAvailable(), [line] { line->undo(); },
            [line] { line->redo(); }};
  if (auto* lines = qobject_cast<QPlainTextEdit*>(field); lines && lines->isEnabled() && !lines->isReadOnly())
    return {lines->document()->isUndoAvailable(), lines->document()->isRedoAvailable(),
            [lines] { lines->undo(); }, [lines] { lines->redo(); }};
  return {};
}

// What is taken back somewhere else is not seen.
void BringIntoSight(QWidget& field) {
  for (QWidget* above = field.parentWidget(); above; above = above->parentWidget())
    if (auto* area = qobject_cast<QScrollArea*>(above)) area->ensureWidgetVisible(&field);
}

// A drop-down that can be typed into has the focus for its line.
QWidget* TextFieldOf(QWidget* widget) {
  if (const auto* combo = qobject_cast<QComboBox*>(widget)) return combo->lineEdit();
  return qobject_cast<QLineEdit*>(widget) || qobject_cast<QPlainTextEdit*>(widget) ? widget : nullptr;
}

}  // namespace

TypingHistory::TypingHistory(QWidget& scope) : QWidget(&scope), m_Scope(scope) {
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  m_Undo = AddButton(QStringLiteral("↶"), "undoTypingButton", tr("Undo what was typed"), false);
  m_Redo = AddButton(QStringLiteral("↷"), "redoTypingButton", tr("Redo what was typed"), true);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* focus) {
    if (!focus || focus->window() != window() || isAncestorOf(focus)) return;
    Follow(m_Scope.isAncestorOf(focus) ? TextFieldOf(focus) : nullptr);
  });
}

QAbstractButton* TypingHistory::AddButton(const QString& arrow, const char* name, const QString& caption,
                                          bool forward) {
  auto* button = new QPushButton(arrow, this);
  button->setObjectName(QLatin1String(name));
  button->setAccessibleName(caption);
  button->setToolTip(caption);
  button->setAutoDefault(false);
  button->setEnabled(false);
  button->setFixedWidth(kSmallestTarget + 4);
  layout()->addWidget(button);
  connect(button, &QPushButton::clicked, this, [this, forward] {
    if (!m_Field || !m_Field->isVisible()) return ShowWhatCanBeDone();
    m_Field->setFocus();  // before the button, being disabled, gives the focus to the next one
    BringIntoSight(*m_Field);
    const History history = HistoryOf(m_Field);
    if (forward ? history.canRedo : history.canUndo) (forward ? history.redo : history.undo)();
    ShowWhatCanBeDone();
  });
  return button;
}

void TypingHistory::Follow(QWidget* field) {
  if (field != m_Field) {
    if (m_Field) m_Field->disconnect(this);
    m_Field = field;
    const auto show = [this] { ShowWhatCanBeDone(); };
    if (field) connect(field, &QObject::destroyed, this, show);
    if (auto* line = qobject_cast<QLineEdit*>(field)) {
      connect(line, &QLineEdit::textChanged, this, show);
    } else if (auto* lines = qobject_cast<QPlainTextEdit*>(field)) {
      connect(lines, &QPlainTextEdit::undoAvailable, this, show);
      connect(lines, &QPlainTextEdit::redoAvailable, this, show);
    }
  }
  ShowWhatCanBeDone();
}

void TypingHistory::ShowWhatCanBeDone() {
  const History history = HistoryOf(m_Field);
  m_Undo->setEnabled(history.canUndo);
  m_Redo->setEnabled(history.canRedo);
}

QHBoxLayout* HistoryBeside(QWidget& dialog, QWidget* buttons) {
  auto* row = new QHBoxLayout;
  row->addWidget(new TypingHistory(dialog));
  row->addWidget(buttons, 1);
  return row;
}

}  // namespace inspector::device::ui
