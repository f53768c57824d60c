// "Duplicate Category": the name of the first copy, how many, and whether findings come along.
#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QSpinBox>

#include "editing/EditingDialogs.h"

namespace inspector::editing::ui {

class DuplicateCategoryDialog : public QDialog {
public:
  DuplicateCategoryDialog(const EditingDialogs::CategoryCopies& suggested, QWidget* parent);

  EditingDialogs::CategoryCopies Wanted() const;

private:
  QLineEdit* m_Name;  // owned by Qt, as children
  QSpinBox* m_Copies;
  QCheckBox* m_WithData;
};

}  // namespace inspector::editing::ui
