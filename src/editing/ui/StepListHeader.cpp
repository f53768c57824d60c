#include "editing/ui/StepListHeader.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyleOptionHeader>
#include <QToolTip>

#include "editing/StepList.h"

namespace inspector::editing::ui {
namespace {

constexpr int kSign = 20;  // logical pixels
constexpr int kPadding = 8;

// Bricks for materials, a balloon for comments, a framed landscape for the picture, an i for information.
void DrawSign(QPainter& painter, const QRect& box, int section) {
  const int third = box.height() / 3;
  switch (section) {
    case StepList::kMaterials:
      for (int course = 0; course < 3; ++course) {
        const int top = box.top() + course * third;
        const int joint = box.left() + (course == 1 ? box.width() / 2 : box.width() / 3);
        painter.drawRect(box.left(), top, box.width(), third);
        painter.drawLine(joint, top, joint, top + third);
      }
      break;
    case StepList::kComments: {
      const QRect balloon = box.adjusted(0, 1, 0, -5);
      painter.drawRoundedRect(balloon, 4, 4);
      painter.drawPolyline(
          QPolygon({QPoint(box.left() + 5, balloon.bottom() + 1), QPoint(box.left() + 5, box.bottom()),
                    QPoint(box.left() + 10, balloon.bottom() + 1)}));
      break;
    }
    case StepList::kPicture:
      painter.drawRect(box.adjusted(0, 2, 0, -2));
      painter.drawPolyline(
          QPolygon({QPoint(box.left() + 2, box.bottom() - 5), QPoint(box.left() + 8, box.top() + 8),
                    QPoint(box.left() + 12, box.bottom() - 7), QPoint(box.right() - 4, box.top() + 9),
                    QPoint(box.right() - 2, box.bottom() - 5)}));
      break;
    default:
      painter.drawEllipse(box);
      painter.drawText(box, Qt::AlignCenter, QStringLiteral("i"));
  }
}

}  // namespace

StepListHeader::StepListHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {}

void StepListHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
  const QString word = model()->headerData(section, Qt::Horizontal).toString();
  if (section < StepList::kMaterials || fontMetrics().horizontalAdvance(word) + kPadding <= rect.width()) {
    QHeaderView::paintSection(painter, rect, section);
    return;
  }
  painter->save();
  QStyleOptionHeader background;
  initStyleOption(&background);
  background.rect = rect;
  background.section = section;
  style()->drawControl(QStyle::CE_HeaderSection, &background, painter, this);
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(QPen(palette().color(QPalette::ButtonText), 1.5));
  QRect box(0, 0, kSign, kSign);
  box.moveCenter(rect.center());
  DrawSign(*painter, box, section);
  painter->restore();
}

bool StepListHeader::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const auto* help = static_cast<QHelpEvent*>(event);
    const int section = logicalIndexAt(help->pos());
    if (section >= 0)
      QToolTip::showText(help->globalPos(), model()->headerData(section, Qt::Horizontal).toString(), this);
    return true;
  }
  return QHeaderView::event(event);
}

}  // namespace inspector::editing::ui
