// Every window of the application, one after the other, as a person would come across it.
#pragma once

#include <QSize>
#include <QWidget>
#include <filesystem>
#include <functional>
#include <span>
#include <string>

#include "device/ui/Theme.h"

namespace inspector::tools {

struct ScreenSetting {
  const char* name;
  QSize size;  // of the device's screen, in logical pixels
  device::ui::Theme theme = {};
};

// `name` is that of the window, the same for every setting: "steps", "options-general".
using LookAtWindow =
    std::function<void(QWidget& window, const std::string& name, const ScreenSetting& setting)>;

// Opens main window, screens, sheet pages, dialogs and menus of the device at `home` for each setting and
// calls `look` while the window stands there. No larger than the screen, if it lets itself be made so small.
// Changes nothing on the device. Needs a QApplication. False when the device could not be started; why has
// been told.
bool WalkScreens(const std::filesystem::path& home, std::span<const ScreenSetting> settings,
                 const LookAtWindow& look);

}  // namespace inspector::tools
