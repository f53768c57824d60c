// The page on which the inspector chooses the categories of a report.
#pragma once

#include <QDialog>

#include "device/ui/ListView.h"
#include "reports/CategorySelection.h"

class QLabel;

namespace inspector::reports::ui {

// A tap anywhere on a row puts the category in or takes it out. `selection` outlives the page and holds what
// was chosen, also after Cancel: who wants to go back keeps a copy.
class CSelectCategoriesPage : public QDialog {
public:
  CSelectCategoriesPage(CategorySelection& selection, QWidget* parent);

private:
  void Show();

  CategorySelection& m_Selection;
  QLabel* m_Caption;
  device::ui::ListView* m_Rows;
};

}  // namespace inspector::reports::ui
