#include "device/ui/CommandBar.h"

#include <QAction>
#include <QEvent>
#include <QPushButton>
#include <algorithm>

#include "device/ListColumns.h"
#include "device/ui/Menu.h"
#include "device/ui/Theme.h"

namespace inspector::device::ui {
namespace {

constexpr int kGap = 6;
constexpr int kWidestButton = 240;
constexpr int kLowWindow = 456;    // of which two rows would take more than a quarter
constexpr int kShareOfWindow = 6;  // the bar's height is at most this part of the window's

}  // namespace

// A QPushButton shows no action by itself, and a QToolButton no focus that is easily seen.
class CommandButton : public QPushButton {
public:
  CommandButton(QAction* action, QWidget* parent) : QPushButton(parent), m_Action(action) {
    setObjectName(action->objectName() + QStringLiteral("Button"));
    setAutoDefault(false);
    // A click leaves the focus where the person works: buttons come and go, and Enter would press the next.
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QPushButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::changed, this, [this] { Follow(); });
    Follow();
  }

  QAction* Action() const { return m_Action; }

private:
  void Follow() {
    // The mnemonic belongs to the menu; the button has its key in the tool tip.
    const QString caption = QString(m_Action->text()).remove(u'&');
    setText(caption);
    setAccessibleName(caption);
    setToolTip(m_Action->toolTip());
    setEnabled(m_Action->isEnabled());
    updateGeometry();
  }

  QAction* m_Action;
};

CommandBar::CommandBar(QWidget* parent)
    : QFrame(parent),
      m_More(new QPushButton(QStringLiteral("More"), this)),
      m_MoreMenu(new Menu(QString(), *this, m_More)) {
  m_More->setObjectName(QStringLiteral("moreButton"));
  m_More->setAccessibleName(QStringLiteral("More commands"));
  m_More->setAutoDefault(false);
  m_More->setFocusPolicy(Qt::TabFocus);
  m_More->setMenu(m_MoreMenu);
  m_More->hide();
  setObjectName(QStringLiteral("commandBar"));
  setAccessibleName(QStringLiteral("Commands"));
}

void CommandBar::SetActions(const QList<QAction*>& actions, const QList<QAction*>& everywhere) {
  m_Everywhere.clear();
  for (QAction* action : everywhere)
    if (!actions.contains(action)) m_Everywhere.append(action);
  for (CommandButton* button : std::as_const(m_Buttons)) {
    // Not at once: a press of this very button may have led here.
    button->hide();
    button->setParent(nullptr);
    button->deleteLater();
  }
  m_Buttons.clear();
  for (QAction* action : actions)
    if (!action->isSeparator()) m_Buttons.append(new CommandButton(action, this));
  LayOut();
}

QList<QPushButton*> CommandBar::Fitting(int perRow, int rows) {
  QList<QPushButton*> fitting;
  m_MoreMenu->clear();
  for (CommandButton* button : std::as_const(m_Buttons))
    if (button->Action()->isVisible()) fitting.append(button);
  const int room = perRow * rows;
  if (fitting.size() > room || !m_Everywhere.isEmpty()) {
    for (; fitting.size() >= room; fitting.removeLast()) {
      QAction* const first = m_MoreMenu->actions().value(0);
      m_MoreMenu->insertAction(first, static_cast<CommandButton*>(fitting.last())->Action());
    }
    if (!m_MoreMenu->isEmpty()) m_MoreMenu->addSeparator();
    m_MoreMenu->addActions(m_Everywhere);
    fitting.append(m_More);
  }
  return fitting;
}

// The width of the widest button if its text had this size.
int CommandBar::WidestWith(const QFont& font) const {
  const QFontMetrics metrics(font);
  const auto width = [&metrics](const QPushButton& button) {
    const QString text = button.text();
    return button.sizeHint().width() - button.fontMetrics().horizontalAdvance(text) +
           metrics.horizontalAdvance(text);
  };
  int widest = std::max(kSmallestTarget, width(*m_More));
  for (const CommandButton* button : std::as_const(m_Buttons))
    if (button->Action()->isVisible()) widest = std::max(widest, width(*button));
  return widest;
}

// In a low window large text becomes smaller until two buttons stand side by side.
int CommandBar::FitText() {
  const QFont full = QApplication::font();
  QFont fitting = full;
  int widest = WidestWith(full);
  while (window()->height() < kLowWindow && width() < 2 * (widest + kGap) + kGap &&
         fitting.pointSizeF() > kUsualPoints) {
    fitting.setPointSizeF(std::max(fitting.pointSizeF() - 1, kUsualPoints));
    widest = WidestWith(fitting);
  }
  setFont(fitting == full ? QFont() : fitting);
  return widest;
}

void CommandBar::LayOut() {
  const int widest = FitText();
  int height = std::max(kSmallestTarget, m_More->sizeHint().height());
  qsizetype count = m_Everywhere.size();
  for (const CommandButton* button : std::as_const(m_Buttons)) {
    if (!button->Action()->isVisible()) continue;
    ++count;
    height = std::max(height, button->sizeHint().height());
  }
  const int mostPerRow = std::max((width() - kGap) / (widest + kGap), 1);
  const int mostRows =
      std::max(window()->height() / kShareOfWindow / (height + kGap), mostPerRow > 1 ? 1 : 2);
  const QList<QPushButton*> fitting = Fitting(mostPerRow, mostRows);
  for (CommandButton* button : std::as_const(m_Buttons)) button->setVisible(fitting.contains(button));
  m_More->setVisible(fitting.contains(m_More));
  if (count == 0) {
    setFixedHeight(0);
    return;
  }
  const int shown = static_cast<int>(fitting.size());
  const int rows = (shown + mostPerRow - 1) / mostPerRow;
  // Seven in rows of six would leave one alone: spread them evenly.
  const int perRow = (shown + rows - 1) / rows;
  const int most = mostPerRow > 1 ? std::max(widest, kWidestButton) : width();
  const int buttonWidth = std::min((width() - kGap * (perRow + 1)) / perRow, most);
  for (int n = 0; n < shown; ++n)
    fitting[n]->setGeometry(kGap + n % perRow * (buttonWidth + kGap), kGap + n / perRow * (height + kGap),
                            buttonWidth, height);
  // Behind everything, also behind what a screen has made since.
  QWidget* before = window()->previousInFocusChain();
  while (before != window() && (before->focusPolicy() == Qt::NoFocus || isAncestorOf(before)))
    before = before->previousInFocusChain();
  for (QPushButton* button : fitting) {
    setTabOrder(before, button);
    before = button;
  }
  setFixedHeight(kGap + rows * (height + kGap));
}

void CommandBar::resizeEvent(QResizeEvent* event) {
  QFrame::resizeEvent(event);
  LayOut();
}

bool CommandBar::event(QEvent* event) {
  // A caption that changed needs another width.
  if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::FontChange ||
      event->type() == QEvent::ApplicationFontChange || event->type() == QEvent::StyleChange)
    LayOut();
  return QFrame::event(event);
}

}  // namespace inspector::device::ui
