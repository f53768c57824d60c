// How controls are drawn: flat, and large enough for a finger.
#pragma once

#include <QProxyStyle>

#include "device/ListColumns.h"

namespace inspector::device::ui {

// Buttons, fields, menu entries, tabs, check boxes and drop-downs become at least kSmallestTarget high,
// whatever the font. Set once for the whole application.
class TouchStyle : public QProxyStyle {
public:
  TouchStyle();

  // A form that is scrolled must not change under the pointer: the wheel changes no drop-down, and a number
  // or a date only where the focus is.
  using QProxyStyle::polish;
  void polish(QWidget* widget) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
  QRect subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const override;
  // On dark colours the frames of fields and buttons would hardly differ from what is around them.
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override;
};

}  // namespace inspector::device::ui
