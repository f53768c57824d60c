// The Info tab: what the office says about the step.
#pragma once

#include <QPlainTextEdit>

#include "editing/StepSheet.h"

namespace inspector::editing::ui {

class CStepInfoPage : public QPlainTextEdit {
public:
  CStepInfoPage(StepSheet& sheet, QWidget* parent);

  void ShowStep();

private:
  StepSheet& m_Sheet;
};

}  // namespace inspector::editing::ui
