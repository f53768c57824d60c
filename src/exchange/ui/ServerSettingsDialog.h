// The dialog that asks where the office's server is and who logs in.
#pragma once

#include <QDialog>

#include "exchange/ServerSettings.h"

class QLineEdit;
class QVBoxLayout;

namespace inspector::exchange::ui {

// "Done" above the fields and "OK" below them both write: an on-screen keyboard covers one of the two.
class ServerSettingsDialog : public QDialog {
public:
  ServerSettingsDialog(data::Workspace& workspace, QWidget* parent);

  void accept() override;

private:
  QLineEdit* AddField(QVBoxLayout& layout, const QString& caption, const char* name, const Text& value);

  data::Workspace& m_Workspace;
  QLineEdit* m_Address;
  QLineEdit* m_Port;
  QLineEdit* m_UserName;
  QLineEdit* m_Password;
};

}  // namespace inspector::exchange::ui
