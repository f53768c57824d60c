#include "ScreenRun.h"

#include <QEventLoop>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>

#include "ScaleData.h"
#include "app/Program.h"
#include "device/ui/TextConversion.h"

namespace inspector::bench {
namespace {

// The off-screen platform complains about everything that it has no window for.
void PassOnMessages(QtMsgType kind, const QMessageLogContext&, const QString& message) {
  if (!message.startsWith(QLatin1String("This plugin does not support")))
    std::fprintf(stderr, "%s\n", qPrintable(message));
  if (kind == QtFatalMsg) std::exit(1);
}

}  // namespace

WatchedApplication::WatchedApplication(int& count, char** words) : QApplication(count, words) {
  qInstallMessageHandler(PassOnMessages);
}

bool WatchedApplication::notify(QObject* receiver, QEvent* event) {
  if (event->type() == QEvent::Paint) m_HasPainted = true;
  const bool isTimer = onTimer && event->type() == QEvent::Timer;
  if (isTimer) onTimer(true);
  ++m_Depth;
  const bool handled = QApplication::notify(receiver, event);
  if (isTimer) onTimer(false);
  if (--m_Depth == 0 && m_HasPainted && !m_HasTold) {
    m_HasTold = true;
    if (onFirstPaint) onFirstPaint();
  }
  return handled;
}

void RunVisit(QApplication& application, const std::filesystem::path& folder,
              const std::function<void(app::CMainFrame&)>& visit) {
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, &watch, [] {
    if (const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
      Fail(box->text().toStdString());
  });
  watch.start(200);
  bool hasVisited = false;
  QTimer::singleShot(0, [&] {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      auto* const frame = dynamic_cast<app::CMainFrame*>(window);
      if (!frame) continue;
      QApplication::processEvents();
      visit(*frame);
      hasVisited = true;
      frame->close();
    }
  });
  MustBe(app::RunProgram(application, {folder}) == 0 && hasVisited, "the application");
}

device::ui::ListView& Rows(const app::CMainFrame& frame) {
  return *static_cast<device::ui::ListView*>(frame.CurrentScreen()->findChild<QTableView*>());
}

void Press(QWidget& widget, int key, const QString& text, Qt::KeyboardModifiers with) {
  for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, key, with, text);
    QApplication::sendEvent(&widget, &event);
  }
}

void Type(QWidget& widget, QChar letter) {
  Press(widget, letter.toUpper().unicode(), letter);
}

void InDialog(const std::function<void()>& open, const std::function<void(QDialog&)>& inside) {
  bool hasOpened = false;
  QTimer::singleShot(0, [&] {
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog) return;
    hasOpened = true;
    QApplication::processEvents();
    inside(*dialog);
    dialog->reject();
  });
  open();
  MustBe(hasOpened, "a dialog");
}

void Wait(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

void OpenLargeVisit(app::CMainFrame& frame) {
  auto& find = Part<QLineEdit>(*frame.CurrentScreen(), "findField");
  find.setText(device::ui::ToQString(kLargeAddress));
  MustBe(Rows(frame).Model().rowCount() == 1, "the search for the large visit");
  Rows(frame).SelectRow(0);
  Press(Rows(frame), Qt::Key_Return);
  MustBe(frame.Bring(frame.Visit().Categories()), "the list of categories");
  MustBe(Rows(frame).Model().rowCount() == kCategories, "the categories of the large visit");
  QApplication::processEvents();
}

}  // namespace inspector::bench
