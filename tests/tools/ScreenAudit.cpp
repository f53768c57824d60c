#include "tools/ScreenAudit.h"

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
#include "device/ui/WrappingCheckBox.h"
#include "editing/ui/StepListHeader.h"

namespace inspector::tests {
namespace {

using device::kSmallestTarget;

// Parts of one control: the field in a box with choices, the button that empties a field.
bool IsPartOfControl(const QWidget& widget) {
  const QWidget* const parent = widget.parentWidget();
  return qobject_cast<const QComboBox*>(parent) || qobject_cast<const QAbstractSpinBox*>(parent) ||
         widget.inherits("QScrollBar") || widget.inherits("QComboBoxPrivateScroller");
}

class Audit {
public:
  Audit(QWidget& window, const QSize& screen) : m_Window(window) {
    if (window.width() > screen.width() || window.height() > screen.height())
      Report(window, "is larger than the screen: " + Size(window.size()));
    for (QWidget* each : window.findChildren<QWidget*>())
      if (each->isVisible() && each->window() == &window && !IsPartOfControl(*each)) m_Shown.push_back(each);
  }

  std::vector<std::string> Faults() {
    for (QWidget* each : m_Shown) {
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
  static std::string Size(const QSize& size) {
    return std::to_string(size.width()) + "x" + std::to_string(size.height());
  }
  void Report(const QWidget& widget, const std::string& what) {
    const QString name = widget.objectName().isEmpty()
                             ? widget.parentWidget() ? widget.parentWidget()->objectName() : QString()
                             : widget.objectName();
    m_Faults.push_back(std::string(widget.metaObject()->className()) + " " + name.toStdString() + " " + what);
  }

  void CheckName(QWidget& widget) {
    if (widget.focusPolicy() == Qt::NoFocus || widget.focusProxy()) return;
    const QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(&widget);
    if (!told || told->text(QAccessible::Name).trimmed().isEmpty()) Report(widget, "has no name");
  }

  void CheckSize(const QWidget& widget, const QString& what, const QSize& size) {
    if (size.width() < kSmallestTarget || size.height() < kSmallestTarget)
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
      const int beside = place.height() * 4 / 5 + keys + 20;
      if (!action->isSeparator())
        CheckRoom(menu, action->text(),
                  menu.fontMetrics().size(Qt::TextShowMnemonic, action->text()) + QSize(beside, 0),
                  place.size());
    }
  }
  void CheckTarget(QWidget& widget) {
    if (qobject_cast<QAbstractButton*>(&widget) || qobject_cast<QComboBox*>(&widget) ||
        qobject_cast<QLineEdit*>(&widget) || qobject_cast<QAbstractSpinBox*>(&widget) ||
        qobject_cast<QPlainTextEdit*>(&widget))
      CheckSize(widget, {}, widget.size());
    if (const auto* tabs = qobject_cast<QTabBar*>(&widget))
      for (int tab = 0; tab < tabs->count(); ++tab)
        CheckSize(*tabs, tabs->tabText(tab), tabs->tabRect(tab).size());
    if (const auto* menu = qobject_cast<QMenuBar*>(&widget)) CheckActions(*menu);
    const auto* rows = qobject_cast<QAbstractItemView*>(&widget);
    if (rows && !rows->inherits("QHeaderView") && rows->model() && rows->model()->rowCount() > 0) {
      const QModelIndex first = rows->model()->index(0, 0);
      if (const int height = rows->visualRect(first).height(); height > 0)
        CheckSize(*rows, QStringLiteral("row"), {kSmallestTarget, height});
    }
  }

  // `needed`: the room that the words take; `room`: what they have.
  void CheckRoom(const QWidget& widget, const QString& words, const QSize& needed, const QSize& room) {
    if (needed.width() > room.width() || needed.height() > room.height())
      Report(widget, "cuts \"" + words.toStdString() + "\": " + Size(needed) + " in " + Size(room));
  }
  void CheckLabel(const QLabel& label) {
    if (label.text().isEmpty()) return;
    QSize needed = label.minimumSizeHint();
    if (label.wordWrap()) {
      const QRect room(0, 0, label.contentsRect().width(), 10000);
      const QFontMetrics metrics = label.fontMetrics();
      needed = {metrics.boundingRect(room, Qt::TextWordWrap, label.text()).width(),
                label.heightForWidth(label.width())};
    } else {
      needed = label.sizeHint();
    }
    CheckRoom(label, label.text(), needed, label.size());
  }
  void CheckButton(const QAbstractButton& button) {
    const auto* tool = qobject_cast<const QToolButton*>(&button);
    if (button.text().isEmpty() || (tool && tool->toolButtonStyle() == Qt::ToolButtonIconOnly)) return;
    QSize room = button.size();
    QSize needed = button.fontMetrics().size(Qt::TextShowMnemonic, button.text());
    if (dynamic_cast<const device::ui::WrappingCheckBox*>(&button))
      needed = {button.minimumSizeHint().width(), button.heightForWidth(button.width())};
    else if (qobject_cast<const QCheckBox*>(&button))
      needed = button.sizeHint();
    else
      room -= QSize(8, 0);
    CheckRoom(button, button.text(), needed, room);
  }
  void CheckWords(QWidget& widget) {
    if (m_Window.inherits("QFileDialog")) return;  // paths of any length
    if (const auto* label = qobject_cast<QLabel*>(&widget)) CheckLabel(*label);
    if (const auto* button = qobject_cast<QAbstractButton*>(&widget)) CheckButton(*button);
    const QFontMetrics metrics = widget.fontMetrics();
    if (const auto* line = qobject_cast<QLineEdit*>(&widget); line && line->text().isEmpty())
      CheckRoom(widget, line->placeholderText(), {metrics.horizontalAdvance(line->placeholderText()), 0},
                line->size());
    if (const auto* box = qobject_cast<QComboBox*>(&widget); box && !box->isEditable()) {
      QStyleOptionComboBox option;
      option.initFrom(box);
      const QString words = box->currentIndex() < 0 ? box->placeholderText() : box->currentText();
      CheckRoom(widget, words, {metrics.horizontalAdvance(words), 0},
                box->style()
                    ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, box)
                    .size());
    }
    if (const auto* tabs = qobject_cast<QTabBar*>(&widget))
      CheckRoom(widget, QStringLiteral("the tabs"), tabs->sizeHint(), tabs->size());
    if (const auto* table = qobject_cast<QTableView*>(&widget)) CheckHeadings(*table);
  }
  void CheckHeadings(const QTableView& table) {
    const QHeaderView& header = *table.horizontalHeader();
    // That of the steps shows a sign where a word has no room.
    if (!header.isVisible() || dynamic_cast<const editing::ui::StepListHeader*>(&header)) return;
    for (int section = 0; section < header.count(); ++section) {
      const QString words = table.model()->headerData(section, Qt::Horizontal).toString();
      CheckRoom(table, words, {header.fontMetrics().horizontalAdvance(words), 0},
                {header.sectionSize(section) - 8, 0});
    }
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
  std::vector<QWidget*> m_Shown;
  std::vector<std::string> m_Faults;
};

}  // namespace

std::vector<std::string> FaultsOf(QWidget& window, const QSize& screen) {
  return Audit(window, screen).Faults();
}

}  // namespace inspector::tests
