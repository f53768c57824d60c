#include "tools/ScreenWalk.h"

#include <QLayout>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>
#include <iostream>

#include "app/MainFrame.h"
#include "app/OptionsSheet.h"
#include "data/StartUp.h"
#include "device/DefaultHome.h"
#include "device/Format.h"
#include "device/ui/DatabasePathsDialog.h"
#include "device/ui/QtPrompts.h"
#include "editing/CategoryOpening.h"
#include "editing/PictureTags.h"
#include "editing/ui/DateDialog.h"
#include "editing/ui/DuplicateCategoryDialog.h"
#include "editing/ui/PlaceholderDialog.h"
#include "editing/ui/StepPropertySheet.h"
#include "exchange/ui/ServerSettingsDialog.h"
#include "exchange/ui/SyncDialog.h"
#include "inspection/ui/InspectionOverviewView.h"
#include "inspection/ui/InspectionSetupView2.h"
#include "inspection/ui/InspectorView.h"
#include "reports/ui/ReportDialog.h"
#include "reports/ui/SelectCategoriesPage.h"

namespace inspector::tools {
namespace {

using device::Text;

// The category with the most to see: materials, comments and pictures.
constexpr char16_t kTelling[] = u"Roof";

class Walk {
public:
  Walk(inspection::CInspectorDoc& document, device::ui::QtPrompts& prompts, const ScreenSetting& setting,
       const LookAtWindow& look)
      : m_Document(document), m_Prompts(prompts), m_Setting(setting), m_Look(look), m_Frame(document) {
    m_Prompts.SetWindow(&m_Frame);
    m_Frame.Show(setting.theme);
  }

  void Go() {
    Screens();
    Visit();
    Menus();
    Dialogs();
    Exchange();
    Options();
    Boxes();
  }

private:
  // A window that fills the screen.
  void Full(QWidget& window, const std::string& name) {
    window.resize(m_Setting.size);
    Look(window, name);
  }
  // One that is as large as it wants to be.
  void Look(QWidget& window, const std::string& name) {
    window.show();
    QApplication::processEvents();
    // What is narrower than it wants to be breaks its lines.
    const int width = std::min(window.width(), m_Setting.size.width());
    const int height =
        window.layout() && width < window.width() ? window.layout()->totalHeightForWidth(width) : 0;
    window.resize(width, std::min(std::max(window.height(), height), m_Setting.size.height()));
    QApplication::processEvents();
    m_Look(window, name, m_Setting);
  }
  // The dialog that `open` shows and waits for.
  void Modal(const std::string& name, const std::function<void()>& open) {
    QObject context;
    QTimer::singleShot(0, &context, [&] {
      QWidget* const dialog = QApplication::activeModalWidget();
      if (!dialog) return;
      Look(*dialog, name);
      dialog->close();
    });
    open();
  }
  void Command(const std::string& name, const char* action) {
    Modal(name, [&] {
      if (auto* const command = m_Frame.findChild<QAction*>(QLatin1String(action))) command->trigger();
    });
  }

  void Screens() {
    Full(m_Frame, "inspections");
    m_Frame.Bring(m_Frame.Header());
    Full(m_Frame, "header");
    m_Frame.Bring(m_Frame.SetUp());
    Full(m_Frame, "agents");
    m_Frame.Bring(m_Frame.Visit().Categories());
    Full(m_Frame, "categories");
  }

  void Visit() {
    data::CategoryTable& categories = m_Document.Categories();
    for (int row = 0; row < categories.RecordCount(); ++row) {
      if (!categories.GetRecord(row)) continue;
      const bool isForm = categories.m_Type == editing::kFormCategory;
      if (!isForm && categories.m_CategoryTitle != kTelling) continue;
      const std::int32_t category = categories.m_CategoryID;
      if (!m_Frame.Visit().OpenPlace(category, 0)) continue;
      Full(m_Frame, isForm ? "form" : "steps");
      if (!isForm) Sheet(category);
    }
    m_Frame.Bring(m_Frame.Visit().Review());
    Full(m_Frame, "review");
    m_Frame.Bring(m_Frame.Visit().WhatIsLeft());
    m_Frame.Tell(QStringLiteral("Back where you were: 418 Juniper Lane, Alder Creek"));
    Full(m_Frame, "unfinished");
  }

  void Sheet(std::int32_t category) {
    data::StepTable steps(m_Document.GetWorkspace().GetDatabases());
    steps.OpenSQL(device::Format(u"SELECT * FROM Step WHERE CategoryID = %d Order By StepNumber", category));
    if (!steps.GetRecord(0)) return;
    const std::int32_t first = steps.m_StepID;
    // One with pictures, whose page holds most.
    int row = 0;
    while (steps.GetRecord(row) && editing::FindFirstTag(steps.m_Comments).empty()) ++row;
    const std::int32_t shown = row < steps.RecordCount() ? steps.m_StepID : first;
    for (int page = 0; page < 4; ++page) {
      editing::ui::CStepPropertySheet sheet(m_Document, &m_Frame);
      if (sheet.OpenStep(category, shown, page)) Full(sheet, "step-" + std::to_string(page + 1));
    }
    editing::ui::CStepPropertySheet sheet(m_Document, &m_Frame);
    if (!sheet.OpenStep(category, first, 1)) return;
    sheet.show();
    if (auto* const picker = sheet.findChild<QPushButton*>(QStringLiteral("pickerButton")))
      Modal("comment-picker", [&] { picker->click(); });
  }

