#include "app/MainFrame.h"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <utility>

#include "app/ExchangeCommands.h"
#include "app/OptionsSheet.h"
#include "app/ReportCommand.h"
#include "data/KeyReport.h"
#include "device/Format.h"
#include "device/ui/DialogSize.h"
#include "device/ui/FindField.h"
#include "device/ui/Menu.h"
#include "device/ui/QtProgressWindow.h"
#include "device/ui/TextConversion.h"
#include "device/ui/Theme.h"
#include "device/ui/TypingHistory.h"
#include "inspection/ui/InspectionOverviewView.h"
#include "inspection/ui/InspectionSetupView2.h"
#include "inspection/ui/InspectorView.h"

namespace inspector::app {

using device::ui::Screen;
using device::ui::ToQString;

namespace {

constexpr int kRememberAfter = 700;  // milliseconds: the registry is synced to disk each time
constexpr int kTellFor = 15000;      // milliseconds
constexpr int kEndAfter = 20;        // milliseconds, each time that an action is still under way
constexpr int kTidyEvery = 10'000;   // milliseconds
constexpr QSize kFirstSize(1280, 800);
constexpr double kHeadingPoints = 12;
constexpr int kShareOfWords = 8;          // title and message are at most this part of the window's height
constexpr qsizetype kLongestTitle = 300;  // letters
constexpr qsizetype kLongestMessage = 600;
constexpr char kStaysHere[] = "What you entered could not be stored yet. It stays here until it is.";
constexpr int kTopMargin = 8;
constexpr int kTopSpacing = 14;

}  // namespace

CMainFrame::CMainFrame(inspection::CInspectorDoc& document)
    : m_Document(document),
      m_UndoLog(document),
      m_Machine(document.GetWorkspace().GetMachine()),
      m_Settings(ReadAppSettings(m_Machine.registry)),
      m_Back(new QPushButton(QStringLiteral("\u2039 Back"))),
      m_Title(new QLabel),
      m_Stack(new QStackedWidget),
      m_Message(new QLabel),
      m_Bar(new device::ui::CommandBar),
      m_PlaceTimer(
          kRememberAfter, m_Machine.faults, [&document] { return document.GetWorkspace().IsBusy(); },
          [this] {
            RememberPlace();
            // Not for somebody who only looks at the list: the journal changes the file in the end.
            if (Place().inspectionID > 0) m_Document.GetWorkspace().InspectionConnection().PrepareJournal();
            return true;
          }),
      m_EndTimer(
          kEndAfter, m_Machine.faults, [&document] { return document.GetWorkspace().IsBusy(); },
          [this] {
            // Once more a moment later, when another program is writing.
            const bool isStored = FlushAll();
            if (!isStored && std::exchange(m_MayEndLater, false)) return false;
            if (!isStored) LogWords();
            m_End(isStored);
            return true;
          }) {
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

  m_Message->setObjectName(QStringLiteral("message"));
  m_Message->setTextFormat(Qt::PlainText);
  m_Message->setWordWrap(true);
  m_Message->setMargin(6);
  m_Message->hide();
  m_MessageTimer.setSingleShot(true);
  connect(&m_MessageTimer, &QTimer::timeout, this, [this] {
    m_Told.clear();
    ShowMessage();
  });

  auto* top = new QHBoxLayout;
  top->setContentsMargins(kTopMargin, 6, kTopMargin, 6);
  top->setSpacing(kTopSpacing);
  top->addWidget(m_Back);
  top->addWidget(m_Title, 1);
  auto* whole = new QWidget(this);
  m_History = new device::ui::TypingHistory(*whole);
  m_History->hide();
  top->addWidget(m_History);
  auto* layout = new QVBoxLayout(whole);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addLayout(top);
  layout->addWidget(m_Stack, 1);
  layout->addWidget(m_Message);
  layout->addWidget(m_Bar);
  setCentralWidget(whole);
  setMinimumSize(320, 400);

  UseTheme();  // before there is much that would have to change its look
  MakeScreens();
  MakeMenus();
  // Later: what is recorded may be an action whose button the bar is just calling.
  m_UndoLog.onChanged = [this] {
    QMetaObject::invokeMethod(
        this, [this] { ShowUndo(); }, Qt::QueuedConnection);
  };
  connect(&m_TidyTimer, &QTimer::timeout, this, [this] {
    data::Workspace& workspace = m_Document.GetWorkspace();
    if (!workspace.IsBusy()) workspace.InspectionConnection().TidyJournal();
  });
  m_TidyTimer.start(kTidyEvery);
  connect(qApp, &QGuiApplication::commitDataRequest, this, [this] {
    device::ui::QtProgressWindow::CancelAll();
    FlushAll();
  });
  qApp->installEventFilter(this);
  Bring(*m_Overview);
}

CMainFrame::~CMainFrame() = default;

void CMainFrame::MakeScreens() {
  using namespace inspection::ui;
  m_Overview = new CInspectionOverview(m_Document);
  m_Visit =
      std::make_unique<VisitScreens>(m_Document, *this, [this](Screen& screen) { return Bring(screen); });
  m_Visit->onPlaceChanged = [this] { RememberSoon(); };
  AddScreen(*m_Overview);
  for (Screen* screen : m_Visit->All()) AddScreen(*screen);
  m_Overview->beforeChange = [this] { return IsStored(); };
  m_Overview->onOpened = [this] { Bring(Header()); };
  m_Overview->onChanged = [this] { RememberSoon(); };
  m_Overview->onMerge = [this](std::int32_t inspectionID) {
    const device::Text done = MergeImported(m_Document, inspectionID, *this);
    if (!done.empty()) Tell(ToQString(done));
    m_Overview->OnShow();
  };
}

void CMainFrame::AddScreen(Screen& screen) {
  screen.onTitleChanged = [this] { ShowTitle(); };
  screen.onStored = [this](bool stored) {
    const bool isNews = stored == m_IsNotStored;
    m_IsNotStored = !stored;
    if (isNews && stored && m_Told == QLatin1String(kStaysHere)) m_Told.clear();
    if (isNews) ShowMessage();
  };
  m_Stack->addWidget(&screen);
}

void CMainFrame::AddForm(inspection::ui::HeaderView& form) {
  AddScreen(form);
  form.onEditList = [this](const device::Text& list) { EditLists(list); };
}

// The editor goes from list to list, and both forms may show any of them.
void CMainFrame::EditLists(const device::Text& list) {
  m_Visit->EditPickerList(list);
  if (m_Header) m_Header->ListsChanged();
  if (m_SetUp) m_SetUp->ListsChanged();
}

inspection::ui::CInspectorView& CMainFrame::Header() {
  if (m_Header) return *m_Header;
  m_Header = new inspection::ui::CInspectorView(m_Document);
  AddForm(*m_Header);
  m_Header->onDocTypeChanged = [this] { Tell(QStringLiteral("The categories of this type are set up.")); };
  m_Header->onDocTypeFailed = [this](const device::Text& why) {
    Tell(QStringLiteral("The type stays as it was: ") + ToQString(why));
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

QMenu* CMainFrame::AddMenu(const QString& title) {
  auto* const menu = new device::ui::Menu(title, *this, menuBar());
  menuBar()->addMenu(menu);
  return menu;
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
  QMenu* const go = AddMenu(QStringLiteral("&Go"));
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
  m_EverywhereInBar += AddMenuCommand(go, "nextUnfinished", QStringLiteral("&Next unfinished"),
                                      QKeySequence(Qt::Key_F8), [this] {
                                        if (IsStored() && HasVisit()) m_Visit->OpenNextUnfinished();
                                      });
  m_EverywhereInBar += go->menuAction();
  go->addSeparator();
  AddMenuCommand(go, "quit", QStringLiteral("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q),
                 [this] { close(); });
  m_ScreenMenu = AddMenu(QStringLiteral("&Commands"));
  MakeVisitMenu();
  MakeExchangeMenu();
  QMenu* const tools = AddMenu(QStringLiteral("&Tools"));
  m_Undo = AddMenuCommand(tools, "undo", {}, QKeySequence::Undo, [this] { Undo(); });
  ShowUndo();
  tools->addSeparator();
  m_EverywhereInBar += AddMenuCommand(tools, "pickers", QStringLiteral("&Picker lists..."),
                                      QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P), [this] {
                                        if (!IsStored()) return;
                                        EditLists({});
                                        CurrentScreen()->OnShow();
                                      });
  m_EverywhereInBar +=
      AddMenuCommand(tools, "shortcuts", QStringLiteral("&Shortcuts..."),
                     QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), [this] { m_Visit->EditShortcuts(); });
  m_EverywhereInBar += AddMenuCommand(tools, "options", QStringLiteral("&Options..."),
                                      QKeySequence(Qt::CTRL | Qt::Key_Comma), [this] { OpenOptions(); });
  m_EverywhereInBar += MakeViewMenu(tools);
  AddMenuCommand(tools, "repairCounters", QStringLiteral("&Repair counters..."), {},
                 [this] { RepairCounters(); });
  m_EverywhereInBar += AddMenuCommand(tools, "about", QStringLiteral("&About"), QKeySequence(Qt::Key_F1),
                                      [this] { OpenAbout(); });
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
  QMenu* const report = AddMenu(QStringLiteral("&Report"));
  QAction* const write = AddMenuCommand(report, "report", QStringLiteral("&Report..."),
                                        QKeySequence(Qt::CTRL | Qt::Key_R), [this] { Report(); });
  Offer(m_Visit->Categories(), "unfinished", QStringLiteral("&Unfinished"),
        [this] { Bring(m_Visit->WhatIsLeft()); });
  Offer(m_Visit->Categories(), "review", QStringLiteral("Re&view"), [this] { Bring(m_Visit->Review()); });
  m_EverywhereInBar.prepend(write);
  m_Visit->Categories().addAction(write);
  m_Visit->WhatIsLeft().addAction(write);
}

void CMainFrame::MakeExchangeMenu() {
  QMenu* const exchange = AddMenu(QStringLiteral("E&xchange"));
  AddMenuCommand(exchange, "synchronise", QStringLiteral("&Synchronise..."),
                 QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Y), [this] {
                   if (IsStored() && Synchronise(m_Document, *this)) ShowExchanged();
                 });
  AddMenuCommand(exchange, "export", QStringLiteral("&Export..."),
                 QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E), [this] {
                   if (!IsStored() || !HasVisit()) return;
                   const device::Text file = ExportCurrent(m_Document);
                   if (!file.empty()) Tell(QStringLiteral("The inspection is exported: ") + ToQString(file));
                 });
  AddMenuCommand(exchange, "import", QStringLiteral("&Import..."),
                 QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_I), [this] {
                   if (IsStored() && ImportFile(m_Document)) Bring(*m_Overview);
                 });
  m_EverywhereInBar += exchange->menuAction();
}

