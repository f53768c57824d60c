#include "app/MainFrame.h"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QVBoxLayout>

#include "app/OptionsSheet.h"
#include "app/ReportCommand.h"
#include "device/ui/TextConversion.h"
#include "device/ui/Theme.h"
#include "inspection/ui/InspectionOverviewView.h"
#include "inspection/ui/InspectionSetupView2.h"
#include "inspection/ui/InspectorView.h"

namespace inspector::app {

using device::ui::Screen;
using device::ui::ToQString;

namespace {

constexpr int kRememberAfter = 2000;  // milliseconds: the registry is synced to disk each time
constexpr int kTidyEvery = 10'000;    // milliseconds
constexpr QSize kFirstSize(1280, 800);

}  // namespace

CMainFrame::CMainFrame(inspection::CInspectorDoc& document)
    : m_Document(document),
      m_UndoLog(document),
      m_Machine(document.GetWorkspace().GetMachine()),
      m_Settings(ReadAppSettings(m_Machine.registry)),
      m_Back(new QPushButton(QStringLiteral("\u2039 Back"))),
      m_Title(new QLabel),
      m_Stack(new QStackedWidget),
      m_Bar(new device::ui::CommandBar) {
  setObjectName(QStringLiteral("mainFrame"));
  setWindowTitle(QStringLiteral("Inspector"));
  m_Back->setObjectName(QStringLiteral("backButton"));
  m_Back->setAccessibleName(QStringLiteral("Back"));
  m_Back->setToolTip(QStringLiteral("Back (Alt+Left)"));
  connect(m_Back, &QPushButton::clicked, this, [this] { GoBack(); });
  m_Title->setObjectName(QStringLiteral("title"));
  m_Title->setAccessibleName(QStringLiteral("Title"));
  m_Title->setTextFormat(Qt::PlainText);
  m_Title->setWordWrap(true);
  m_Title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);

  auto* top = new QHBoxLayout;
  top->setContentsMargins(8, 6, 8, 6);
  top->setSpacing(14);
  top->addWidget(m_Back);
  top->addWidget(m_Title, 1);
  auto* whole = new QWidget(this);
  auto* layout = new QVBoxLayout(whole);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addLayout(top);
  layout->addWidget(m_Stack, 1);
  layout->addWidget(m_Bar);
  setCentralWidget(whole);
  statusBar()->setSizeGripEnabled(false);
  setMinimumSize(320, 400);

  UseTheme();  // before there is much that would have to change its look
  MakeScreens();
  MakeMenus();
  m_PlaceTimer.setSingleShot(true);
  m_PlaceTimer.setInterval(kRememberAfter);
  // Later: what is recorded may be an action whose button the bar is just calling.
  m_UndoLog.onChanged = [this] {
    QMetaObject::invokeMethod(
        this, [this] { ShowUndo(); }, Qt::QueuedConnection);
  };
  connect(&m_PlaceTimer, &QTimer::timeout, this, [this] { RememberPlace(); });
  connect(&m_TidyTimer, &QTimer::timeout, this,
          [this] { m_Document.GetWorkspace().InspectionConnection().TidyJournal(); });
  m_TidyTimer.start(kTidyEvery);
  connect(qApp, &QGuiApplication::commitDataRequest, this, [this] { FlushAll(); });
  Bring(*m_Overview);
}

CMainFrame::~CMainFrame() = default;

void CMainFrame::MakeScreens() {
  using namespace inspection::ui;
  m_Overview = new CInspectionOverview(m_Document);
  m_Visit =
      std::make_unique<VisitScreens>(m_Document, *this, [this](Screen& screen) { return Bring(screen); });
  m_Visit->onPlaceChanged = [this] { m_PlaceTimer.start(); };
  AddScreen(*m_Overview);
  for (Screen* screen : m_Visit->All()) AddScreen(*screen);
  m_Overview->beforeChange = [this] { return CurrentScreen()->Flush(); };
  m_Overview->onOpened = [this] { Bring(Header()); };
  m_Overview->onChanged = [this] { m_PlaceTimer.start(); };
}

void CMainFrame::AddScreen(Screen& screen) {
  screen.onTitleChanged = [this] { ShowTitle(); };
  m_Stack->addWidget(&screen);
}

void CMainFrame::AddForm(inspection::ui::HeaderView& form) {
  AddScreen(form);
  form.onEditList = [this](const device::Text& list) { m_Visit->EditPickerList(list); };
}

