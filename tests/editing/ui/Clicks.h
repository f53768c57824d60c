// What a finger or a keyboard does to a screen.
#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QKeyEvent>

#include "support/ListClicks.h"

namespace inspector::tests {

inline void Press(QWidget& widget, int key) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
  QApplication::sendEvent(&widget, &press);
}

// A command of a screen, by its object name. False when it is disabled.
inline bool Run(QWidget& screen, const char* command) {
  for (QAction* action : screen.actions()) {
    if (action->objectName() != QLatin1String(command)) continue;
    const bool enabled = action->isEnabled();
    action->trigger();
    return enabled;
  }
  ADD_FAILURE() << "no command " << command;
  return false;
}

inline QString CellText(device::ui::ListView& list, int row, int column) {
  return list.Model().index(row, column).data().toString();
}

template <typename Widget>
Widget& Part(QWidget& screen, const char* name) {
  auto* part = screen.findChild<Widget*>(QLatin1String(name));
  EXPECT_NE(part, nullptr) << name;
  return *part;
}

}  // namespace inspector::tests
