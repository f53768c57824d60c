// What the main window shows one of at a time.
#pragma once

#include <QKeySequence>
#include <QWidget>
#include <functional>

class QAction;

namespace inspector::device::ui {

// A screen's commands are its actions(): the main window offers them in a menu, in the bar of large buttons
// and by their keys, in the order in which they were added.
class Screen : public QWidget {
public:
  using QWidget::QWidget;

  // Stands above the screen.
  virtual QString Title() const = 0;
  // Each time the main window brings the screen to the front.
  virtual void OnShow() {}
  // Before another screen comes to the front: writes what was entered. False keeps the person here.
  virtual bool OnLeave() { return Flush(); }
  // Writes what was typed and not written yet: typing paused, the window lost the focus, the system ends.
  // Asks nothing. False when it could not be written.
  virtual bool Flush() { return true; }
  // Whether it is there to be written in; the main window then offers to undo what was typed.
  virtual bool TakesText() const { return false; }
  // Forgets what could not be written: the person wants to leave.
  virtual void Discard() {}
  // After each try to write what was typed: whether it could be. The main window says so for as long as it is
  // not.
  std::function<void(bool stored)> onStored;
  // Asks the main window to show the title again.
  std::function<void()> onTitleChanged;

protected:
  QAction* AddCommand(const char* objectName, const QString& caption, const QKeySequence& key,
                      std::function<void()> run);
};

}  // namespace inspector::device::ui
