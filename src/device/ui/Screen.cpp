#include "device/ui/Screen.h"

#include <QAction>

namespace inspector::device::ui {

QAction* Screen::AddCommand(const char* objectName, const QString& caption, const QKeySequence& key,
                            std::function<void()> run) {
  auto* action = new QAction(caption, this);
  action->setObjectName(QLatin1String(objectName));
  if (!key.isEmpty()) {
    action->setShortcut(key);
    action->setToolTip(QString(caption).remove(u'&') + QStringLiteral(" (") +
                       key.toString(QKeySequence::NativeText) + u')');
  }
  connect(action, &QAction::triggered, this, [run = std::move(run)] { run(); });
  addAction(action);
  return action;
}

}  // namespace inspector::device::ui
