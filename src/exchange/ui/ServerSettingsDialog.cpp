#include "exchange/ui/ServerSettingsDialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "device/ui/DialogSize.h"
#include "device/ui/FieldArea.h"
#include "device/ui/OkCancel.h"
#include "device/ui/TextConversion.h"
#include "device/ui/TypingHistory.h"

namespace inspector::exchange::ui {

using device::ui::FromQString;
using device::ui::ToQString;

ServerSettingsDialog::ServerSettingsDialog(data::Workspace& workspace, QWidget* parent)
    : QDialog(parent), m_Workspace(workspace) {
  setObjectName(QStringLiteral("serverSettingsDialog"));
  setWindowTitle(tr("Server Settings"));
  auto* words = new QLabel(tr("Where the office's server is, and who logs in there."), this);
  words->setWordWrap(true);
  auto* done = new QPushButton(tr("&Done"), this);
  done->setObjectName(QStringLiteral("doneButton"));
  done->setAutoDefault(false);
  connect(done, &QPushButton::clicked, this, &QDialog::accept);
  auto* head = new QHBoxLayout;
  head->addWidget(words, 1);
  head->addWidget(done);

  auto* area = new device::ui::FieldArea(this);
  auto* fields = new QWidget;
  auto* layout = new QVBoxLayout(fields);
  layout->setContentsMargins(0, 0, 0, 0);
  area->setWidget(fields);

  const ServerSettings settings = ReadServerSettings(workspace);
  m_Address = AddField(*layout, tr("&Address of the server"), "addressField", settings.address);
  m_Address->setMaxLength(kMostAddressLetters);
  m_Port = AddField(*layout, tr("&Port (%1 to %2)").arg(kLowestPort).arg(kHighestPort), "portField",
                    settings.port);
  m_Port->setInputMethodHints(Qt::ImhDigitsOnly);
  m_UserName = AddField(*layout, tr("&User name"), "userField", settings.userName);
  m_UserName->setInputMethodHints(Qt::ImhNoAutoUppercase | Qt::ImhNoPredictiveText);
  m_Password = AddField(*layout, tr("Pass&word"), "passwordField", settings.password);
  m_Password->setMaxLength(kMostPasswordLetters);
  m_Password->setEchoMode(QLineEdit::Password);
  layout->addStretch(1);

  auto* whole = new QVBoxLayout(this);
  whole->addLayout(head);
  whole->addWidget(area, 1);
  whole->addLayout(device::ui::HistoryBeside(*this, device::ui::MakeOkCancel(*this)));
  device::ui::ResizeWithin(*this, {440, 460});
  m_Address->setFocus();
}

QLineEdit* ServerSettingsDialog::AddField(QVBoxLayout& layout, const QString& caption, const char* name,
                                          const Text& value) {
  auto* label = new QLabel(caption, this);
  auto* field = new QLineEdit(ToQString(value), this);
  field->setObjectName(QLatin1String(name));
  field->setAccessibleName(QString(caption).remove(u'&'));
  label->setBuddy(field);
  layout.addWidget(label);
  layout.addWidget(field);
  return field;
}

void ServerSettingsDialog::accept() {
  const ServerSettings settings{FromQString(m_Address->text().trimmed()),
                                FromQString(m_Port->text().trimmed()), FromQString(m_UserName->text()),
                                FromQString(m_Password->text())};
  if (const Text problem = WhyNot(settings); !problem.empty()) {
    device::ShowError(m_Workspace.GetPrompts(), problem);
    return;
  }
  if (WriteServerSettings(m_Workspace, settings)) QDialog::accept();
}

}  // namespace inspector::exchange::ui
