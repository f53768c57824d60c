#include "editing/ui/StepInfoPage.h"

#include "device/ui/TextConversion.h"

namespace inspector::editing::ui {

CStepInfoPage::CStepInfoPage(StepSheet& sheet, QWidget* parent) : QPlainTextEdit(parent), m_Sheet(sheet) {
  setObjectName(QStringLiteral("stepInfoPage"));
  setAccessibleName(tr("Information about the step"));
  setPlaceholderText(tr("There is no information about this step."));
  setReadOnly(true);
  setTabChangesFocus(true);
  setFrameShape(QFrame::NoFrame);
}

void CStepInfoPage::ShowStep() {
  setPlainText(device::ui::ToDisplay(m_Sheet.StepInfo()));
}

}  // namespace inspector::editing::ui
