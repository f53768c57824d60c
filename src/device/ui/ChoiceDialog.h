// Lets a person choose one row of a list.
#pragma once

#include <QDialog>

#include "device/ui/ListView.h"

namespace inspector::device::ui {

// OK, Enter and a double click take the selected row. `source` outlives the dialog.
class ChoiceDialog : public QDialog {
public:
  ChoiceDialog(const QString& title, const QString& prompt, RowSource& source,
               std::vector<ListColumn> columns, QWidget* parent);

  void Choose(int row) { m_List->SelectRow(row); }
  // -1 for none.
  int Chosen() const { return m_List->SelectedRow(); }

private:
  ListView* m_List;
};

}  // namespace inspector::device::ui
