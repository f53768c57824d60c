#include "device/ui/LinesEdit.h"

#include <QMimeData>
#include <algorithm>
#include <iterator>

#include "device/ui/TextConversion.h"

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

void LinesEdit::ReplaceText(const QString& after) {
  const QString before = LinesOf(*document());
  PrepareForMore(after);
  const auto [fromBefore, fromAfter] =
      std::mismatch(before.begin(), before.end(), after.begin(), after.end());
  const auto same = static_cast<int>(fromBefore - before.begin());
  const auto [endBefore, endAfter] = std::mismatch(before.rbegin(), std::make_reverse_iterator(fromBefore),
                                                   after.rbegin(), std::make_reverse_iterator(fromAfter));
  const auto tail = static_cast<int>(endBefore - before.rbegin());
  QTextCursor cursor = textCursor();  // that undo comes back to
  cursor.beginEditBlock();
  cursor.setPosition(same);
  cursor.setPosition(static_cast<int>(before.size()) - tail, QTextCursor::KeepAnchor);
  cursor.insertText(after.mid(same, after.size() - same - tail));
  cursor.endEditBlock();
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
