#include "device/ui/TouchStyle.h"

namespace inspector::device::ui {

TouchStyle::TouchStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

QSize TouchStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                   const QWidget* widget) const {
  QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
  switch (type) {
    case CT_PushButton:
    case CT_ToolButton:
      return size.expandedTo({kSmallestTarget, kSmallestTarget});
    case CT_LineEdit:
    case CT_ComboBox:
    case CT_SpinBox:
    case CT_CheckBox:
    case CT_RadioButton:
    case CT_MenuBarItem:
    case CT_TabBarTab:
    case CT_HeaderSection:
    case CT_ItemViewItem:
      return size.expandedTo({0, kSmallestTarget});
    case CT_MenuItem:
      // A separator is no target.
      return contents.height() > 0 && size.height() > 10 ? size.expandedTo({0, kSmallestTarget}) : size;
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
      return kSmallestTarget;
    case PM_MenuBarItemSpacing:
      return 4;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int TouchStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* returned) const {
  switch (hint) {
    case SH_ComboBox_Popup:
      return 0;  // a list below the field, whose height the forms decide
    case SH_ItemView_ActivateItemOnSingleClick:
      return 0;
    case SH_UnderlineShortcut:
      return 1;
    default:
      return QProxyStyle::styleHint(hint, option, widget, returned);
  }
}

}  // namespace inspector::device::ui
