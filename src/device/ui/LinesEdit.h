// A text field of several lines.
#pragma once

#include <QPlainTextEdit>

namespace inspector::device::ui {

// Every such field of the program is one: the toolkit's own reads a clipboard that nobody has put anything
// into through a null pointer.
class LinesEdit : public QPlainTextEdit {
public:
  using QPlainTextEdit::QPlainTextEdit;

protected:
  bool canInsertFromMimeData(const QMimeData* source) const override {
    return source && QPlainTextEdit::canInsertFromMimeData(source);
  }
  void insertFromMimeData(const QMimeData* source) override {
    if (source) QPlainTextEdit::insertFromMimeData(source);
  }
};

}  // namespace inspector::device::ui
