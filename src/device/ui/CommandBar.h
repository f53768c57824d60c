// The bar of large buttons below a screen.
#pragma once

#include <QFrame>
#include <QList>

class QAction;

namespace inspector::device::ui {

// One button per action, of equal width, in as many rows as the width asks for. A button has the object name
// of its action with "Button" at the end, and follows its action's caption and state.
class CommandBar : public QFrame {
public:
  explicit CommandBar(QWidget* parent = nullptr);

  void SetActions(const QList<QAction*>& actions);

protected:
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

private:
  void LayOut();
  QList<QWidget*> m_Buttons;
};

}  // namespace inspector::device::ui
