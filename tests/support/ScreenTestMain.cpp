// The main function of tests that show windows. Needs no display.
#include <gtest/gtest.h>

#include <QApplication>
#include <cstdio>

#include "device/ui/Theme.h"

// What Qt and the font and input libraries below it keep until the end of the process: also one gesture
// recogniser for each list that a finger scrolls.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:QScroller::grabGesture\nleak:libfontconfig\nleak:libglib\nleak:libdbus\nleak:"
         "libqoffscreen\nleak:libpango\n";
}

// The thread sanitizer does not see the locks inside libraries that were built without it: not when Qt paints
// with threads of its own, and not when a picture that was read goes through its queue of events.
extern "C" const char* __tsan_default_suppressions() {
  return "called_from_lib:libQt6Core.so\ncalled_from_lib:libQt6Gui.so\ncalled_from_lib:libQt6Widgets.so\n"
         "called_from_lib:libqoffscreen.so\ncalled_from_lib:libfontconfig.so\nrace:PictureReader.cpp\n";
}

namespace {

// The off-screen platform complains about every dialog that has a smallest size.
void PassOnMessages(QtMsgType, const QMessageLogContext&, const QString& message) {
  if (!message.contains(QLatin1String("propagateSizeHints")))
    std::fprintf(stderr, "%s\n", qPrintable(message));
}

}  // namespace

int main(int count, char** words) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler(PassOnMessages);
  ::testing::InitGoogleTest(&count, words);
  QApplication application(count, words);
  QApplication::setApplicationName(QStringLiteral("Inspector"));
  // Windows of one test close without ending the loop of the next.
  QApplication::setQuitOnLastWindowClosed(false);
  inspector::device::ui::ApplyTheme(application, {});
  return RUN_ALL_TESTS();
}
