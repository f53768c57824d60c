// The options: pages, OK and Cancel.
#pragma once

#include <QDialog>
#include <vector>

#include "app/OptionsPageView.h"

class QComboBox;
class QScrollArea;
class QStackedWidget;

namespace inspector::app {

class COptionsSheet : public QDialog {
public:
  explicit COptionsSheet(data::Workspace& workspace, QWidget* parent = nullptr);

  // What the page is called in OptionsPages().
  void ShowPage(TextView title);
  // The databases are to be found elsewhere, which has been told: the program must end.
  bool MustQuit() const { return m_MustQuit; }

  void accept() override;

private:
  data::Workspace& m_Workspace;
  OptionsForm m_Form;
  OptionsForm::Values m_Values;
  QComboBox* m_Chooser;
  QStackedWidget* m_Stack;
  std::vector<COptionsPage*> m_Pages;
  bool m_MustQuit = false;
};

}  // namespace inspector::app
