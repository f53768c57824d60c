// A menu that is never wider than the window it belongs to.
#pragma once

#include <QMenu>

namespace inspector::device::ui {

// Where its entries have no room, it leaves out their keys; then it makes their words smaller.
class Menu : public QMenu {
public:
  // `user` lies in the window that the menu belongs to, and outlives it.
  Menu(const QString& title, QWidget& user, QWidget* parent);

protected:
  void initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const override;

private:
  void Fit(int width);
  void ShowKeys(bool show);

  bool m_ShowsKeys = true;
};

}  // namespace inspector::device::ui