// Rows were written beside the document, perhaps its current one.
void CMainFrame::ShowExchanged() {
  const std::int32_t inspection = m_Document.Inspection().m_InspectionID;
  const std::int32_t category = m_Document.Categories().m_CategoryID;
  const int top = m_Document.CategoryTopIndex();
  m_Document.Reopen();
  if (m_Document.SelectInspection(inspection) && category > 0 && m_Document.SelectCategory(category))
    m_Document.SetCategoryTopIndex(top);
  CurrentScreen()->OnShow();
  ShowTitle();
}

QAction* CMainFrame::MakeViewMenu(QMenu* tools) {
  auto* const view = new device::ui::Menu(QStringLiteral("&View"), *this, tools);
  tools->addMenu(view);
  const auto choice = [&](QActionGroup* group, const char* name, const QString& caption, Qt::Key key,
                          bool checked, std::function<void()> run) {
    QAction* const action = AddMenuCommand(view, name, caption, QKeySequence(key), std::move(run));
    action->setCheckable(true);
    action->setChecked(checked);
    group->addAction(action);
  };
  auto* colours = new QActionGroup(this);
  const auto colour = [&](const char* name, const QString& caption, Qt::Key key, const device::Text& value) {
    choice(colours, name, caption, key, m_Settings.colours == value, [this, value] {
      m_Settings.colours = value;
      UseTheme();
      RememberSoon();
    });
  };
  colour("light", QStringLiteral("&Light"), Qt::Key_F5, u"light");
  colour("dark", QStringLiteral("&Dark"), Qt::Key_F6, u"dark");
  colour("contrast", QStringLiteral("&High contrast"), Qt::Key_F7, u"contrast");
  view->addSeparator();
  auto* sizes = new QActionGroup(this);
  constexpr std::pair<int, Qt::Key> kSizes[] = {
      {100, Qt::Key_F9}, {125, Qt::Key_F10}, {150, Qt::Key_F11}, {200, Qt::Key_F12}};
  for (const auto& [size, key] : kSizes)
    choice(sizes, "text", QStringLiteral("Text %1 %").arg(size), key, m_Settings.textPercent == size,
           [this, percent = size] {
             m_Settings.textPercent = percent;
             UseTheme();
             RememberSoon();
           });
  return view->menuAction();
}

