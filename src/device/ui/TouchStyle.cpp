#include "device/ui/TouchStyle.h"

#include <QAbstractSpinBox>
#include <QEvent>
#include <QPainter>
#include <QStyleOption>
#include <QtMath>

#include "device/ui/Theme.h"

namespace inspector::device::ui {
namespace {

constexpr double kMarkColumn = 0.79;  // the width of a menu's column of marks by the height of an entry
constexpr int kFieldMargin = 6;       // beside the text of a field

void DrawFrame(const QStyleOption& option, QPainter& painter) {
  if (!IsDark(option.palette)) return;
  QColor line = option.palette.color(QPalette::Text);
  // Black on black has no shades: there the line is as clear as the text.
  if (option.palette.color(QPalette::Window) != Qt::black) line.setAlpha(110);
  if (option.state & QStyle::State_HasFocus) line = option.palette.color(QPalette::Highlight);
  painter.save();
  painter.setPen(line);
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
  painter.restore();
}

}  // namespace

TouchStyle::TouchStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void TouchStyle::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  if (!qobject_cast<QAbstractSpinBox*>(widget)) return;
  widget->setFocusPolicy(Qt::StrongFocus);
  widget->installEventFilter(this);
}

bool TouchStyle::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus())
    return QProxyStyle::eventFilter(watched, event);
  event->ignore();  // the area around it scrolls
  return true;
}

QSize TouchStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                   const QWidget* widget) const {
  QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
  switch (type) {
    case CT_PushButton:
    case CT_ToolButton:
    case CT_MenuBarItem:
      return size.expandedTo({kSmallestTarget, kSmallestTarget});
    case CT_LineEdit:
    case CT_ComboBox:
    case CT_SpinBox:
    case CT_CheckBox:
    case CT_RadioButton:
    case CT_TabBarTab:
    case CT_HeaderSection:
    case CT_ItemViewItem:
      return size.expandedTo({0, kSmallestTarget});
    case CT_MenuItem:
      if (contents.height() <= 0 || size.height() <= 10) return size;  // a separator is no target
      size = size.expandedTo({0, kSmallestTarget});
      // The column of marks is drawn in proportion to the height, and would take its width from the words.
      return size + QSize(qCeil(size.height() * kMarkColumn), 0);
    default:
      return size;
  }
}

int TouchStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
      return 24;
    case PM_ButtonIconSize:
    case PM_ToolBarIconSize:
    case PM_SmallIconSize:
      return 24;
    case PM_TabBarScrollButtonWidth:
    case PM_ToolBarExtensionExtent:
      return kSmallestTarget;
    case PM_MenuBarItemSpacing:
      return 4;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

QRect TouchStyle::subElementRect(SubElement element, const QStyleOption* option,
                                 const QWidget* widget) const {
  const QRect rect = QProxyStyle::subElementRect(element, option, widget);
  return element == SE_LineEditContents ? rect.adjusted(kFieldMargin, 0, -kFieldMargin, 0) : rect;
}

void TouchStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  if (element == PE_FrameLineEdit || element == PE_Frame || element == PE_PanelButtonCommand ||
      element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton ||
      element == PE_IndicatorItemViewItemCheck)
    DrawFrame(*option, *painter);
}

void TouchStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawComplexControl(control, option, painter, widget);
  if (control == CC_ComboBox || control == CC_SpinBox) DrawFrame(*option, *painter);
}

int TouchStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* returned) const {
  switch (hint) {
    case SH_ComboBox_Popup:
      return 0;  // a list below the field, whose height the forms decide
    case SH_ItemView_ActivateItemOnSingleClick:
    case SH_ComboBox_AllowWheelScrolling:
    case SH_DialogButtonBox_ButtonsHaveIcons:  // which a handheld has no room for
      return 0;
    case SH_UnderlineShortcut:
      return 1;
    default:
      return QProxyStyle::styleHint(hint, option, widget, returned);
  }
}

}  // namespace inspector::device::ui
