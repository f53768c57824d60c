// The dialog that starts a session with the office's server: what to receive, which inspections to send.
#pragma once

#include <QDialog>

#include "device/ui/ListView.h"
#include "exchange/SyncList.h"
#include "exchange/SyncSession.h"

class QBoxLayout;
class QCheckBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace inspector::exchange::ui {

// OK runs the session, tells what it did, and closes the dialog where there was a server; without settings it
// asks for those first, and a second OK is needed.
class SyncDialog : public QDialog {
public:
  SyncDialog(data::Workspace& workspace, QWidget* parent);

  // A session has run, so that rows may have been changed or added.
  bool HasRun() const { return m_HasRun; }

  void accept() override;

protected:
  void resizeEvent(QResizeEvent* event) override;

private:
  QCheckBox* AddSwitch(const QString& caption, const char* name, bool isOn);
  void ShowWhatCounts();
  void AskForServer();
  SyncRequest Request() const;

  data::Workspace& m_Workspace;
  SyncList m_Inspections;
  bool m_HasRun = false;
  QCheckBox* m_Receive;
  QBoxLayout* m_PeriodRow;
  std::vector<QRadioButton*> m_Periods;  // by protocol::Period
  QCheckBox* m_Send;
  device::ui::ListView* m_Rows;
  QPushButton* m_All;
  QPushButton* m_None;
  QLabel* m_Count;
};

}  // namespace inspector::exchange::ui
