#include "tools/ScreenPictures.h"

#include <iostream>

#include "app/MainFrame.h"
#include "app/OptionsSheet.h"
#include "data/StartUp.h"
#include "device/Format.h"
#include "device/ui/DatabasePathsDialog.h"
#include "device/ui/QtPrompts.h"
#include "device/ui/Theme.h"
#include "editing/CategoryOpening.h"
#include "editing/ui/StepPropertySheet.h"
#include "inspection/ui/InspectionOverviewView.h"
#include "inspection/ui/InspectionSetupView2.h"
#include "inspection/ui/InspectorView.h"
#include "reports/ui/SelectCategoriesPage.h"

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

// The category with the most to see: materials, comments and pictures.
constexpr char kTelling[] = "Roof";

void TakeVisit(Album& album, app::CMainFrame& frame, inspection::CInspectorDoc& document) {
  frame.Bring(frame.Visit().Categories());
  album.Take(frame, "categories");
  data::CategoryTable& categories = document.Categories();
  for (int row = 0; row < categories.RecordCount(); ++row) {
    if (!categories.GetRecord(row)) continue;
    const bool isForm = categories.m_Type == editing::kFormCategory;
    if (!isForm && categories.m_CategoryTitle != device::FromUtf8(kTelling)) continue;
    const std::int32_t category = categories.m_CategoryID;
    if (!frame.Visit().OpenPlace(category, 0)) continue;
    album.Take(frame, isForm ? "form" : "steps");
    if (isForm) continue;
    data::StepTable steps(document.GetWorkspace().GetDatabases());
    steps.OpenSQL(device::Format(u"SELECT * FROM Step WHERE CategoryID = %d Order By StepNumber", category));
    if (!steps.GetRecord(0)) continue;
    for (int page = 0; page < 4; ++page) {
      editing::ui::CStepPropertySheet sheet(document, &frame);
      if (sheet.OpenStep(category, steps.m_StepID, page))
        album.Take(sheet, "step-" + std::to_string(page + 1));
    }
  }
  frame.Bring(frame.Visit().Review());
  album.Take(frame, "review");
  frame.Bring(frame.Visit().WhatIsLeft());
  album.Take(frame, "unfinished");
}

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
  TakeVisit(album, frame, document);

  app::COptionsSheet options(document.GetWorkspace());
  for (const app::OptionsPage& page : app::OptionsPages()) {
    options.ShowPage(page.title);
    std::string name = "options-" + device::ToUtf8(page.title);
    for (char& letter : name) letter = letter == ' ' ? '-' : static_cast<char>(std::tolower(letter));
    album.Take(options, name);
  }
  reports::CategorySelection selection(document.GetWorkspace(), document.Inspection().m_InspectionID);
  reports::ui::CSelectCategoriesPage categories(selection, nullptr);
  album.Take(categories, "select-categories");
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
