// The page of what stands at the foot of each page of a report.
#pragma once

#include "app/ReportText.h"
#include "app/TextOptionsPage.h"

namespace inspector::app {

class CFooterPage : public TextOptionsPage {
public:
  CFooterPage(const OptionsPage& page, QWidget* parent) : TextOptionsPage(page, FooterRemark, parent) {}
};

}  // namespace inspector::app
