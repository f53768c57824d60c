// What a finger or a keyboard does to a screen, and the controls that are on most screens.
#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include "support/ListClicks.h"
#include "support/ScriptedDialogs.h"

namespace inspector::tests {

// A control or command of a screen by its object name.
template <typename Control>
Control& Part(const QWidget& screen, const char* name) {
  auto* part = screen.findChild<Control*>(QLatin1String(name));
  EXPECT_NE(part, nullptr) << name;
  return *part;
}

// Chooses an entry as a person does.
inline void Choose(QComboBox& box, int entry) {
  box.setCurrentIndex(entry);
  Q_EMIT box.activated(entry);
}
inline void Choose(QComboBox& box, const char* entry) {
  Choose(box, box.findText(QLatin1String(entry)));
}

// A command of a screen. False when it is disabled.
inline bool Run(QWidget& screen, const char* command) {
  auto& action = Part<QAction>(screen, command);
  const bool enabled = action.isEnabled();
  action.trigger();
  return enabled;
}

inline QString CellText(device::ui::ListView& list, int row, int column) {
  return list.Model().index(row, column).data().toString();
}

}  // namespace inspector::tests
