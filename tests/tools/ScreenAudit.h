// Looks at a window with the eyes of a person who hears it, who has a large finger, and who reads large text.
#pragma once

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStyleOption>
#include <QTabBar>
#include <QTableView>
#include <QToolButton>

#include "device/ListColumns.h"
#include "editing/ui/StepListHeader.h"

namespace inspector::tests {

// Finds the faults of a window that stands on a screen of this size, each with the control that has it:
//
// a control without a name to be read out; a target too small for a finger; a way of the Tab key that jumps;
// words that are cut; what must be scrolled sideways; what lies outside of what it is in.
class ScreenAudit {
public:
  ScreenAudit(QWidget& window, const QSize& screen) : m_Window(window) {
    if (window.width() > screen.width() || window.height() > screen.height())
      Report(window, "is larger than the screen: " + Size(window.size()));
  }

  std::vector<std::string> Faults() {
    for (QWidget* each : m_Window.findChildren<QWidget*>()) {
      if (!each->isVisible() || each->window() != &m_Window || IsPartOfControl(*each)) continue;
      CheckName(*each);
      CheckTarget(*each);
      CheckWords(*each);
      CheckPlace(*each);
    }
    if (auto* const menu = qobject_cast<QMenu*>(&m_Window)) {
      CheckActions(*menu);
      CheckEntries(*menu);
    }
    CheckWayOfTab();
    return std::move(m_Faults);
  }

private:
  // Parts of one control: the field in a box with choices, the button that empties a field.
  static bool IsPartOfControl(const QWidget& widget) {
    const QWidget* const parent = widget.parentWidget();
    return qobject_cast<const QComboBox*>(parent) || qobject_cast<const QAbstractSpinBox*>(parent) ||
           widget.inherits("QScrollBar") || widget.inherits("QComboBoxPrivateScroller");
  }
  static std::string Size(const QSize& size) {
    return std::to_string(size.width()) + "x" + std::to_string(size.height());
  }
  void Report(const QWidget& widget, const std::string& what) {
    const QWidget* const named = widget.objectName().isEmpty() ? widget.parentWidget() : &widget;
    m_Faults.push_back(std::string(widget.metaObject()->className()) + " " +
                       (named ? named->objectName().toStdString() : "") + " " + what);
  }

  void CheckName(QWidget& widget) {
    if (widget.focusPolicy() == Qt::NoFocus || widget.focusProxy()) return;
    const QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(&widget);
    if (!told || told->text(QAccessible::Name).trimmed().isEmpty()) Report(widget, "has no name");
  }

  void CheckSize(const QWidget& widget, const QString& what, const QSize& size) {
    if (size.width() < device::kSmallestTarget || size.height() < device::kSmallestTarget)
      Report(widget, "is too small a target: " + what.toStdString() + " " + Size(size));
  }
  template <typename Bar>
  void CheckActions(const Bar& bar) {
    for (QAction* action : bar.actions()) {
      const QRect place = bar.actionGeometry(action);
      if (action->isSeparator() || !action->isVisible() || place.isEmpty()) continue;
      if (bar.rect().contains(place))
        CheckSize(bar, action->text(), place.size());
      else if (!bar.template findChild<QToolButton*>(QStringLiteral("qt_menubar_ext_button")))
        Report(bar, "leaves out " + action->text().toStdString());
    }
  }
  // Beside its words an entry has a mark, which is nearly as wide as it is high, its keys, and margins.
  void CheckEntries(const QMenu& menu) {
    int keys = 0;
    for (const QAction* action : menu.actions())
      keys = std::max(keys, menu.fontMetrics().horizontalAdvance(action->shortcut().toString()));
    for (QAction* action : menu.actions()) {
      const QRect place = menu.actionGeometry(action);
      const QSize words = menu.fontMetrics().size(Qt::TextShowMnemonic, action->text());
      if (!action->isSeparator())
        CheckRoom(menu, action->text(), words + QSize(place.height() * 4 / 5 + keys + 20, 0), place.size());
    }
  }
  void CheckTarget(QWidget& widget) {
    for (const char* kind :
         {"QAbstractButton", "QComboBox", "QLineEdit", "QAbstractSpinBox", "QPlainTextEdit"})
      if (widget.inherits(kind)) CheckSize(widget, {}, widget.size());
    if (const auto* tabs = qobject_cast<QTabBar*>(&widget))
      for (int tab = 0; tab < tabs->count(); ++tab)
        CheckSize(*tabs, tabs->tabText(tab), tabs->tabRect(tab).size());
    if (const auto* menu = qobject_cast<QMenuBar*>(&widget)) CheckActions(*menu);
    const auto* rows = qobject_cast<QAbstractItemView*>(&widget);
    if (!rows || rows->inherits("QHeaderView") || !rows->model()) return;
    if (const int height = rows->visualRect(rows->model()->index(0, 0)).height(); height > 0)
      CheckSize(*rows, QStringLiteral("row"), {device::kSmallestTarget, height});
  }

