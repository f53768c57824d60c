#include "device/ui/Menu.h"

#include <QEvent>
#include <QStyleOptionMenuItem>

#include "device/ui/Theme.h"

namespace inspector::device::ui {

Menu::Menu(const QString& title, QWidget& user, QWidget* parent) : QMenu(title, parent) {
  connect(this, &QMenu::aboutToShow, this, [this, &user] { Fit(user.window()->width()); });
}

void Menu::Fit(int width) {
  ShowKeys(true);
  setFont(QFont());
  if (sizeHint().width() <= width) return;
  ShowKeys(false);
  ShrinkToFit(*this, width);
}

void Menu::ShowKeys(bool show) {
  m_ShowsKeys = show;
  QEvent change(QEvent::FontChange);  // else the menu would not measure its entries again
  changeEvent(&change);
}

void Menu::initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const {
  QMenu::initStyleOption(option, action);
  if (!m_ShowsKeys) option->text = option->text.section(u'\t', 0, 0);
}

}  // namespace inspector::device::ui
