#include "app/Program.h"

#include <malloc.h>

#include <iostream>

#include "app/AppSettings.h"
#include "app/EndSignals.h"
#include "app/MainFrame.h"
#include "data/StartUp.h"
#include "device/DefaultHome.h"
#include "device/ui/QtProgressWindow.h"
#include "device/ui/Theme.h"

namespace inspector::app {
namespace {

// A photograph takes tens of megabytes while it is read. Left alone, the allocator takes to keeping such
// blocks after the first of them was freed, in each thread its own: with blocks of their own they go back.
constexpr int kLargeBlock = 1 << 20;  // bytes

}  // namespace

int RunProgram(QApplication& application, const ProgramSettings& settings) {
  mallopt(M_MMAP_THRESHOLD, kLargeBlock);
  const device::DevicePaths paths(settings.home);
  device::HostFiles files;
  device::Registry registry(files, settings.home / device::kRegistryFile);
  device::ui::QtPrompts prompts(paths);
  device::SystemClock clock;
  device::FaultLog faults(prompts, clock, settings.home / device::kLogFile);
  const device::Machine machine{paths, files, registry, prompts, clock, faults};

  // The questions of start-up are the last windows to close when there is no main window yet.
  QApplication::setQuitOnLastWindowClosed(false);
  bool mustEnd = false;
  if (settings.signals) {
    // The upgrade lets signals in while nothing runs yet that could be left.
    settings.signals->onEnd = [&mustEnd] {
      mustEnd = true;
      device::ui::QtProgressWindow::CancelAll();
      QApplication::exit(1);
    };
    settings.signals->Listen();
  }
  device::ui::ApplyTheme(application, ThemeOf(ReadAppSettings(registry)));
  data::StartUp start = data::StartData(machine);
  if (start.result != data::StartUpResult::Ready)
    return start.result == data::StartUpResult::Terminated ? 0 : 1;
  if (mustEnd) return 1;
  inspection::CInspectorDoc document(*start.workspace);
  if (mustEnd || !document.IsOpen()) return 1;

  CMainFrame frame(document);
  prompts.SetWindow(&frame);
  if (settings.signals)
    settings.signals->onEnd = [&frame, &faults] {
      frame.SaveAndThen([&faults](bool isStored) {
        if (!isStored) std::cerr << "inspector: " << device::ToUtf8(faults.Latest()) << "\n";
        QApplication::exit(isStored ? 0 : 1);
      });
    };
  frame.Restore();
  frame.show();
  QApplication::setQuitOnLastWindowClosed(true);
  const int code = QApplication::exec();
  if (settings.signals) settings.signals->onEnd = nullptr;
  return code;
}

}  // namespace inspector::app
