#include "editing/ui/CommentBox.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>
#include <QUrl>
#include <algorithm>

#include "device/ui/TextConversion.h"
#include "editing/Shortcuts.h"

namespace inspector::editing::ui {
namespace {

using device::ui::FromQString;
using device::ui::ToDisplay;

int ShownPosition(TextView stored, std::size_t at) {
  return static_cast<int>(ToDisplay(stored.substr(0, at)).size());
}

// The other way round: a line end of two units is shown as one.
std::size_t StoredPosition(TextView stored, int shown) {
  std::size_t at = 0;
  for (; shown > 0 && at < stored.size(); --shown) at += stored.substr(at, 2) == u"\r\n" ? 2 : 1;
  return at;
}

}  // namespace

CommentBox::CommentBox(QWidget* parent) : LinesEdit(parent) {
  setTabChangesFocus(true);
  connect(this, &QPlainTextEdit::textChanged, this, [this] {
    if (!m_IsLoading && onEdited) onEdited();
  });
}

void CommentBox::Load(TextView stored) {
  m_Loaded = Text(stored);
  m_LoadedShown = ToDisplay(stored);
  m_IsLoading = true;
  setPlainText(m_LoadedShown);
  m_IsLoading = false;
}

Text CommentBox::Stored() const {
  const QString shown = device::ui::LinesOf(*document());
  // A text that nobody changed keeps the line ends it came with.
  if (shown == m_LoadedShown) return m_Loaded;
  return device::ReplaceAll(FromQString(shown), u"\n", u"\r\n");
}

TextSelection CommentBox::StoredSelection() const {
  const Text stored = Stored();
  const QTextCursor cursor = textCursor();
  return {StoredPosition(stored, cursor.selectionStart()), StoredPosition(stored, cursor.selectionEnd())};
}

void CommentBox::Apply(Text before, const std::vector<TextChange>& changes, const TextSelection& selection) {
  QTextCursor cursor = textCursor();
  for (const TextChange& change : changes) {
    cursor.beginEditBlock();
    cursor.setPosition(ShownPosition(before, change.at));
    cursor.setPosition(ShownPosition(before, change.at + change.length), QTextCursor::KeepAnchor);
    const QString replacement = ToDisplay(change.replacement);
    PrepareForMore(replacement);
    cursor.insertText(replacement);
    cursor.endEditBlock();
    change.ApplyTo(before);
  }
  cursor.setPosition(ShownPosition(before, selection.begin));
  cursor.setPosition(ShownPosition(before, selection.end), QTextCursor::KeepAnchor);
  setTextCursor(cursor);
  ensureCursorVisible();
}

void CommentBox::Replace(TextView stored) {
  ReplaceText(ToDisplay(stored));
}

void CommentBox::keyPressEvent(QKeyEvent* event) {
  const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  // With Shift it would be a line end of another kind, which nothing else knows.
  if (isEnter) event->setModifiers(event->modifiers() & ~Qt::ShiftModifier);
  LinesEdit::keyPressEvent(event);
  const bool isCommand = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  if (!isCommand) ExpandFinishedWord(isEnter ? QStringLiteral("\n") : event->text());
}

void CommentBox::inputMethodEvent(QInputMethodEvent* event) {
  const QString committed = event->commitString();
  LinesEdit::inputMethodEvent(event);
  ExpandFinishedWord(committed);
}

void CommentBox::ExpandFinishedWord(const QString& typed) {
  if (!onWordFinished || typed.isEmpty() || !Shortcuts::EndsWord(typed.back().unicode()) ||
      (typed.back().unicode() < u' ' && typed != QLatin1String("\n")))
    return;
  const int end = textCursor().position() - 1;
  const QTextBlock line = document()->findBlock(end);
  if (end < 0 || !line.isValid()) return;
  const auto change =
      onWordFinished(FromQString(line.text()), static_cast<std::size_t>(end - line.position()));
  if (!change) return;
  QTextCursor cursor = textCursor();  // that undo comes back to
  cursor.beginEditBlock();
  cursor.setPosition(line.position() + static_cast<int>(change->at));
  cursor.setPosition(cursor.position() + static_cast<int>(change->length), QTextCursor::KeepAnchor);
  cursor.insertText(ToDisplay(change->replacement));
  cursor.endEditBlock();
}

void CommentBox::focusOutEvent(QFocusEvent* event) {
  LinesEdit::focusOutEvent(event);
  if (onLeft) onLeft();
}

bool CommentBox::HasPictures(const QMimeData& source) const {
  if (!onPictures) return false;
  if (source.hasImage() && !source.hasText()) return true;
  const QList<QUrl> urls = source.urls();
  return !urls.isEmpty() &&
         std::all_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); });
}

bool CommentBox::canInsertFromMimeData(const QMimeData* source) const {
  return (source && HasPictures(*source)) || LinesEdit::canInsertFromMimeData(source);
}

void CommentBox::insertFromMimeData(const QMimeData* source) {
  if (source && HasPictures(*source))
    onPictures(*source);
  else
    LinesEdit::insertFromMimeData(source);
}

}  // namespace inspector::editing::ui
