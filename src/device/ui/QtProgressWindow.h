// The progress window on the screen.
#pragma once

#include <QtGlobal>

#include "device/Prompts.h"

class QDialog;
class QLabel;
class QProgressBar;
class QPushButton;
class QWidget;

namespace inspector::device::ui {

// Stands over the other windows, which take no input while it is there. The work runs on the same thread, so
// each call lets the window paint and take a press of Cancel, but no more often than a person can see.
class QtProgressWindow : public ProgressWindow {
public:
  QtProgressWindow(const Text& title, bool cancellable, QWidget* parent);
  ~QtProgressWindow() override;
  // As if Cancel were pressed in every window that offers it: the program is about to end.
  static void CancelAll();

  void SetStatus(const Text& status) override;
  void SetDetail(const Text& detail) override;
  void SetRange(int low, int high) override;
  void SetPosition(int position) override;
  void Step() override;
  bool Cancelled() override;

private:
  void AskToStop();
  void Breathe(bool atOnce);
  void FitHeight();

  QDialog* m_Window;
  QLabel* m_Status;
  QLabel* m_Detail;
  QProgressBar* m_Bar;
  QPushButton* m_Cancel = nullptr;
  bool m_Cancelled = false;
  qint64 m_LastBreath = 0;
};

}  // namespace inspector::device::ui
