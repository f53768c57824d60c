// The visit as one web page that holds everything: to be mailed, read on a phone and printed.
#pragma once

#include "reports/ReportFormat.h"

namespace inspector::reports {

class WebReport : public ReportFormat {
public:
  WebReport() : ReportFormat(u"web", u"Web page in one file", {}) {}

  StepSelection Selection(const ReportChoices&) const override { return AllFindings(); }
  device::SaveQuestion Question(const ReportHeader& header) const override;
  TextView ProgressTitle() const override { return u"Exporting web page..."; }
  void Write(const ReportSource& source, ReportRun& run) const override;
};

}  // namespace inspector::reports
