// A text field of several lines.
#pragma once

#include <QMimeData>
#include <QPlainTextEdit>

namespace inspector::device::ui {

// Every such field of the program is one: the toolkit's own looks for the first format of what is pasted
// also when the clipboard is empty and has none.
class LinesEdit : public QPlainTextEdit {
public:
  using QPlainTextEdit::QPlainTextEdit;

protected:
  bool canInsertFromMimeData(const QMimeData* source) const override {
    return HoldsSomething(source) && QPlainTextEdit::canInsertFromMimeData(source);
  }
  void insertFromMimeData(const QMimeData* source) override {
    if (HoldsSomething(source)) QPlainTextEdit::insertFromMimeData(source);
  }
  static bool HoldsSomething(const QMimeData* source) { return source && !source->formats().isEmpty(); }
};

}  // namespace inspector::device::ui
