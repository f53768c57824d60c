// The pages of the long texts that reports hold: fine print, definition of terms, footer, and what else a
// report says.
#pragma once

#include "app/ReportText.h"
#include "app/TextOptionsPage.h"

namespace inspector::app {

template <TextOptionsPage::Remark kRemark>
class ReportTextPage : public TextOptionsPage {
public:
  ReportTextPage(const OptionsPage& page, QWidget* parent) : TextOptionsPage(page, kRemark, parent) {}
};

using CLegalPage = ReportTextPage<ReportTextRemark>;
using CDefOfTermsPage = ReportTextPage<DefinitionsRemark>;
using CFooterPage = ReportTextPage<FooterRemark>;
using CReportTextPage = ReportTextPage<ReportTextRemark>;

}  // namespace inspector::app
