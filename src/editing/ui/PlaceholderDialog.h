// Asks what to put in the place of one placeholder.
#pragma once

#include <QDialog>

#include "editing/SheetDialogs.h"

class QComboBox;
class QLineEdit;

namespace inspector::editing::ui {

class PlaceholderDialog : public QDialog {
public:
  PlaceholderDialog(const ReplacementQuestion& question, QWidget* parent);

  Text Entered() const;

private:
  QComboBox* m_Choices = nullptr;  // where there are some; its own field takes other words
  QLineEdit* m_Entry = nullptr;
};

}  // namespace inspector::editing::ui
