#include "app/OptionsSheet.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "app/ReportTextPages.h"
#include "device/ui/DialogSize.h"
#include "device/ui/FieldArea.h"
#include "device/ui/OkCancel.h"
#include "device/ui/PickerCombo.h"
#include "device/ui/TextConversion.h"
#include "device/ui/TypingHistory.h"

namespace inspector::app {
namespace {

COptionsPage* MakePage(const OptionsPage& page, QWidget* parent) {
  switch (page.view) {
    case OptionsPage::View::Legal:
      return new CLegalPage(page, parent);
    case OptionsPage::View::DefOfTerms:
      return new CDefOfTermsPage(page, parent);
    case OptionsPage::View::Footer:
      return new CFooterPage(page, parent);
    case OptionsPage::View::ReportText:
      return new CReportTextPage(page, parent);
    case OptionsPage::View::Entries:
      break;
  }
  return new COptionsPage(page, parent);
}

}  // namespace

COptionsSheet::COptionsSheet(data::Workspace& workspace, QWidget* parent)
    : QDialog(parent),
      m_Workspace(workspace),
      m_Form(workspace),
      m_Values(m_Form.Load()),
      m_Chooser(new device::ui::DropDown(this)),
      m_Stack(new QStackedWidget(this)) {
  setObjectName(QStringLiteral("optionsSheet"));
  setWindowTitle(QStringLiteral("Options"));
  m_Chooser->setObjectName(QStringLiteral("pageField"));
  m_Chooser->setAccessibleName(QStringLiteral("Page of the options"));
  for (const OptionsPage& page : OptionsPages()) {
    m_Chooser->addItem(device::ui::ToQString(page.title));
    auto* scroll = new device::ui::FieldArea(m_Stack);
    COptionsPage* const view = MakePage(page, scroll);
    view->Show(m_Values);
    scroll->setWidget(view);
    m_Stack->addWidget(scroll);
    m_Pages.push_back(view);
  }
  connect(m_Chooser, &QComboBox::currentIndexChanged, m_Stack, &QStackedWidget::setCurrentIndex);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_Chooser);
  layout->addWidget(m_Stack, 1);
  layout->addLayout(device::ui::HistoryBeside(*this, device::ui::MakeOkCancel(*this)));
  device::ui::ResizeWithin(*this, {460, 640});
}

void COptionsSheet::ShowPage(TextView title) {
  m_Chooser->setCurrentIndex(m_Chooser->findText(device::ui::ToQString(title)));
}

void COptionsSheet::accept() {
  for (const COptionsPage* page : m_Pages) page->TakeOver(m_Values);
  if (const auto problem = m_Form.WhyNot(m_Values)) {
    ShowPage(problem->page);
    device::ShowError(m_Workspace.GetPrompts(), problem->text);
    return;
  }
  switch (m_Form.Save(m_Values)) {
    case data::OptionsSaved::Failed:
      return;  // told; what was entered stays
    case data::OptionsSaved::MustQuit:
      m_MustQuit = true;
      break;
    case data::OptionsSaved::Done:
      break;
  }
  QDialog::accept();
}

bool COptionsSheet::Flush() {
  OptionsForm::Values entered = m_Values;
  for (const COptionsPage* page : m_Pages) page->TakeOver(entered);
  const OptionsForm::Values before = m_Form.Load();
  const OptionsForm::Values after = m_Form.WithWhatStands(before, entered);
  if (after == before) return true;
  if (!m_BeforeFlush) m_BeforeFlush = before;
  return m_Form.Save(after) == data::OptionsSaved::Done;
}

void COptionsSheet::reject() {
  if (m_BeforeFlush && m_Form.Save(*m_BeforeFlush) != data::OptionsSaved::Done) return;
  QDialog::reject();
}

}  // namespace inspector::app
