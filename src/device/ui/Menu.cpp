#include "device/ui/Menu.h"

#include <utility>

#include "device/ui/Theme.h"

namespace inspector::device::ui {

Menu::Menu(const QString& title, QWidget& user, QWidget* parent) : QMenu(title, parent) {
  connect(this, &QMenu::aboutToShow, this, [this, &user] { Fit(user.window()->width()); });
  connect(this, &QMenu::aboutToHide, this, [this] { PutKeysBack(); });
}

void Menu::Fit(int width) {
  PutKeysBack();
  setFont(QFont());
  if (sizeHint().width() <= width) return;
  for (QAction* const action : actions()) {
    // Another menu that is open may have taken them.
    if (action->shortcuts().isEmpty()) continue;
    m_Keys.emplace_back(action, action->shortcuts());
    action->setShortcuts(QList<QKeySequence>());
  }
  ShrinkToFit(*this, width);
}

void Menu::PutKeysBack() {
  for (const auto& [action, keys] : std::exchange(m_Keys, {}))
    if (action) action->setShortcuts(keys);
}

}  // namespace inspector::device::ui
