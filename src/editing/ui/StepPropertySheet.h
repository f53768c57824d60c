// The "Step Properties" sheet on the screen.
#pragma once

#include <QDialog>
#include <functional>

#include "device/ui/PauseTimer.h"
#include "editing/StepSheet.h"
#include "editing/ui/QtSheetDialogs.h"

class QComboBox;
class QLabel;
class QPushButton;
class QScrollArea;
class QTabWidget;

namespace inspector::editing::ui {

class CCommentsPage;
class CMaterialsPage;
class CPicturePage;
class CStepInfoPage;

// What is typed is written a moment after the first key that is not written yet, when the window loses the
// focus, on every move and when the sheet closes; Cancel closes it, too, and keeps the text. To be opened
// with OpenStep, then exec.
class CStepPropertySheet : public QDialog {
public:
  CStepPropertySheet(inspection::CInspectorDoc& document, QWidget* parent);

  // On the page that stands at `tab` among those the step has; without, on the option's. False when there is
  // no such step.
  bool OpenStep(std::int32_t categoryID, std::int32_t stepID, std::optional<int> tab);
  // Where the step has that page.
  void ShowPage(StepSheet::Page page);
  StepSheet& Logic() { return m_Sheet; }
  // The person left with the command that leads to the next unfinished step.
  bool WantsNextUnfinished() const { return m_WantsNextUnfinished; }
  // Writes what was typed: the focus is lost, the system ends. In the middle of an action it waits for the
  // end of that. False when it was not written.
  bool Flush();
  // Each time a step is shown, also the first.
  std::function<void()> onStepShown;

  void done(int result) override;

protected:
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

private:
  void ShowStep();
  void ArrangePages();
  void KeepFocusInPage(QWidget* former);
  void FitTabs();
  void ShowRating();
  void PickRating(int entry);
  void Move(bool forward);
  void SaveSoon();
  // What could not be written is tried again a moment later.
  bool Save();
  bool Store(bool (StepSheet::*save)() = &StepSheet::SaveNow);
  void ShowCaret();

  QtSheetDialogs m_Dialogs;
  StepSheet m_Sheet;
  device::ui::PauseTimer m_Pause;
  QLabel* m_Caption;
  QComboBox* m_Rating;
  QTabWidget* m_Tabs;
  QLabel* m_NotStored;
  QScrollArea* m_Area;
  CMaterialsPage* m_Materials;
  CCommentsPage* m_Comments;
  CPicturePage* m_Picture;
  CStepInfoPage* m_Info;
  QPushButton* m_Previous;
  QPushButton* m_Next;
  bool m_WantsNextUnfinished = false;
};

}  // namespace inspector::editing::ui