void CMainFrame::UseTheme() {
  Show(ThemeOf(m_Settings));
}

void CMainFrame::Show(const device::ui::Theme& theme) {
  device::ui::ApplyTheme(*qApp, theme);
  m_HeadingPoints = kHeadingPoints * theme.textPercent / 100;
  FitWords();
}

// On a low screen the rows need the room more than what stands around them.
void CMainFrame::FitWords() {
  QFont heading = QApplication::font();
  const int height = std::max(this->height() / kShareOfWords, device::kSmallestTarget);
  device::ui::ShrinkToFit(*m_Message, heading, width(), height);
  heading.setPointSizeF(m_HeadingPoints);
  heading.setWeight(QFont::Bold);
  int beside = m_Back->sizeHint().width() + 2 * kTopMargin + kTopSpacing;
  if (m_History->isVisible()) beside += m_History->sizeHint().width() + kTopSpacing;
  device::ui::ShrinkToFit(*m_Title, heading, width() - beside, height);
}

void CMainFrame::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  FitWords();
}

void CMainFrame::Tell(const QString& message) {
  m_Told = device::ui::Shortened(message, kLongestMessage);
  m_MessageTimer.start(kTellFor);
  ShowMessage();
}

// What is not stored stands there for as long as it is not; what was told passes.
void CMainFrame::ShowMessage() {
  QStringList lines;
  if (m_IsNotStored) lines += ToQString(device::NotStored(m_Machine.faults));
  if (!m_Told.isEmpty()) lines += m_Told;
  m_Message->setText(lines.join(u'\n'));
  FitWords();
  m_Message->setVisible(!lines.isEmpty());
}

