#include "inspection/ui/InspectorView.h"

#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>
#include <utility>

#include "device/ui/TextConversion.h"

namespace inspector::inspection::ui {
namespace {

constexpr int kLookEvery = 50;  // milliseconds

}  // namespace

CInspectorView::CInspectorView(CInspectorDoc& document, QWidget* parent)
    : HeaderView(document, HeaderPage::Dwelling, parent),
      m_DocType(new device::ui::DropDown(this)),
      m_Progress(new QWidget(this)) {
  setObjectName(QStringLiteral("inspectorView"));
  m_DocType->setObjectName(QStringLiteral("docTypeField"));
  AddRow(QStringLiteral("Doc Type"), m_DocType);
  AddFields();

  auto* label = new QLabel(QStringLiteral("Setting up the categories of this type..."), m_Progress);
  auto* bar = new QProgressBar(m_Progress);
  bar->setRange(0, 0);
  bar->setTextVisible(false);
  bar->setAccessibleName(QStringLiteral("Setting up the categories"));
  auto* inside = new QVBoxLayout(m_Progress);
  inside->setContentsMargins(12, 8, 12, 8);
  inside->addWidget(label);
  inside->addWidget(bar);
  layout()->addWidget(m_Progress);  // below: what a finger is about to touch must not move
  m_Progress->hide();

  connect(m_DocType, &QComboBox::activated, this, [this] { SelectDocType(); });
  m_Poll.setInterval(kLookEvery);
  connect(&m_Poll, &QTimer::timeout, this, [this] {
    if (!Document().GetWorkspace().IsBusy() && !Document().IsChangingDocType()) FinishDocType();
  });
}

QString CInspectorView::Title() const {
  const Text& address = Document().Inspection().m_DwellingAddress;
  return address.empty() ? QStringLiteral("Inspection") : device::ui::ToQString(address);
}

void CInspectorView::Fill() {
  HeaderView::Fill();
  ShowStoredDocType();
}

void CInspectorView::ShowStoredDocType() {
  const std::vector<Text> types = Form().DocTypes();
  m_DocType->clear();
  for (const Text& type : types) m_DocType->addItem(device::ui::ToQString(type));
  const QString stored = device::ui::ToQString(Document().Inspection().m_DocType);
  int index = m_DocType->findText(stored, Qt::MatchExactly | Qt::MatchCaseSensitive);
  // A type that the library no longer has is shown all the same.
  if (index < 0 && !stored.isEmpty()) {
    m_DocType->addItem(stored);
    index = m_DocType->count() - 1;
  }
  m_DocType->setCurrentIndex(index);
}

void CInspectorView::SelectDocType() {
  if (m_DocType->currentIndex() < 0) return;
  const Text type = device::ui::FromQString(m_DocType->currentText());
  switch (Form().SelectDocType(Entered(), type)) {
    case DocTypeChoice::Same:
      break;
    case DocTypeChoice::Refused:
      ShowStoredDocType();
      break;
    case DocTypeChoice::Change:
      ShowProgress(true);
      m_Poll.start();
      break;
  }
}

// The person may be typing by now, so what went wrong is no box but a line.
void CInspectorView::FinishDocType() {
  m_Poll.stop();
  device::FaultLog& faults = Document().GetWorkspace().GetMachine().faults;
  const device::FaultLog::Unattended unattended(faults);
  const bool isOpen = Document().IsDocTypeChangeOpen();
  const Text why = faults.Latest();  // what the type met with; the form may fail, too
  m_HasChanged = false;
  Flush();
  if (isOpen && !m_HasChanged) {
    faults.DropPending();
    if (onDocTypeFailed) onDocTypeFailed(why);
  }
  ShowProgress(false);
  ShowStoredDocType();
}

void CInspectorView::OnDocTypeChanged() {
  m_HasChanged = true;
  ShowProgress(false);
  if (onDocTypeChanged) onDocTypeChanged();
}

void CInspectorView::ShowProgress(bool running) {
  m_Progress->setVisible(running);
  // The focus goes from what is disabled to the next field, and comes back unless the person went on.
  if (running) m_HadFocus = m_DocType->hasFocus();
  m_DocType->setEnabled(!running);
  if (running) {
    m_FocusMeanwhile = focusWidget();
  } else if (std::exchange(m_HadFocus, false) && focusWidget() == m_FocusMeanwhile) {
    m_DocType->setFocus();
  }
}

}  // namespace inspector::inspection::ui
