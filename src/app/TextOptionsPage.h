// A page of the options with one long text that reports hold.
#pragma once

#include "app/OptionsPageView.h"

class QLabel;
class QPlainTextEdit;

namespace inspector::app {

// The text has all the room; below it stands what is to be known of it, while it is typed. Characters that
// reports lack are underlined.
class TextOptionsPage : public COptionsPage {
public:
  using Remark = Text (*)(TextView text);

  TextOptionsPage(const OptionsPage& page, Remark remark, QWidget* parent);

private:
  void ShowRemark();

  Remark m_Remark;
  QPlainTextEdit* m_Text;
  QLabel* m_Below;
};

}  // namespace inspector::app