  // `needed`: the room that the words take; `room`: what they have.
  void CheckRoom(const QWidget& widget, const QString& words, const QSize& needed, const QSize& room) {
    if (needed.width() > room.width() || needed.height() > room.height())
      Report(widget, "cuts \"" + words.toStdString() + "\": " + Size(needed) + " in " + Size(room));
  }
  void CheckWords(QWidget& widget) {
    if (m_Window.inherits("QFileDialog")) return;  // paths of any length
    const auto* const label = qobject_cast<QLabel*>(&widget);
    const auto* const button = qobject_cast<QAbstractButton*>(&widget);
    const QString words = label ? label->text() : button ? button->text() : QString();
    if (qobject_cast<QTabBar*>(&widget) || !words.isEmpty()) {
      QSize needed = widget.minimumSizeHint();
      if (widget.hasHeightForWidth()) needed.setHeight(widget.heightForWidth(widget.width()));
      // A button may do without its margins.
      if (button && !qobject_cast<QCheckBox*>(&widget))
        needed = button->fontMetrics().size(Qt::TextShowMnemonic, words) + QSize(8, 0);
      const auto* const tool = qobject_cast<QToolButton*>(&widget);
      if (!tool || tool->toolButtonStyle() != Qt::ToolButtonIconOnly)
        CheckRoom(widget, words, needed, widget.size());
    }
    if (const auto* line = qobject_cast<QLineEdit*>(&widget); line && line->text().isEmpty())
      CheckLine(widget, line->placeholderText(), line->width());
    if (const auto* box = qobject_cast<QComboBox*>(&widget); box && !box->isEditable()) {
      QStyleOptionComboBox option;
      option.initFrom(box);
      CheckLine(widget, box->currentIndex() < 0 ? box->placeholderText() : box->currentText(),
                box->style()
                    ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, box)
                    .width());
    }
    if (const auto* table = qobject_cast<QTableView*>(&widget)) CheckHeadings(*table);
  }
  void CheckLine(const QWidget& widget, const QString& words, int width) {
    CheckRoom(widget, words, {widget.fontMetrics().horizontalAdvance(words), 0}, {width, 0});
  }
  void CheckHeadings(const QTableView& table) {
    const QHeaderView& header = *table.horizontalHeader();
    // That of the steps shows a sign where a word has no room.
    if (!header.isVisible() || dynamic_cast<const editing::ui::StepListHeader*>(&header)) return;
    for (int section = 0; section < header.count(); ++section)
      CheckLine(header, table.model()->headerData(section, Qt::Horizontal).toString(),
                header.sectionSize(section) - 8);
  }

  void CheckPlace(QWidget& widget) {
    const auto* area = qobject_cast<QAbstractScrollArea*>(&widget);
    if (area && area->horizontalScrollBar()->maximum() > 0 && !area->inherits("QHeaderView"))
      Report(widget,
             "must be scrolled sideways by " + std::to_string(area->horizontalScrollBar()->maximum()));
    const QWidget* const around = widget.parentWidget();
    if (AreaOf(widget) == around->parentWidget() && around->parentWidget()) return;  // it scrolls
    if (!around->rect().contains(widget.geometry()) && !widget.geometry().isEmpty())
      Report(widget, "lies outside of its surroundings by " +
                         Size(widget.geometry().united(around->rect()).size() - around->size()));
  }
  // The largest area that scrolls with the widget and not with the other one.
  static const QWidget* AreaWithout(const QWidget& widget, const QWidget& other) {
    const QWidget* largest = nullptr;
    for (const QAbstractScrollArea* area = AreaOf(widget); area && !area->isAncestorOf(&other);
         area = AreaOf(*area))
      largest = area;
    return largest;
  }
  // The area with whose content the widget scrolls.
  static const QAbstractScrollArea* AreaOf(const QWidget& widget) {
    for (const QWidget* each = &widget; each->parentWidget(); each = each->parentWidget()) {
      const auto* area = qobject_cast<const QAbstractScrollArea*>(each->parentWidget()->parentWidget());
      if (area && area->viewport() == each->parentWidget()) return area;
    }
    return nullptr;
  }

  // In the order of reading: down, to the right, and up only into a column further right.
  void CheckWayOfTab() {
    const QWidget* last = nullptr;
    for (QWidget* next = m_Window.nextInFocusChain(); next != &m_Window; next = next->nextInFocusChain()) {
      if (!next->isVisible() || !next->isEnabled() || next->window() != &m_Window ||
          !(next->focusPolicy() & Qt::TabFocus) || next->focusProxy() || IsPartOfControl(*next))
        continue;
      if (last) CheckStep(*last, *next);
      last = next;
    }
  }
  QRect PlaceOf(const QWidget& widget) const {
    return {widget.mapTo(&m_Window, QPoint(0, 0)), widget.size()};
  }
  void CheckStep(const QWidget& from, const QWidget& to) {
    QRect a = PlaceOf(from);
    QRect b = PlaceOf(to);
    // Into and out of an area that scrolls: what cannot be seen has its place within.
    if (const QWidget* area = AreaWithout(from, to)) a = PlaceOf(*area);
    if (const QWidget* area = AreaWithout(to, from)) b = PlaceOf(*area);
    const bool isAbove = b.bottom() <= a.top();
    const bool isBelow = b.top() >= a.bottom();
    const bool isRight = b.left() >= a.right();
    if (isRight || isBelow || (!isAbove && b.left() >= a.left() && b.top() >= a.top())) return;
    Report(to, "comes after " + from.objectName().toStdString() + ", which lies behind it");
  }

  QWidget& m_Window;
  std::vector<std::string> m_Faults;
};

}  // namespace inspector::tests
