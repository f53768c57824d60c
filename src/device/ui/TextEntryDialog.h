// Asks for one line of text.
#pragma once

#include <QDialog>

#include "device/Prompts.h"

class QLineEdit;

namespace inspector::device::ui {

class TextEntryDialog : public QDialog {
public:
  TextEntryDialog(const TextQuestion& question, QWidget* parent);

  Text Entered() const;

private:
  QLineEdit* m_Entry;
};

}  // namespace inspector::device::ui
