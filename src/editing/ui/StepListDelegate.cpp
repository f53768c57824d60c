#include "editing/ui/StepListDelegate.h"

#include <QPainter>
#include <algorithm>

#include "device/ui/ListModel.h"
#include "editing/StepList.h"

namespace inspector::editing::ui {
namespace {

constexpr int kSmallestSign = 18;  // logical pixels; with large text it grows
constexpr int kArrow = 12;
constexpr int kPadding = 8;

const QString kComplete = QStringLiteral("Complete");
const QString kIncomplete = QStringLiteral("Incomplete");  // the longest word of a status
const QString kNone = QStringLiteral("None");
const QString kInfo = QStringLiteral("Info");
const QString kNotRated = QStringLiteral("Not rated");

bool IsWarned(const QModelIndex& index) {
  return index.data(device::ui::ListModel::WarnedRole).toBool();
}

int SignSize(const QStyleOptionViewItem& option) {
  return std::max(kSmallestSign, option.fontMetrics.height());
}

bool HasRoomForWords(const QStyleOptionViewItem& option, bool warned) {
  const int mark = warned ? SignSize(option) + kPadding : 0;
  return option.fontMetrics.horizontalAdvance(kIncomplete) + kPadding + mark <= option.rect.width();
}

QColor TextColour(const QStyleOptionViewItem& option) {
  return option.palette.color(option.state & QStyle::State_Selected ? QPalette::HighlightedText
                                                                    : QPalette::Text);
}

QIcon DownArrow(const QColor& colour) {
  QPixmap pixmap(kArrow, kArrow);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colour, 2));
  painter.drawPolyline(QPolygon({QPoint(1, 3), QPoint(kArrow / 2, kArrow - 4), QPoint(kArrow - 1, 3)}));
  return QIcon(pixmap);
}

// A sign with a letter: as a filled disc, so that it reads at any size.
void DrawLetter(QPainter& painter, const QRect& box, const QString& letter, const QColor& paper) {
  QFont font = painter.font();
  font.setBold(true);
  font.setPixelSize(box.height() * 3 / 4);
  painter.setFont(font);
  painter.setBrush(painter.pen().color());
  painter.drawEllipse(box);
  painter.setPen(paper);
  painter.drawText(box, Qt::AlignCenter, letter);
}

QIcon AttentionMark(const QColor& colour, const QColor& paper, int size) {
  QPixmap pixmap(size, size);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(colour);
  DrawLetter(painter, pixmap.rect().adjusted(1, 1, -1, -1), QStringLiteral("!"), paper);
  return QIcon(pixmap);
}

void DrawSign(QPainter& painter, const QRect& box, const QString& word, const QColor& paper) {
  const QPoint middle = box.center();
  const int unit = box.width() / 6;
  if (word == kComplete)
    painter.drawPolyline(
        QPolygon({QPoint(box.left(), middle.y()), QPoint(middle.x() - unit, box.bottom() - unit),
                  QPoint(box.right(), box.top() + unit)}));
  else if (word == kIncomplete)
    painter.drawEllipse(box.adjusted(unit, unit, -unit, -unit));
  else if (word == kNone)
    painter.drawLine(box.left() + 2 * unit, middle.y(), box.right() - 2 * unit, middle.y());
  else
    DrawLetter(painter, box, word == kInfo ? QStringLiteral("i") : word, paper);
}

}  // namespace

void StepListDelegate::Decorate(QStyleOptionViewItem& option, const QModelIndex& index) const {
  // What is missing stands out, not the whole row.
  const bool warned = IsWarned(index);
  if (option.widget && option.text != kNotRated && !warned)
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
      option.palette.setColor(group, QPalette::Text, option.widget->palette().color(group, QPalette::Text));
  if (index.column() == StepList::kRating) {
    option.features |= QStyleOptionViewItem::HasDecoration;
    option.decorationPosition = QStyleOptionViewItem::Right;
    option.decorationSize = QSize(kArrow, kArrow);
    option.icon = DownArrow(TextColour(option));
  }
  if (index.column() < StepList::kMaterials) return;
  if (!HasRoomForWords(option, warned)) {
    option.text.clear();
  } else if (warned) {
    const bool selected = option.state & QStyle::State_Selected;
    option.features |= QStyleOptionViewItem::HasDecoration;
    option.decorationPosition = QStyleOptionViewItem::Right;
    option.decorationSize = QSize(SignSize(option), SignSize(option));
    option.icon = AttentionMark(TextColour(option),
                                option.palette.color(selected ? QPalette::Highlight : QPalette::Base),
                                SignSize(option));
  }
}

void StepListDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
  RowDelegate::paint(painter, option, index);
  const bool warned = IsWarned(index);
  if (index.column() < StepList::kMaterials || HasRoomForWords(option, warned)) return;
  const QString word = warned ? QStringLiteral("!") : index.data().toString();
  if (word.isEmpty()) return;
  QStyleOptionViewItem cell = option;
  initStyleOption(&cell, index);
  const bool selected = cell.state & QStyle::State_Selected;
  const bool quiet = !selected && (word == kIncomplete || word == kNone);
  const int size = std::min(SignSize(cell), cell.rect.width() - kPadding);
  QRect box(0, 0, size, size);
  box.moveCenter(cell.rect.center());
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(QPen(quiet ? cell.palette.color(QPalette::Disabled, QPalette::Text) : TextColour(cell), 2));
  DrawSign(*painter, box, word, cell.palette.color(selected ? QPalette::Highlight : QPalette::Base));
  painter->restore();
}

}  // namespace inspector::editing::ui
