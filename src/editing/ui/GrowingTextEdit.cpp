#include "editing/ui/GrowingTextEdit.h"

#include <QEvent>
#include <algorithm>

#include "device/ListColumns.h"

namespace inspector::editing::ui {
namespace {

constexpr int kMostLines = 8;

}  // namespace

GrowingTextEdit::GrowingTextEdit(QWidget* parent) : LinesEdit(parent) {
  setTabChangesFocus(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(this, &QPlainTextEdit::textChanged, this, [this] { Fit(); });
  Fit();
}

void GrowingTextEdit::Fit() {
  // The document of a plain text edit counts its height in lines, wrapped ones included.
  const int allLines = std::max(qRound(document()->size().height()), 1);
  const int lines = std::min(allLines, kMostLines);
  // A bar that comes while the field still grows would take the width that the lines were broken for.
  setVerticalScrollBarPolicy(allLines > lines ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
  const int margins = 2 * frameWidth() + 2 * qRound(document()->documentMargin());
  const int height = std::max(device::kSmallestTarget, lines * fontMetrics().lineSpacing() + margins + 2);
  if (height != minimumHeight() || height != maximumHeight()) setFixedHeight(height);
}

void GrowingTextEdit::resizeEvent(QResizeEvent* event) {
  LinesEdit::resizeEvent(event);
  Fit();
}

void GrowingTextEdit::changeEvent(QEvent* event) {
  LinesEdit::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) Fit();
}

}  // namespace inspector::editing::ui
