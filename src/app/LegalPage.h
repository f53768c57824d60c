// The page of the fine print.
#pragma once

#include "app/ReportText.h"
#include "app/TextOptionsPage.h"

namespace inspector::app {

class CLegalPage : public TextOptionsPage {
public:
  CLegalPage(const OptionsPage& page, QWidget* parent) : TextOptionsPage(page, ReportTextRemark, parent) {}
};

}  // namespace inspector::app
