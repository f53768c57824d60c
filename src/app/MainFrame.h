// The main window: one screen at a time, its commands in a menu, in a bar of large buttons and by key.
#pragma once

#include <QMainWindow>
#include <memory>
#include <vector>

#include "app/AppSettings.h"
#include "app/VisitScreens.h"
#include "device/LastPlace.h"
#include "device/ui/CommandBar.h"
#include "device/ui/PauseTimer.h"
#include "device/ui/Screen.h"
#include "device/ui/Theme.h"
#include "inspection/InspectorDoc.h"
#include "inspection/UndoLog.h"

class QLabel;
class QMenu;
class QPushButton;
class QStackedWidget;

namespace inspector::device::ui {
class TypingHistory;
}

namespace inspector::inspection::ui {
class CInspectionOverview;
class CInspectorView;
class CInspectionSetupView2;
class HeaderView;
}  // namespace inspector::inspection::ui

namespace inspector::app {

class COptionsSheet;

// The document outlives the window. Closing the window writes what was entered first, and stays open when
// that fails.
class CMainFrame : public QMainWindow {
public:
  explicit CMainFrame(inspection::CInspectorDoc& document);
  ~CMainFrame() override;

  // Size and place of the last run, and the inspection that was worked on; says so.
  void Restore();
  // Writes what was typed, in an open sheet as well, and where the person is: the system is about to end the
  // program. False when something was not written; in the middle of an action nothing is.
  bool FlushAll();
  // The same, and then `end`; both after the action that is under way, which is cancelled where it can be.
  void SaveAndThen(std::function<void(bool isStored)> end);

  device::ui::Screen* CurrentScreen() const;
  // False when the present screen could not be left.
  bool Bring(device::ui::Screen& screen);
  bool GoBack();
  // Made when they are wanted first, as they hold many fields.
  inspection::ui::CInspectorView& Header();
  inspection::ui::CInspectionSetupView2& SetUp();

  VisitScreens& Visit() { return *m_Visit; }

  // In a line of its own above the commands, for a while.
  void Tell(const QString& message);
  // Until the person chooses other colours; nothing is remembered.
  void Show(const device::ui::Theme& theme);
  // Dialogs that belong to the whole program.
  void OpenOptions();
  void OpenAbout();
  void RepairCounters();

protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void MakeScreens();
  void AddScreen(device::ui::Screen& screen);
  void AddForm(inspection::ui::HeaderView& form);
  void EditLists(const device::Text& list);
  void MakeMenus();
  void MakeVisitMenu();
  void MakeExchangeMenu();
  QAction* MakeViewMenu(QMenu* tools);  // what opens it
  QMenu* AddMenu(const QString& title);
  QAction* AddMenuCommand(QMenu* menu, const char* objectName, const QString& caption,
                          const QKeySequence& key, std::function<void()> run);
  void Offer(device::ui::Screen& from, const char* objectName, const QString& caption,
             std::function<void()> run);
  void OfferCategories(device::ui::Screen& from);
  void ShowCommands();
  bool HasVisit();
  bool IsStored();       // what was typed into the present screen; says so when it could not be
  bool TellNotStored();  // false
  void LogWords();
  bool MayLeave();  // the present screen; asks whether to drop what cannot be stored
  void ShowUndo();
  void Undo();
  void ShowTitle();
  void ShowMessage();
  void FitWords();
  void UseTheme();
  device::LastPlace Place() const;
  void RememberSoon();
  void RememberPlace();
  void Report();
  void ShowExchanged();

  inspection::CInspectorDoc& m_Document;
  inspection::UndoLog m_UndoLog;
  device::Machine m_Machine;
  AppSettings m_Settings;
  QPushButton* m_Back;
  QLabel* m_Title;
  QStackedWidget* m_Stack;
  QLabel* m_Message;
  device::ui::CommandBar* m_Bar;
  device::ui::TypingHistory* m_History;
  QMenu* m_ScreenMenu = nullptr;
  QAction* m_Undo = nullptr;
  QList<QAction*> m_EverywhereInBar;  // behind "More" on every screen
  inspection::ui::CInspectionOverview* m_Overview = nullptr;
  inspection::ui::CInspectorView* m_Header = nullptr;
  inspection::ui::CInspectionSetupView2* m_SetUp = nullptr;
  std::unique_ptr<VisitScreens> m_Visit;
  double m_HeadingPoints = 0;
  COptionsSheet* m_Options = nullptr;  // while they are open
  bool m_MustQuit = false;
  bool m_IsNotStored = false;                // what was typed into the present screen
  bool m_HasShown = false;                   // the first screen
  std::vector<device::ui::Screen*> m_Trail;  // where Back leads, the last first
  QString m_Told;
  QTimer m_MessageTimer;  // then what was told passes
  device::ui::PauseTimer m_PlaceTimer;
  device::ui::PauseTimer m_EndTimer;
  std::function<void(bool isStored)> m_End;
  bool m_MayEndLater = true;
  QTimer m_TidyTimer;
};

}  // namespace inspector::app
