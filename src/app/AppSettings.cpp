#include "app/AppSettings.h"

namespace inspector::app {
namespace {

using device::Text;

const Text kKey = u"HKEY_CURRENT_USER\\Software\\Brindlecove\\Inspector\\Screen";

}  // namespace

AppSettings ReadAppSettings(const device::Registry& registry) {
  AppSettings settings;
  const Text colours = registry.Read(kKey, u"Colours").value_or(u"");
  if (colours == u"dark" || colours == u"contrast") settings.colours = colours;
  const int percent = device::LeadingInteger(registry.Read(kKey, u"TextPercent").value_or(u""));
  if (percent >= 100 && percent <= 200) settings.textPercent = percent;
  settings.window = registry.ReadBinary(kKey, u"Window").value_or(std::vector<std::uint8_t>());
  return settings;
}

device::ui::Theme ThemeOf(const AppSettings& settings) {
  device::ui::Theme theme;
  theme.textPercent = settings.textPercent;
  if (settings.colours == u"dark") theme.colours = device::ui::Colours::Dark;
  if (settings.colours == u"contrast") theme.colours = device::ui::Colours::HighContrast;
  return theme;
}

bool WriteAppSettings(device::Registry& registry, const AppSettings& settings) {
  return registry.Write(kKey, u"Colours", settings.colours) &&
         registry.Write(kKey, u"TextPercent", device::Decimal(settings.textPercent)) &&
         registry.WriteBinary(kKey, u"Window", settings.window);
}

}  // namespace inspector::app
