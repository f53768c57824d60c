#include "exchange/ui/SyncDialog.h"

#include <QFontInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

#include "device/ui/DialogSize.h"
#include "device/ui/OkCancel.h"
#include "device/ui/TextConversion.h"
#include "device/ui/WrappingCheckBox.h"
#include "exchange/ServerSettings.h"
#include "exchange/ui/ServerSettingsDialog.h"

namespace inspector::exchange::ui {
namespace {

constexpr int kSwitchPixels = 18;

// Of the two switches; no smaller than the words around them where those were made larger.
QFont SwitchFont(const QFont& usual) {
  QFont font(QStringLiteral("Times New Roman"));
  font.setWeight(QFont::Bold);
  font.setPixelSize(std::max(kSwitchPixels, QFontInfo(usual).pixelSize()));
  return font;
}

}  // namespace

SyncDialog::SyncDialog(data::Workspace& workspace, QWidget* parent)
    : QDialog(parent),
      m_Workspace(workspace),
      m_Inspections(workspace.GetDatabases()),
      m_Receive(AddSwitch(tr("&Receive inspections"), "receiveSwitch", true)),
      m_PeriodRow(new QHBoxLayout),
      m_Send(AddSwitch(tr("&Send inspections"), "sendSwitch", false)),
      m_Rows(new device::ui::ListView(m_Inspections, SyncList::Columns(), this)),
      m_All(new QPushButton(tr("&All"), this)),
      m_None(new QPushButton(tr("&None"), this)),
      m_Count(new QLabel(this)) {
  setObjectName(QStringLiteral("syncDialog"));
  setWindowTitle(tr("Synchronise"));
  for (const auto& [caption, name] : {std::pair{tr("&Today"), "todayButton"},
                                      {tr("This &week"), "weekButton"},
                                      {tr("All (&every date)"), "allDatesButton"}}) {
    auto* period = new QRadioButton(caption, this);
    period->setObjectName(QLatin1String(name));
    m_PeriodRow->addWidget(period);
    m_Periods.push_back(period);
  }
  m_Periods.front()->setChecked(true);
  QWidget* before = m_Receive;
  for (QWidget* const next :
       std::initializer_list<QWidget*>{m_Periods[0], m_Periods[1], m_Periods[2], m_Send}) {
    setTabOrder(before, next);
    before = next;
  }
  m_Rows->setObjectName(QStringLiteral("inspectionsToSend"));
  m_Rows->setAccessibleName(tr("Inspections to send"));
  m_Rows->SetEmptyText(tr("There are no inspections on this device."));
  m_Rows->onClick = [this](int row, int) {
    m_Inspections.Toggle(row);
    m_Rows->Model().RefreshRow(row);
    ShowWhatCounts();
  };
  m_All->setObjectName(QStringLiteral("markAllButton"));
  m_None->setObjectName(QStringLiteral("markNoneButton"));
  for (QPushButton* const button : {m_All, m_None}) {
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, isAll = button == m_All] {
      m_Inspections.MarkAll(isAll);
      m_Rows->Model().RefreshAll();
      ShowWhatCounts();
    });
  }
  m_Count->setObjectName(QStringLiteral("markedCount"));
  connect(m_Receive, &QCheckBox::toggled, this, [this] { ShowWhatCounts(); });
  connect(m_Send, &QCheckBox::toggled, this, [this](bool isOn) {
    // What is marked is sent; marks that nobody can see any more must not be.
    if (!isOn) m_Inspections.MarkAll(false);
    m_Rows->Model().RefreshAll();
    ShowWhatCounts();
  });

  auto* marks = new QHBoxLayout;
  marks->addWidget(m_Count, 1);
  marks->addWidget(m_All);
  marks->addWidget(m_None);
  auto* server = new QPushButton(tr("Ser&ver..."), this);
  server->setObjectName(QStringLiteral("serverButton"));
  server->setAutoDefault(false);
  connect(server, &QPushButton::clicked, this, [this] { AskForServer(); });
  auto* foot = new QHBoxLayout;
  foot->addWidget(server);
  foot->addWidget(device::ui::MakeOkCancel(*this), 1);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_Receive);
  layout->addLayout(m_PeriodRow);
  layout->addWidget(m_Send);
  layout->addWidget(m_Rows, 1);
  layout->addLayout(marks);
  layout->addLayout(foot);
  device::ui::ResizeWithin(*this, {560, 680});
  ShowWhatCounts();
  m_Receive->setFocus();
}

QCheckBox* SyncDialog::AddSwitch(const QString& caption, const char* name, bool isOn) {
  auto* box = new device::ui::WrappingCheckBox(this);
  box->setText(caption);
  box->setObjectName(QLatin1String(name));
  box->setFont(SwitchFont(font()));
  box->setChecked(isOn);
  return box;
}

void SyncDialog::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  // Large letters find no room beside each other on a handheld.
  int needed = 0;
  for (const QRadioButton* const period : m_Periods) needed += period->sizeHint().width() + 16;
  m_PeriodRow->setDirection(needed > width() ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

void SyncDialog::ShowWhatCounts() {
  for (QRadioButton* const period : m_Periods) period->setEnabled(m_Receive->isChecked());
  const bool isSending = m_Send->isChecked();
  m_Rows->setEnabled(isSending);
  m_All->setEnabled(isSending && m_Inspections.RowCount() > 0);
  m_None->setEnabled(isSending && m_Inspections.MarkedCount() > 0);
  m_Count->setText(isSending
                       ? tr("%1 of %2 to send").arg(m_Inspections.MarkedCount()).arg(m_Inspections.RowCount())
                       : QString());
}

SyncRequest SyncDialog::Request() const {
  SyncRequest request;
  for (std::size_t n = 0; n < m_Periods.size(); ++n)
    if (m_Receive->isChecked() && m_Periods[n]->isChecked())
      request.receive = static_cast<protocol::Period>(n);
  request.send = m_Inspections.Marked();
  return request;
}

void SyncDialog::AskForServer() {
  ServerSettingsDialog(m_Workspace, this).exec();
}

void SyncDialog::accept() {
  // Whoever typed the settings looks once more at what is to be exchanged.
  if (!SyncSession::HasServer(m_Workspace.Options())) return AskForServer();
  const data::OptionsTable& options = m_Workspace.Options();
  if (const Text problem = WhyNotSent(options.m_UserName, options.m_Pswrd); !problem.empty()) {
    device::Alert(m_Workspace.GetPrompts(), problem);
    return AskForServer();
  }
  SyncSession session(m_Workspace, Request());
  const bool isDone = session.Run();
  m_HasRun = true;
  const bool isWhole = session.Report().IsWhole();
  m_Workspace.GetPrompts().Show({.text = Described(session.Report()),
                                 .title = u"Synchronise",
                                 .icon = isWhole ? device::Icon::Information : device::Icon::Exclamation});
  if (isDone) QDialog::accept();
}

}  // namespace inspector::exchange::ui
