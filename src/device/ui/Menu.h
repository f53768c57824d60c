// A menu that is never wider than the window it belongs to.
#pragma once

#include <QAction>
#include <QMenu>
#include <QPointer>
#include <vector>

namespace inspector::device::ui {

// Where its entries have no room, it leaves out their keys; then it makes their words smaller.
class Menu : public QMenu {
public:
  // `user` lies in the window that the menu belongs to, and outlives it.
  Menu(const QString& title, QWidget& user, QWidget* parent);

private:
  void Fit(int width);
  void PutKeysBack();

  // Of the entries, while the menu is open without them: it would leave room for keys that it does not show.
  // One that has left the menu meanwhile gets its own back, too.
  std::vector<std::pair<QPointer<QAction>, QList<QKeySequence>>> m_Keys;
};

}  // namespace inspector::device::ui
