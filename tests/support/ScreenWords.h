// What a person reads on a screen and enters there.
#pragma once

#include <string>

#include "support/Screens.h"

namespace inspector::tests {

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