inspection::ui::CInspectorView& CMainFrame::Header() {
  if (m_Header) return *m_Header;
  m_Header = new inspection::ui::CInspectorView(m_Document);
  AddForm(*m_Header);
  m_Header->onDocTypeChanged = [this] {
    statusBar()->showMessage(QStringLiteral("The categories of this type are set up."), 8000);
  };
  Offer(*m_Header, "agents", QStringLiteral("A&gents, date"), [this] { Bring(SetUp()); });
  OfferCategories(*m_Header);
  return *m_Header;
}

inspection::ui::CInspectionSetupView2& CMainFrame::SetUp() {
  if (m_SetUp) return *m_SetUp;
  m_SetUp = new inspection::ui::CInspectionSetupView2(m_Document);
  AddForm(*m_SetUp);
  OfferCategories(*m_SetUp);
  return *m_SetUp;
}

QAction* CMainFrame::AddMenuCommand(QMenu* menu, const char* objectName, const QString& caption,
                                    const QKeySequence& key, std::function<void()> run) {
  QAction* const action = menu->addAction(caption);
  action->setObjectName(QLatin1String(objectName));
  action->setShortcut(key);
  connect(action, &QAction::triggered, this, [run = std::move(run)] { run(); });
  return action;
}

void CMainFrame::MakeMenus() {
  QMenu* const go = menuBar()->addMenu(QStringLiteral("&Go"));
  AddMenuCommand(go, "goBack", QStringLiteral("&Back"), QKeySequence(Qt::ALT | Qt::Key_Left),
                 [this] { GoBack(); });
  AddMenuCommand(go, "goInspections", QStringLiteral("&Inspections"), QKeySequence(Qt::CTRL | Qt::Key_1),
                 [this] { Bring(*m_Overview); });
  AddMenuCommand(go, "goHeader", QStringLiteral("&Client and dwelling"), QKeySequence(Qt::CTRL | Qt::Key_2),
                 [this] { Bring(Header()); });
  AddMenuCommand(go, "goSetUp", QStringLiteral("&Agents and date"), QKeySequence(Qt::CTRL | Qt::Key_3),
                 [this] { Bring(SetUp()); });
  AddMenuCommand(go, "goCategories", QStringLiteral("C&ategories and steps"),
                 QKeySequence(Qt::CTRL | Qt::Key_4), [this] { Bring(m_Visit->Categories()); });
  AddMenuCommand(go, "goReview", QStringLiteral("&Review comments"), QKeySequence(Qt::CTRL | Qt::Key_5),
                 [this] { Bring(m_Visit->Review()); });
  AddMenuCommand(go, "goUnfinished", QStringLiteral("&Unfinished"), QKeySequence(Qt::CTRL | Qt::Key_6),
                 [this] { Bring(m_Visit->WhatIsLeft()); });
  AddMenuCommand(go, "nextUnfinished", QStringLiteral("&Next unfinished"), QKeySequence(Qt::Key_F8), [this] {
    if (CurrentScreen()->Flush()) m_Visit->OpenNextUnfinished();
  });
  go->addSeparator();
  AddMenuCommand(go, "quit", QStringLiteral("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q),
                 [this] { close(); });
  m_ScreenMenu = menuBar()->addMenu(QStringLiteral("&Commands"));
  MakeVisitMenu();
  MakeViewMenu();
  QMenu* const tools = menuBar()->addMenu(QStringLiteral("&Tools"));
  m_Undo = AddMenuCommand(tools, "undo", {}, QKeySequence::Undo, [this] { Undo(); });
  ShowUndo();
  tools->addSeparator();
  AddMenuCommand(tools, "pickers", QStringLiteral("&Picker lists..."), {},
                 [this] { m_Visit->EditPickerList({}); });
  AddMenuCommand(tools, "shortcuts", QStringLiteral("&Shortcuts..."), {},
                 [this] { m_Visit->EditShortcuts(); });
  AddMenuCommand(tools, "options", QStringLiteral("&Options..."), QKeySequence(Qt::CTRL | Qt::Key_Comma),
                 [this] { OpenOptions(); });
  AddMenuCommand(tools, "about", QStringLiteral("&About"), {}, [this] { OpenAbout(); });
}

// A way that is taken often lies in the bar of the screen it begins at, too.
void CMainFrame::Offer(Screen& from, const char* objectName, const QString& caption,
                       std::function<void()> run) {
  auto* action = new QAction(caption, &from);
  action->setObjectName(QLatin1String(objectName));
  connect(action, &QAction::triggered, this, [run = std::move(run)] { run(); });
  from.addAction(action);
}

void CMainFrame::OfferCategories(Screen& from) {
  Offer(from, "categories", QStringLiteral("&Categories"), [this] { Bring(m_Visit->Categories()); });
}

void CMainFrame::MakeVisitMenu() {
  QMenu* const report = menuBar()->addMenu(QStringLiteral("&Report"));
  QAction* const write = AddMenuCommand(report, "report", QStringLiteral("Inspection &report..."),
                                        QKeySequence(Qt::CTRL | Qt::Key_R), [this] { Report(); });
  Offer(m_Visit->Categories(), "unfinished", QStringLiteral("&Unfinished"),
        [this] { Bring(m_Visit->WhatIsLeft()); });
  Offer(m_Visit->Categories(), "review", QStringLiteral("Re&view"), [this] { Bring(m_Visit->Review()); });
  m_Visit->Categories().addAction(write);
  m_Visit->WhatIsLeft().addAction(write);
}

void CMainFrame::MakeViewMenu() {
  QMenu* const view = menuBar()->addMenu(QStringLiteral("&View"));
  const auto choice = [&](QActionGroup* group, const char* name, const QString& caption, bool checked,
                          std::function<void()> run) {
    QAction* const action = AddMenuCommand(view, name, caption, {}, std::move(run));
    action->setCheckable(true);
    action->setChecked(checked);
    group->addAction(action);
  };
  auto* colours = new QActionGroup(this);
  const auto colour = [&](const char* name, const QString& caption, const device::Text& value) {
    choice(colours, name, caption, m_Settings.colours == value, [this, value] {
      m_Settings.colours = value;
      UseTheme();
      m_PlaceTimer.start();
    });
  };
  colour("light", QStringLiteral("&Light"), u"light");
  colour("dark", QStringLiteral("&Dark"), u"dark");
  colour("contrast", QStringLiteral("&High contrast"), u"contrast");
  view->addSeparator();
  auto* sizes = new QActionGroup(this);
  for (const int percent : {100, 125, 150, 200})
    choice(sizes, "text", QStringLiteral("Text %1 %").arg(percent), m_Settings.textPercent == percent,
           [this, percent] {
             m_Settings.textPercent = percent;
             UseTheme();
             m_PlaceTimer.start();
           });
}

void CMainFrame::UseTheme() {
  device::ui::Theme theme;
  theme.textPercent = m_Settings.textPercent;
  if (m_Settings.colours == u"dark") theme.colours = device::ui::Colours::Dark;
  if (m_Settings.colours == u"contrast") theme.colours = device::ui::Colours::HighContrast;
  Show(theme);
}

void CMainFrame::Show(const device::ui::Theme& theme) {
  device::ui::ApplyTheme(*qApp, theme);
  QFont heading = QApplication::font();
  heading.setPointSizeF(heading.pointSizeF() * 1.2);
  heading.setBold(true);
  m_Title->setFont(heading);
}

Screen* CMainFrame::CurrentScreen() const {
  return dynamic_cast<Screen*>(m_Stack->currentWidget());
}

bool CMainFrame::Bring(Screen& screen) {
  Screen* const present = CurrentScreen();
  if (present == &screen && m_HasShown) return true;
  if (present && present != &screen) {
    if (!present->OnLeave()) return false;
    // Going back to where one came from is no longer way.
    const auto before = std::find(m_Trail.begin(), m_Trail.end(), &screen);
    if (before != m_Trail.end()) {
      m_Trail.erase(before, m_Trail.end());
    } else {
      m_Trail.push_back(present);
    }
  }
  m_HasShown = true;
  m_Stack->setCurrentWidget(&screen);
  screen.OnShow();
  ShowTitle();
  ShowCommands();
  m_Back->setEnabled(!m_Trail.empty());
  m_PlaceTimer.start();
  return true;
}

bool CMainFrame::GoBack() {
  return !m_Trail.empty() && Bring(*m_Trail.back());
}

void CMainFrame::ShowUndo() {
  const QString action = ToQString(m_UndoLog.Action());
  m_Undo->setEnabled(!action.isEmpty());
  m_Undo->setText(action.isEmpty() ? QStringLiteral("&Undo") : QStringLiteral("&Undo %1").arg(action));
  if (m_HasShown) ShowCommands();
}

void CMainFrame::Undo() {
  if (!CurrentScreen()->Flush()) return;
  const QString action = ToQString(m_UndoLog.Action());
  const std::int32_t category = m_Document.Categories().m_CategoryID;
  if (!m_UndoLog.Undo()) return;
  // A category that went away takes its screen along.
  if (!m_Visit->IsInCategory(*CurrentScreen()) || m_Document.Categories().m_CategoryID == category ||
      !Bring(m_Visit->Categories()))
    CurrentScreen()->OnShow();
  ShowTitle();
  statusBar()->showMessage(QStringLiteral("Taken back: %1").arg(action), 8000);
}

void CMainFrame::ShowCommands() {
  const QList<QAction*> actions = CurrentScreen()->actions();
  // What can be taken back is one tap away for as long as it can.
  m_Bar->SetActions(m_Undo->isEnabled() ? actions + QList{m_Undo} : actions);
  m_ScreenMenu->clear();
  m_ScreenMenu->addActions(actions);
  m_ScreenMenu->setEnabled(!actions.isEmpty());
}

void CMainFrame::ShowTitle() {
  m_Title->setText(CurrentScreen()->Title());
}

void CMainFrame::Restore() {
  const QByteArray stored(reinterpret_cast<const char*>(m_Settings.window.data()),
                          static_cast<qsizetype>(m_Settings.window.size()));
  if (stored.isEmpty() || !restoreGeometry(stored)) resize(kFirstSize.boundedTo(screen()->availableSize()));

  const device::LastPlace place = device::ReadLastPlace(m_Machine.registry);
  if (place.inspectionID < 0 || !m_Document.SelectInspection(place.inspectionID)) return;
  // Back leads up from there: inspections, header, categories. They are read when somebody goes there.
  if (place.categoryID > 0 && m_Visit->OpenPlace(place.categoryID, place.stepID)) {
    m_Trail = {m_Overview, &Header(), &m_Visit->Categories()};
  } else {
    Bring(Header());
    if (place.categoryID > 0) Bring(m_Visit->Categories());
  }
  const data::InspectionTable& inspection = m_Document.Inspection();
  const device::Text& name =
      inspection.m_DwellingAddress.empty() ? inspection.m_ClientName : inspection.m_DwellingAddress;
  statusBar()->showMessage(QStringLiteral("Back where you were: %1")
                               .arg(name.empty() ? QStringLiteral("the last inspection") : ToQString(name)),
                           15000);
}

device::LastPlace CMainFrame::Place() const {
  device::LastPlace place;
  const Screen* const screen = CurrentScreen();
  if (!m_Document.HasInspection() || screen == m_Overview) return place;
  place.inspectionID = m_Document.Inspection().m_InspectionID;
  if (screen == m_Header || screen == m_SetUp) return place;
  const editing::PlaceInVisit inVisit = m_Visit->Place();
  if (inVisit.categoryID > 0) place.categoryID = inVisit.categoryID;
  if (inVisit.stepID > 0) place.stepID = inVisit.stepID;
  return place;
}

void CMainFrame::RememberPlace() {
  m_PlaceTimer.stop();
  const QByteArray geometry = saveGeometry();
  m_Settings.window.assign(geometry.begin(), geometry.end());
  if (!WriteAppSettings(m_Machine.registry, m_Settings) ||
      !device::WriteLastPlace(m_Machine.registry, Place()))
    m_Machine.faults.Report(m_Machine.registry.LastError());
}

void CMainFrame::FlushAll() {
  CurrentScreen()->Flush();
  RememberPlace();
}

void CMainFrame::closeEvent(QCloseEvent* event) {
  if (!CurrentScreen()->OnLeave()) {
    event->ignore();
    return;
  }
  RememberPlace();
  QMainWindow::closeEvent(event);
}

void CMainFrame::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  // A box of our own takes the focus as well; only another program's window counts.
  if (event->type() == QEvent::ActivationChange && !isActiveWindow() && !QApplication::activeModalWidget())
    if (Screen* const screen = CurrentScreen()) screen->Flush();
}

void CMainFrame::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Back && GoBack()) return;
  QMainWindow::keyPressEvent(event);
}

void CMainFrame::Report() {
  if (!CurrentScreen()->Flush()) return;
  const device::Text file = WriteReport(m_Document, *this);
  if (!file.empty()) statusBar()->showMessage(QStringLiteral("The report is written: ") + ToQString(file));
}

void CMainFrame::OpenOptions() {
  COptionsSheet sheet(m_Document.GetWorkspace(), this);
  sheet.exec();
  if (sheet.MustQuit()) close();
}

void CMainFrame::OpenAbout() {
  device::Alert(m_Machine.prompts,
                device::FromUtf8("Inspector " INSPECTOR_VERSION
                                 "\n\nRecords a home inspection step by step and writes its "
                                 "report.\n\nThis device: " +
                                 m_Machine.paths.Root().string()));
}

}  // namespace inspector::app