Screen* CMainFrame::CurrentScreen() const {
  return dynamic_cast<Screen*>(m_Stack->currentWidget());
}

bool CMainFrame::Bring(Screen& screen) {
  Screen* const present = CurrentScreen();
  const bool isFirst = !m_HasShown;
  if (&screen != m_Overview && !HasVisit()) return false;
  if (present == &screen && !isFirst && !IsStored()) return false;
  if (present != &screen) {
    if (!MayLeave()) return false;
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
  m_History->setVisible(screen.TakesText());
  ShowTitle();
  ShowCommands();
  m_Back->setEnabled(!m_Trail.empty());
  RememberSoon();
  return true;
}

bool CMainFrame::IsStored() {
  return CurrentScreen()->Flush() || TellNotStored();
}

bool CMainFrame::MayLeave() {
  if (CurrentScreen()->OnLeave()) return true;
  // Yes, which Enter takes, loses nothing.
  if (device::ConfirmCaution(m_Machine.prompts,
                             u"What you entered here could not be stored yet. Stay here and "
                             u"keep it?"))
    return false;
  CurrentScreen()->Discard();
  m_IsNotStored = false;
  m_Told.clear();  // that it stays there until it is stored
  ShowMessage();
  return true;
}

bool CMainFrame::TellNotStored() {
  Tell(QLatin1String(kStaysHere));
  return false;
}

bool CMainFrame::GoBack() {
  // The steps of a category that is no longer the current one are no place to come back to.
  while (!m_Trail.empty() && m_Visit->IsInCategory(*m_Trail.back()) &&
         !m_Visit->IsAtCategory(*m_Trail.back()))
    m_Trail.pop_back();
  return !m_Trail.empty() && Bring(*m_Trail.back());
}

// Makes the row that is selected in the list the current inspection: that is the one a person means.
bool CMainFrame::HasVisit() {
  if (CurrentScreen() == m_Overview && m_HasShown && !m_Overview->TakeSelected()) return false;
  if (m_Document.HasInspection()) return true;
  device::Alert(m_Machine.prompts, u"There is no inspection. Create one first.");
  return false;
}

void CMainFrame::ShowUndo() {
  const QString action = ToQString(m_UndoLog.Action());
  m_Undo->setEnabled(!action.isEmpty());
  m_Undo->setText(action.isEmpty() ? QStringLiteral("&Undo") : QStringLiteral("&Undo %1").arg(action));
  if (m_HasShown) ShowCommands();
}

void CMainFrame::Undo() {
  if (!IsStored()) return;
  const QString action = ToQString(m_UndoLog.Action());
  if (m_UndoLog.IsElsewhere() &&
      !device::ConfirmCaution(
          m_Machine.prompts,
          device::Phrase(u"\"%s\" was done in another inspection. Do you wish to take it back there?",
                         m_UndoLog.Action())))
    return;
  const std::int32_t category = m_Document.Categories().m_CategoryID;
  if (!m_UndoLog.Undo()) return;
  // A category that went away takes its screen along.
  if (!m_Visit->IsInCategory(*CurrentScreen()) || m_Document.Categories().m_CategoryID == category ||
      !Bring(m_Visit->Categories()))
    CurrentScreen()->OnShow();
  ShowTitle();
  Tell(QStringLiteral("Taken back: %1").arg(action));
}

void CMainFrame::ShowCommands() {
  const QList<QAction*> actions = CurrentScreen()->actions();
  // What can be taken back is one tap away for as long as it can.
  m_Bar->SetActions(m_Undo->isEnabled() ? actions + QList{m_Undo} : actions, m_EverywhereInBar);
  m_ScreenMenu->clear();
  m_ScreenMenu->addActions(actions);
  m_ScreenMenu->setEnabled(!actions.isEmpty());
}

void CMainFrame::ShowTitle() {
  m_Title->setText(device::ui::Shortened(CurrentScreen()->Title(), kLongestTitle));
  FitWords();
}

void CMainFrame::Restore() {
  const QByteArray stored(reinterpret_cast<const char*>(m_Settings.window.data()),
                          static_cast<qsizetype>(m_Settings.window.size()));
  if (stored.isEmpty() || !restoreGeometry(stored)) resize(kFirstSize.boundedTo(screen()->availableSize()));
  // Without a window manager the place that is restored counts with a frame that is not there.
  const QScreen* const shown = QGuiApplication::screenAt(geometry().center());
  if (!isMaximized() && !isFullScreen())
    setGeometry(device::ui::MovedInto((shown ? shown : screen())->availableGeometry(), geometry()));

  const device::LastPlace place = device::ReadLastPlace(m_Machine.registry);
  if (place.inspectionID < 0 || !m_Document.SelectInspection(place.inspectionID)) return;
  m_Overview->SelectCurrent();
  // Back leads up from there: inspections, header, categories. They are read when somebody goes there.
  if (place.categoryID > 0 && m_Visit->OpenPlace(place.categoryID, place.stepID)) {
    m_Trail = {m_Overview, &Header(), &m_Visit->Categories()};
  } else {
    Bring(Header());
    if (place.categoryID >= 0) Bring(m_Visit->Categories());
  }
  const data::InspectionTable& inspection = m_Document.Inspection();
  const device::Text& name =
      inspection.m_DwellingAddress.empty() ? inspection.m_ClientName : inspection.m_DwellingAddress;
  Tell(QStringLiteral("Back where you were: %1")
           .arg(name.empty() ? QStringLiteral("the last inspection") : ToQString(name)));
}

device::LastPlace CMainFrame::Place() const {
  device::LastPlace place;
  const Screen* const screen = CurrentScreen();
  if (!m_Document.HasInspection() || screen == m_Overview) return place;
  place.inspectionID = m_Document.Inspection().m_InspectionID;
  if (screen == m_Header || screen == m_SetUp) return place;
  place.categoryID = 0;  // the list of categories
  if (!m_Visit->IsInCategory(*screen) && !m_Visit->IsInSheet()) return place;
  const editing::PlaceInVisit inVisit = m_Visit->Place();
  if (inVisit.categoryID > 0) place.categoryID = inVisit.categoryID;
  if (inVisit.stepID > 0) place.stepID = inVisit.stepID;
  return place;
}

void CMainFrame::RememberSoon() {
  m_PlaceTimer.Begin();
}

void CMainFrame::RememberPlace() {
  m_PlaceTimer.stop();
  const QByteArray geometry = saveGeometry();
  m_Settings.window.assign(geometry.begin(), geometry.end());
  if (!WriteAppSettings(m_Machine.registry, m_Settings) ||
      !device::WriteLastPlace(m_Machine.registry, Place()))
    m_Machine.faults.Report(m_Machine.registry.LastError());
}

bool CMainFrame::FlushAll() {
  if (m_Document.GetWorkspace().IsBusy()) return false;
  const device::FaultLog::Unattended unattended(m_Machine.faults, false);
  const bool sheet = m_Visit->FlushSheet();
  const bool options = !m_Options || m_Options->Flush();
  const bool screen = CurrentScreen()->Flush();
  RememberPlace();
  return sheet && options && screen;
}

// Nobody can be asked any more: the log is where what was typed can still be found.
void CMainFrame::LogWords() {
  const QWidget* place = QApplication::activeModalWidget();
  // A question may stand before what was typed into.
  while (place && qobject_cast<const QMessageBox*>(place)) place = place->parentWidget();
  if (!place || place == this) place = CurrentScreen();
  QStringList words;
  for (const auto* const lines : place->findChildren<QPlainTextEdit*>())
    if (lines->document()->isModified()) words += lines->toPlainText();
  for (const auto* const line : place->findChildren<QLineEdit*>())
    if (line->isModified() && line->echoMode() == QLineEdit::Normal &&
        !dynamic_cast<const device::ui::FindField*>(line))
      words += line->text();
  words.removeAll(QString());
  const device::FaultLog::Unattended unattended(m_Machine.faults);
  m_Machine.faults.Report(device::Phrase(
      u"Inspector was ended by the system before everything that was entered could be stored. Look "
      u"whether these words are there, and ratings and ticks that were set last: \"%s\".",
      device::ui::FromQString(words.join(QLatin1String("\", \"")))));
}

void CMainFrame::SaveAndThen(std::function<void(bool isStored)> end) {
  device::ui::QtProgressWindow::CancelAll();
  m_End = std::move(end);
  m_EndTimer.start();
}

void CMainFrame::closeEvent(QCloseEvent* event) {
  // Once the databases are to be found elsewhere there is no staying.
  if (m_MustQuit) {
    CurrentScreen()->OnLeave();
  } else if (!MayLeave()) {
    event->ignore();
    return;
  }
  RememberPlace();
  QMainWindow::closeEvent(event);
}

void CMainFrame::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  // A box of our own takes the focus as well; only another program's window counts.
  if (event->type() == QEvent::ActivationChange && !isActiveWindow() && !QApplication::activeModalWidget() &&
      !m_Document.GetWorkspace().IsBusy())
    if (Screen* const screen = CurrentScreen()) {
      const device::FaultLog::Unattended unattended(m_Machine.faults);
      screen->Flush();
    }
}

