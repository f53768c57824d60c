#include "device/ui/WrappingCheckBox.h"

#include <QPainter>
#include <QStyleOptionButton>
#include <algorithm>

#include "device/ListColumns.h"

namespace inspector::device::ui {
namespace {

constexpr int kWords = Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap | Qt::TextShowMnemonic;
constexpr int kWidthOfDevice = 25;  // pixels that a box takes beside its words

}  // namespace

WrappingCheckBox::WrappingCheckBox(QWidget* parent) : QCheckBox(parent) {
  QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

int WrappingCheckBox::IndicatorSpace() const {
  return std::max(kWidthOfDevice, style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this) +
                                      style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, this));
}

QSize WrappingCheckBox::sizeHint() const {
  const int width = fontMetrics().size(Qt::TextShowMnemonic, text()).width() + IndicatorSpace();
  return {width, heightForWidth(width)};
}

QSize WrappingCheckBox::minimumSizeHint() const {
  return {IndicatorSpace() + kSmallestTarget, kSmallestTarget};
}

int WrappingCheckBox::heightForWidth(int width) const {
  const QRect room(0, 0, std::max(width - IndicatorSpace(), 1), 10000);
  return std::max(kSmallestTarget, fontMetrics().boundingRect(room, kWords, text()).height() + 8);
}

void WrappingCheckBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  const int size = style()->pixelMetric(QStyle::PM_IndicatorWidth, &option, this);
  QStyleOptionButton box = option;
  box.rect = QRect(0, (height() - size) / 2, size, size);
  style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, &painter, this);
  const QRect words = rect().adjusted(IndicatorSpace(), 0, 0, 0);
  style()->drawItemText(&painter, words, kWords, palette(), isEnabled(), text(), QPalette::WindowText);
  if (!hasFocus()) return;
  QStyleOptionFocusRect focus;
  focus.initFrom(this);
  focus.rect = words.adjusted(-2, 1, 0, -1);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
}

}  // namespace inspector::device::ui
