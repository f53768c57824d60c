// The page of the definitions of terms.
#pragma once

#include "app/ReportText.h"
#include "app/TextOptionsPage.h"

namespace inspector::app {

class CDefOfTermsPage : public TextOptionsPage {
public:
  CDefOfTermsPage(const OptionsPage& page, QWidget* parent)
      : TextOptionsPage(page, DefinitionsRemark, parent) {}
};

}  // namespace inspector::app
