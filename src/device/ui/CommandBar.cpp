#include "device/ui/CommandBar.h"

#include <QAction>
#include <QEvent>
#include <QPushButton>
#include <algorithm>

#include "device/ListColumns.h"

namespace inspector::device::ui {
namespace {

constexpr int kGap = 6;

// A QPushButton shows no action by itself, and a QToolButton no focus that is easily seen.
class CommandButton : public QPushButton {
public:
  CommandButton(QAction* action, QWidget* parent) : QPushButton(parent), m_Action(action) {
    setObjectName(action->objectName() + QStringLiteral("Button"));
    setAutoDefault(false);
    connect(this, &QPushButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::changed, this, [this] { Follow(); });
    Follow();
  }

private:
  void Follow() {
    // The mnemonic belongs to the menu; the button has its key in the tool tip.
    const QString caption = QString(m_Action->text()).remove(u'&');
    setText(caption);
    setAccessibleName(caption);
    setToolTip(m_Action->toolTip());
    setEnabled(m_Action->isEnabled());
    setVisible(m_Action->isVisible());
  }

  QAction* m_Action;
};

}  // namespace

CommandBar::CommandBar(QWidget* parent) : QFrame(parent) {
  setObjectName(QStringLiteral("commandBar"));
  setAccessibleName(QStringLiteral("Commands"));
}

void CommandBar::SetActions(const QList<QAction*>& actions) {
  for (QWidget* button : std::as_const(m_Buttons)) {
    // Not at once: a press of this very button may have led here.
    button->hide();
    button->setParent(nullptr);
    button->deleteLater();
  }
  m_Buttons.clear();
  for (QAction* action : actions) {
    if (action->isSeparator()) continue;
    m_Buttons.append(new CommandButton(action, this));
  }
  for (QWidget* button : std::as_const(m_Buttons)) button->show();
  LayOut();
}

void CommandBar::LayOut() {
  QList<QWidget*> shown;
  int widest = kSmallestTarget;
  int height = kSmallestTarget;
  for (QWidget* button : std::as_const(m_Buttons)) {
    if (button->isHidden()) continue;
    shown.append(button);
    widest = std::max(widest, button->sizeHint().width());
    height = std::max(height, button->sizeHint().height());
  }
  const int count = static_cast<int>(shown.size());
  if (count == 0) {
    setFixedHeight(0);
    return;
  }
  const int fitting = std::clamp((width() - kGap) / (widest + kGap), 1, count);
  const int rows = (count + fitting - 1) / fitting;
  // Seven in rows of six would leave one alone: spread them evenly.
  const int perRow = (count + rows - 1) / rows;
  const int buttonWidth = std::min((width() - kGap * (perRow + 1)) / perRow, 240);
  for (int n = 0; n < count; ++n)
    shown[n]->setGeometry(kGap + n % perRow * (buttonWidth + kGap), kGap + n / perRow * (height + kGap),
                          buttonWidth, height);
  setFixedHeight(kGap + rows * (height + kGap));
}

void CommandBar::resizeEvent(QResizeEvent* event) {
  QFrame::resizeEvent(event);
  LayOut();
}

bool CommandBar::event(QEvent* event) {
  // A caption that changed needs another width.
  if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::FontChange ||
      event->type() == QEvent::StyleChange)
    LayOut();
  return QFrame::event(event);
}

}  // namespace inspector::device::ui
