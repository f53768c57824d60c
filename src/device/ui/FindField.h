// The field above a list in which a person types what the list is to be narrowed to.
#pragma once

#include <QLineEdit>

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

protected:
  void focusInEvent(QFocusEvent* event) override {
    if (!isClearButtonEnabled()) setClearButtonEnabled(true);
    QLineEdit::focusInEvent(event);
  }
};

}  // namespace inspector::device::ui