  // Also those below another, and what the bar of commands keeps behind "More".
  void Menus() {
    for (QMenu* menu : m_Frame.findChildren<QMenu*>()) {
      // One without a title is what "More" opens, or the rest of a bar that is too narrow.
      const bool isMore = menu->parent()->objectName() == QLatin1String("moreButton");
      if (menu->isEmpty() || (menu->title().isEmpty() && !isMore)) continue;
      menu->popup(m_Frame.mapToGlobal(QPoint(0, 0)));
      const QString title = isMore ? QStringLiteral("more") : menu->title().remove(u'&').toLower();
      Look(*menu, "menu-" + title.toStdString());
      menu->close();
    }
  }

  void Dialogs() {
    using namespace editing::ui;
    DuplicateCategoryDialog duplicate({u"Bathroom #2", 1, true}, &m_Frame);
    Look(duplicate, "duplicate-category");
    PlaceholderDialog choices(
        {u"Replace ^Side^ with:", true, {u"east", u"west"}, u"Leaves in the ", u" gutter."}, &m_Frame);
    Look(choices, "placeholder-choices");
    PlaceholderDialog words({u"Replace ^ with:", false, {}, u"Built in ", u"."}, &m_Frame);
    Look(words, "placeholder");
    DateDialog date(QStringLiteral("Year of the furnace"), QStringLiteral("5/28/2026"), &m_Frame);
    Look(date, "date");
    const device::DatabasePaths& inUse = m_Document.GetWorkspace().PathsInUse();
    device::ui::DatabasePathsDialog paths(inUse, inUse.inspectionPath, nullptr);
    Look(paths, "paths");
    Modal("pickers", [this] { m_Frame.Visit().EditPickerList(u"Label01"); });
    Command("shortcuts", "shortcuts");
    Report();
  }

  void Report() {
    reports::ReportForm form(m_Document.GetWorkspace(), m_Document.Inspection().m_InspectionID);
    reports::ui::ReportDialog dialog(form, m_Prompts, &m_Frame);
    Full(dialog, "report");
    reports::ui::CSelectCategoriesPage page(form.Categories(), &dialog);
    Look(page, "report-categories");
  }

  void Exchange() {
    data::Workspace& workspace = m_Document.GetWorkspace();
    exchange::ui::SyncDialog sync(workspace, &m_Frame);
    sync.findChild<QAbstractButton*>(QStringLiteral("sendSwitch"))->click();
    sync.findChild<QAbstractButton*>(QStringLiteral("markAllButton"))->click();
    Full(sync, "synchronise");
    exchange::ui::ServerSettingsDialog server(workspace, &sync);
    Look(server, "server-settings");
    Modal("alert-offer", [this] {
      m_Prompts.Show({.text = u"INSPECTION\u00A4418 Juniper Lane\u00A4Theodora and Miles Halvorsen\u00A4",
                      .title = u"Alert",
                      .offer = u"Don't show this again for this file"});
    });
  }

  void Options() {
    app::COptionsSheet options(m_Document.GetWorkspace());
    for (const app::OptionsPage& page : app::OptionsPages()) {
      options.ShowPage(page.title);
      std::string name = "options-" + device::ToUtf8(page.title);
      for (char& letter : name) letter = letter == ' ' ? '-' : static_cast<char>(std::tolower(letter));
      Full(options, name);
    }
  }

  void Boxes() {
    Modal("question", [this] {
      device::ConfirmDataAlert(m_Prompts,
                               u"Warning! Changing the Doc Type will remove all categories and steps for "
                               u"this inspection  Tap OK to continue changing the Doc Type. \r\r Do you "
                               u"wish to proceed?");
    });
    Modal("text-entry", [this] {
      m_Prompts.AskText({u"Enter the new material for: \r\nRoof coverings", u"Other Material", u""});
    });
    Modal("save", [this] {
      m_Prompts.AskSavePath(
          {u"Inspection_1.rtf", u"\\My Documents\\", u"Rich Text Format (*.rtf)|*.rtf|", u"rtf"});
    });
    Command("about", "about");
    const auto progress = m_Prompts.OpenProgress(u"Inspection Report", true);
    progress->SetRange(0, 10);
    progress->SetPosition(4);
    progress->SetStatus(u"Writing the category Bathrooms");
    progress->SetDetail(u"4 of 10");
    if (QWidget* const window = QApplication::activeModalWidget()) Look(*window, "progress");
  }

  inspection::CInspectorDoc& m_Document;
  device::ui::QtPrompts& m_Prompts;
  const ScreenSetting& m_Setting;
  const LookAtWindow& m_Look;
  app::CMainFrame m_Frame;
};

}  // namespace

bool WalkScreens(const std::filesystem::path& home, std::span<const ScreenSetting> settings,
                 const LookAtWindow& look) {
  const device::DevicePaths paths(home);
  device::HostFiles files;
  device::Registry registry(files, home / device::kRegistryFile);
  device::ui::QtPrompts prompts(paths);
  device::SystemClock clock;
  device::FaultLog faults(prompts, clock, home / device::kLogFile);
  const device::Machine machine{paths, files, registry, prompts, clock, faults};
  std::error_code error;
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
  for (const ScreenSetting& setting : settings) Walk(document, prompts, setting, look).Go();
  return true;
}

}  // namespace inspector::tools
