// What deserves the client's attention, category by category.
#pragma once

#include "reports/RtfFormat.h"

namespace inspector::reports {

class SummaryReport : public RtfFormat {
public:
  SummaryReport() : RtfFormat(u"summary", u"Summary report", {.layout = true, .rating = true}, u"Summary_") {}

  StepSelection Selection(const ReportChoices& choices) const override {
    return SummaryFindings(choices.rating);
  }
  void Write(const ReportSource& source, ReportRun& run) const override;
};

}  // namespace inspector::reports
