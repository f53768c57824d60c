// A text field of several lines.
#pragma once

#include <QPlainTextEdit>

namespace inspector::device::ui {

// Every such field of the program is one. The toolkit's own looks for the first format of what is pasted
// also when the clipboard is empty and has none; and to break lines at words takes it minutes where a text
// has hundreds of thousands of letters without a blank.
class LinesEdit : public QPlainTextEdit {
public:
  using QPlainTextEdit::QPlainTextEdit;

  void setPlainText(const QString& text);
  // The same as a change of what is there: only what differs is replaced, so that the caret stays where a
  // person is writing, and undo knows one step more.
  void ReplaceText(const QString& text);

protected:
  bool canInsertFromMimeData(const QMimeData* source) const override;
  void insertFromMimeData(const QMimeData* source) override;
  // Before `text` is added to what is there.
  void PrepareForMore(const QString& text);
};

}  // namespace inspector::device::ui
