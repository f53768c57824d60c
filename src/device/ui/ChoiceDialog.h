// Lets a person choose one row of a list.
#pragma once

#include <QDialog>
#include <QDialogButtonBox>

#include "device/ui/ListView.h"

namespace inspector::device::ui {

// OK, Enter and a double click take the selected row. `source` outlives the dialog.
class ChoiceDialog : public QDialog {
public:
  ChoiceDialog(const QString& title, const QString& prompt, RowSource& source,
               std::vector<ListColumn> columns, QWidget* parent);

  void Choose(int row) { m_List->SelectRow(row); }
  // A button beside OK, for something else to do with the selected row. The rows are read again afterwards.
  void Offer(const QString& caption, const char* objectName, std::function<void(int row)> run);
  // -1 for none.
  int Chosen() const { return m_List->SelectedRow(); }

private:
  void EnableFor(int row);

  ListView* m_List;
  QDialogButtonBox* m_Buttons;
};

}  // namespace inspector::device::ui
