// The options: pages, OK and Cancel.
#pragma once

#include <QDialog>
#include <vector>

#include "app/OptionsPageView.h"

class QComboBox;
class QStackedWidget;

namespace inspector::app {

class COptionsSheet : public QDialog {
public:
  explicit COptionsSheet(data::Workspace& workspace, QWidget* parent = nullptr);

  // What the page is called in OptionsPages().
  void ShowPage(TextView title);
  // The databases are to be found elsewhere, which has been told: the program must end.
  bool MustQuit() const { return m_MustQuit; }

  // The program ends while the sheet is open: saves what can be saved as it stands. False when that failed.
  bool Flush();

  void accept() override;
  // Also takes back what Flush has saved: the program did not end then.
  void reject() override;

private:
  data::Workspace& m_Workspace;
  OptionsForm m_Form;
  OptionsForm::Values m_Values;
  std::optional<OptionsForm::Values> m_BeforeFlush;
  QComboBox* m_Chooser;
  QStackedWidget* m_Stack;
  std::vector<COptionsPage*> m_Pages;
  bool m_MustQuit = false;
};

}  // namespace inspector::app
