// The field above a list in which a person types what the list is to be narrowed to.
#pragma once

#include <QLineEdit>
#include <QShortcut>

namespace inspector::device::ui {

// Has a button that clears it. To draw that one takes as long as a good part of the window's first paint, so
// it is made when the field is first entered.
class FindField : public QLineEdit {
public:
  FindField(const char* objectName, const QString& accessibleName, QWidget* parent) : QLineEdit(parent) {
    setObjectName(QLatin1String(objectName));
    setAccessibleName(accessibleName);
    setPlaceholderText(QStringLiteral("Find"));
  }

  // Ctrl+F anywhere on the screen leads here; Escape ends the search and leads to the list.
  void LeadTo(QWidget& list) {
    auto* enter = new QShortcut(QKeySequence::Find, parentWidget());
    connect(enter, &QShortcut::activated, this, [this] {
      setFocus(Qt::ShortcutFocusReason);
      selectAll();
    });
    auto* leave = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    leave->setContext(Qt::WidgetShortcut);
    connect(leave, &QShortcut::activated, this, [this, &list] {
      clear();
      list.setFocus();
    });
  }

protected:
  void focusInEvent(QFocusEvent* event) override {
    if (!isClearButtonEnabled()) setClearButtonEnabled(true);
    QLineEdit::focusInEvent(event);
  }
};

}  // namespace inspector::device::ui
