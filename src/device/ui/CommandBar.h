// The bar of large buttons below a screen.
#pragma once

#include <QFrame>
#include <QList>

class QAction;
class QMenu;
class QPushButton;

namespace inspector::device::ui {

class CommandButton;

// One button per action, of equal width, in rows. A button has the object name of its action with "Button" at
// the end, and follows its action's caption and state. The bar takes no more than a part of the window's
// height, with smaller text if need be: what finds no room lies in the menu of a last button, "More", with
// what is offered everywhere.
class CommandBar : public QFrame {
public:
  explicit CommandBar(QWidget* parent = nullptr);

  void SetActions(const QList<QAction*>& actions, const QList<QAction*>& everywhere = {});

protected:
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

private:
  void LayOut();
  int WidestWith(const QFont& font) const;
  int FitText();
  // The buttons that have room, the last of them "More" when it is not all.
  QList<QPushButton*> Fitting(int perRow, int rows);

  QList<CommandButton*> m_Buttons;
  QList<QAction*> m_Everywhere;
  QPushButton* m_More;
  QMenu* m_MoreMenu;
};

}  // namespace inspector::device::ui
