// One run of the application: the machine it stands on, start-up, the main window.
#pragma once

#include <QApplication>
#include <filesystem>

#include "device/ui/QtPrompts.h"

namespace inspector::app {

class EndSignals;

struct ProgramSettings {
  std::filesystem::path home;     // the device root
  EndSignals* signals = nullptr;  // none: they end the program at once, as the system does it
};

// Returns the exit code: 0 after the window was closed, and after a fault of the databases' structure, which
// has been told; 1 when start-up failed or was left. A signal to end saves what was typed first.
int RunProgram(QApplication& application, const ProgramSettings& settings);

}  // namespace inspector::app
