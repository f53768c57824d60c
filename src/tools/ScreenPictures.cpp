#include "tools/ScreenPictures.h"

#include <iostream>

#include "app/MainFrame.h"
#include "app/OptionsSheet.h"
#include "data/StartUp.h"
#include "device/ui/DatabasePathsDialog.h"
#include "device/ui/QtPrompts.h"
#include "device/ui/Theme.h"
#include "inspection/ui/InspectionOverviewView.h"
#include "inspection/ui/InspectionSetupView2.h"
#include "inspection/ui/InspectorView.h"

namespace inspector::tools {
namespace {

struct Setting {
  const char* suffix;
  QSize size;
  device::ui::Theme theme;
};

const Setting kSettings[] = {
    {"480x800", {480, 800}, {}},
    {"1280x800", {1280, 800}, {}},
    {"dark", {1280, 800}, {device::ui::Colours::Dark, 100}},
    {"large-text", {480, 800}, {device::ui::Colours::HighContrast, 200}},
};

class Album {
public:
  Album(std::filesystem::path folder, const Setting& setting)
      : m_Folder(std::move(folder)), m_Setting(setting) {}

  bool AllWritten() const { return m_AllWritten; }
  void Take(QWidget& window, const std::string& name) {
    window.resize(m_Setting.size);
    window.show();
    QApplication::processEvents();
    const std::filesystem::path file = m_Folder / (name + "-" + m_Setting.suffix + ".png");
    if (window.grab().save(QString::fromStdString(file.string()))) return;
    std::cerr << "inspector-screens: " << file.string() << " cannot be written.\n";
    m_AllWritten = false;
  }

private:
  std::filesystem::path m_Folder;
  const Setting& m_Setting;
  bool m_AllWritten = true;
};

bool TakeAll(inspection::CInspectorDoc& document, const Setting& setting,
             const std::filesystem::path& folder) {
  Album album(folder, setting);
  app::CMainFrame frame(document);
  frame.Show(setting.theme);
  frame.resize(setting.size);
  frame.show();
  album.Take(frame, "inspections");
  frame.Bring(frame.Header());
  album.Take(frame, "header");
  frame.Bring(frame.SetUp());
  album.Take(frame, "agents");

  app::COptionsSheet options(document.GetWorkspace());
  for (const app::OptionsPage& page : app::OptionsPages()) {
    options.ShowPage(page.title);
    std::string name = "options-" + device::ToUtf8(page.title);
    for (char& letter : name) letter = letter == ' ' ? '-' : static_cast<char>(std::tolower(letter));
    album.Take(options, name);
  }
  device::ui::DatabasePathsDialog paths(document.GetWorkspace().PathsInUse(), nullptr);
  album.Take(paths, "paths");
  return album.AllWritten();
}

}  // namespace

bool WriteScreenPictures(const std::filesystem::path& home, const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  const device::DevicePaths paths(home);
  device::HostFiles files;
  device::Registry registry(files, home / "registry.toml");
  device::ui::QtPrompts prompts(paths);
  device::SystemClock clock;
  device::FaultLog faults(prompts, clock, home / "inspector.log");
  const device::Machine machine{paths, files, registry, prompts, clock, faults};
  if (!std::filesystem::exists(home / "My Documents/Inspection_Data.cdb", error)) {
    std::cerr << "inspector-screens: " << home.string()
              << " holds no databases. To make them: inspector-cli --home '" << home.string()
              << "' init --sample\n";
    return false;
  }
  data::StartUp start = data::StartData(machine);
  if (start.result != data::StartUpResult::Ready) return false;
  inspection::CInspectorDoc document(*start.workspace);
  // The visit that holds most stands last: a fresh device begins with an empty one.
  document.SetCurrentInspection(document.Inspection().RecordCount() - 1);
  bool allWritten = true;
  for (const Setting& setting : kSettings) allWritten = TakeAll(document, setting, folder) && allWritten;
  return allWritten;
}

}  // namespace inspector::tools
