// What a finger or a keyboard does to a screen and a person reads there, and the controls of most screens.
#pragma once

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
inline bool RunCommand(QWidget& screen, const char* command) {
  auto& action = Part<QAction>(screen, command);
  const bool enabled = action.isEnabled();
  action.trigger();
  return enabled;
}

inline QString CellText(device::ui::ListView& list, int row, int column) {
  return list.Model().index(row, column).data().toString();
}

// Of a label, a button or a field of one line, by its object name.
inline std::string Words(const QWidget& screen, const char* name) {
  return Part<QWidget>(screen, name).property("text").toString().toStdString();
}
// Into a field of one line or several, all at once.
inline void Fill(const QWidget& screen, const char* name, const std::string& words) {
  auto& field = Part<QWidget>(screen, name);
  field.setProperty(field.inherits("QPlainTextEdit") ? "plainText" : "text", QString::fromStdString(words));
}

// A screen as it stands on a handheld.
template <typename View>
void ShowOnHandheld(View& view) {
  view.resize(480, 560);
  view.show();
  view.OnShow();
  QApplication::processEvents();
}

// The cell of a list.
inline std::string CellWords(device::ui::ListView& list, int row, int column) {
  return CellText(list, row, column).toStdString();
}
// The entries of a list, joined with '|'.
inline std::string Entries(const QWidget& screen, const char* name) {
  std::string entries;
  const auto& list = Part<QListWidget>(screen, name);
  for (int row = 0; row < list.count(); ++row)
    entries += (row > 0 ? "|" : "") + list.item(row)->text().toStdString();
  return entries;
}

}  // namespace inspector::tests
