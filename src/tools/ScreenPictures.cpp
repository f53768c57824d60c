#include "tools/ScreenPictures.h"

#include <iostream>

#include "tools/ScreenWalk.h"

namespace inspector::tools {
namespace {

const ScreenSetting kSettings[] = {
    {"480x800", {480, 800}},
    {"1280x800", {1280, 800}},
    {"dark", {1280, 800}, {device::ui::Colours::Dark, 100}},
    {"large-text", {480, 800}, {device::ui::Colours::HighContrast, 200}},
};

}  // namespace

bool WriteScreenPictures(const std::filesystem::path& home, const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  bool allWritten = true;
  const auto take = [&](QWidget& window, const std::string& name, const ScreenSetting& setting) {
    const std::filesystem::path file = folder / (name + "-" + setting.name + ".png");
    if (window.grab().save(QString::fromStdString(file.string()))) return;
    std::cerr << "inspector-screens: " << file.string() << " cannot be written.\n";
    allWritten = false;
  };
  return WalkScreens(home, kSettings, take) && allWritten;
}

}  // namespace inspector::tools