// A tap, a click or a key that starts something; inside a message box it only answers.
bool CMainFrame::eventFilter(QObject* watched, QEvent* event) {
  const auto isStart = [event] {
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::Shortcut) return true;
    if (event->type() != QEvent::KeyPress) return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
  };
  if (isStart() && !qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
    m_Machine.faults.BeginAction();
  return QMainWindow::eventFilter(watched, event);
}

void CMainFrame::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Back && GoBack()) return;
  QMainWindow::keyPressEvent(event);
}

void CMainFrame::Report() {
  if (!IsStored() || !HasVisit()) return;
  const device::Text file = WriteReport(m_Document, *this);
  if (!file.empty()) Tell(QStringLiteral("The report is written: ") + ToQString(file));
}

void CMainFrame::OpenOptions() {
  if (!IsStored()) return;  // it is shown anew afterwards
  COptionsSheet sheet(m_Document.GetWorkspace(), this);
  m_Options = &sheet;
  sheet.exec();
  m_Options = nullptr;
  m_MustQuit = sheet.MustQuit();
  m_MustQuit ? static_cast<void>(close()) : CurrentScreen()->OnShow();
}

// Without a keyboard there is no command line that could set them right.
void CMainFrame::RepairCounters() {
  if (!IsStored()) return;
  data::Databases& databases = m_Document.GetWorkspace().GetDatabases();
  const int faultsBefore = m_Machine.faults.Count();
  device::Text faults;
  for (const device::Text& fault : data::FindCounterFaults(databases)) faults += fault + u"\n";
  if (m_Machine.faults.Count() > faultsBefore) return;  // unread is not right
  if (faults.empty())
    return device::Alert(m_Machine.prompts, u"The counters that new keys come from are right.");
  const device::Text question = device::Format(
      u"A counter that new keys come from is wrong:\n%s\nDo you wish to set it right?", faults);
  if (device::ConfirmCaution(m_Machine.prompts, question) && data::RepairCounters(databases))
    Tell(QStringLiteral("The counters are right now."));
}

void CMainFrame::OpenAbout() {
  device::Alert(m_Machine.prompts,
                device::FromUtf8("Inspector " INSPECTOR_VERSION
                                 "\n\nRecords a home inspection step by step and writes its "
                                 "report.\n\nThis device: " +
                                 m_Machine.paths.Root().string()));
}

}  // namespace inspector::app
