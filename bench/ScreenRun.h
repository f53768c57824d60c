// The application with a person at it: windows are opened, cells clicked and keys typed, as a hand would.
#pragma once

#include <QApplication>
#include <QDialog>
#include <functional>
#include <string>

#include "app/MainFrame.h"
#include "support/ListClicks.h"

namespace inspector::bench {

// Tells when the first window has been painted: the event that painted it has been handled, what it painted
// is on the screen.
class WatchedApplication : public QApplication {
public:
  WatchedApplication(int& count, char** words);
  std::function<void()> onFirstPaint;
  // Before and after the work of a timer.
  std::function<void(bool begins)> onTimer;
  bool notify(QObject* receiver, QEvent* event) override;

private:
  int m_Depth = 0;
  bool m_HasPainted = false;
  bool m_HasTold = false;
};

// Runs the application on the tablet in `folder` from start-up to the closing of its window, which happens
// when `visit` returns. A message box that nobody expects ends the process.
void RunVisit(QApplication& application, const std::filesystem::path& folder,
              const std::function<void(app::CMainFrame&)>& visit);

template <typename Widget>
Widget& Part(const QWidget& screen, const char* name) {
  auto* part = screen.findChild<Widget*>(QLatin1String(name));
  if (!part) qFatal("no %s", name);
  return *part;
}

// The list of the screen that is shown.
device::ui::ListView& Rows(const app::CMainFrame& frame);
using tests::ClickCell;
// Without a text, a key that types nothing.
void Press(QWidget& widget, int key, const QString& text = {}, Qt::KeyboardModifiers with = Qt::NoModifier);
void Type(QWidget& widget, QChar letter);
// `open` shows a dialog and returns when it is closed; `inside` is what the person does in it, then leaves.
void InDialog(const std::function<void()>& open, const std::function<void(QDialog&)>& inside);
// Lets the application go on for so long, timers included.
void Wait(int milliseconds);
// The large visit is the present one, its categories are shown.
void OpenLargeVisit(app::CMainFrame& frame);

}  // namespace inspector::bench
