// The "Comment Picker" dialog on the screen.
#pragma once

#include <QDialog>

#include "device/RowSource.h"
#include "editing/CommentPicker.h"

namespace inspector::device::ui {
class ListView;
}

namespace inspector::editing::ui {

// A tap on a heading folds its group, on a comment chooses it.
class CommentPickerDialog : public QDialog, private device::RowSource {
public:
  CommentPickerDialog(CommentPicker& picker, QWidget* parent);

private:
  int RowCount() const override { return static_cast<int>(m_Picker.Rows().size()); }
  device::ListRow ShownRow(int row) override;
  void Click(int row);
  void ChooseFirst();
  void DeleteSelected();

  CommentPicker& m_Picker;
  device::ui::ListView* m_List;
};

}  // namespace inspector::editing::ui
