// A text field that is as high as its words, within bounds.
#pragma once

#include "device/ui/LinesEdit.h"

namespace inspector::editing::ui {

// One line at first, at least as high as a finger needs, at most eight lines. Tab goes on to the next field.
class GrowingTextEdit : public device::ui::LinesEdit {
public:
  explicit GrowingTextEdit(QWidget* parent = nullptr);

protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

private:
  void Fit();
};

}  // namespace inspector::editing::ui
