#include "device/ui/LinesEdit.h"

#include <QMimeData>

namespace inspector::device::ui {
namespace {

constexpr int kLongestWord = 2000;  // letters

bool HasEndlessWord(const QString& text) {
  int letters = 0;
  for (const QChar letter : text) {
    letters = letter.isSpace() ? 0 : letters + 1;
    if (letters > kLongestWord) return true;
  }
  return false;
}

bool HoldsSomething(const QMimeData* source) {
  return source && !source->formats().isEmpty();
}

}  // namespace

void LinesEdit::setPlainText(const QString& text) {
  PrepareForMore(text);
  QPlainTextEdit::setPlainText(text);
  if (!HasEndlessWord(text)) setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
}

void LinesEdit::PrepareForMore(const QString& text) {
  if (HasEndlessWord(text)) setWordWrapMode(QTextOption::WrapAnywhere);
}

bool LinesEdit::canInsertFromMimeData(const QMimeData* source) const {
  return HoldsSomething(source) && QPlainTextEdit::canInsertFromMimeData(source);
}

void LinesEdit::insertFromMimeData(const QMimeData* source) {
  if (!HoldsSomething(source)) return;
  PrepareForMore(source->text());
  QPlainTextEdit::insertFromMimeData(source);
}

}  // namespace inspector::device::ui
