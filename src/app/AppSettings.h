// What the main window remembers of itself from one run to the next.
#pragma once

#include <cstdint>
#include <vector>

#include "device/Registry.h"
#include "device/ui/Theme.h"

namespace inspector::app {

struct AppSettings {
  device::Text colours = u"light";   // "light", "dark" or "contrast"
  int textPercent = 100;             // 100, 125, 150 or 200
  std::vector<std::uint8_t> window;  // size and place, in the words of the window system
};

// What is missing or makes no sense has its value from above.
AppSettings ReadAppSettings(const device::Registry& registry);
// The look that they ask for.
device::ui::Theme ThemeOf(const AppSettings& settings);
bool WriteAppSettings(device::Registry& registry, const AppSettings& settings);

}  // namespace inspector::app
