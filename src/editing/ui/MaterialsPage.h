// The Materials tab: one check box for each material that the step offers.
#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "editing/StepSheet.h"

class QCheckBox;
class QLineEdit;
class QVBoxLayout;

namespace inspector::editing::ui {

class CMaterialsPage : public QWidget {
public:
  CMaterialsPage(StepSheet& sheet, SheetDialogs& dialogs, QWidget* parent);

  // Tab leads to the boxes from `before`, the field in front of the page.
  void ShowStep(QWidget& before);

  std::function<void()> onTicked;                              // the boxes changed
  std::function<void()> onEdited;                              // the note changed
  std::function<void(std::int32_t materialID)> onHasComments;  // a material was ticked that has some

private:
  void Tick(std::size_t box, bool ticked);
  void ShowBoxes();

  StepSheet& m_Sheet;
  SheetDialogs& m_Dialogs;
  QVBoxLayout* m_Column;
  QLineEdit* m_Note;
  std::vector<QCheckBox*> m_Boxes;
};

}  // namespace inspector::editing::ui
