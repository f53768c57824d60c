// The page on which a person chooses the report and its file.
#pragma once

#include <QDialog>

#include "device/ui/PickerCombo.h"
#include "reports/ReportForm.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace inspector::reports::ui {

// "Write" makes the report and closes the page once it is written; `outcome` tells the rest. `form` outlives
// it.
class ReportDialog : public QDialog {
public:
  ReportDialog(ReportForm& form, device::Prompts& prompts, QWidget* parent);

  const ReportOutcome& Outcome() const { return m_Outcome; }

  void accept() override;

private:
  QLabel* AddField(const QString& caption, QWidget& field);
  void ShowKind();
  void ShowCategories();
  void ChooseCategories();
  void Browse();

  ReportForm& m_Form;
  device::Prompts& m_Prompts;
  ReportOutcome m_Outcome;
  device::ui::DropDown* m_Kind;
  device::ui::DropDown* m_Layout;
  device::ui::DropDown* m_Rating;
  QPushButton* m_Categories;
  QCheckBox* m_Pictures;
  QLineEdit* m_Target;
  QPushButton* m_Browse;
};

}  // namespace inspector::reports::ui
