// All that was found, category by category.
#pragma once

#include "reports/RtfFormat.h"

namespace inspector::reports {

class InspectionReport : public RtfFormat {
public:
  InspectionReport() : RtfFormat(u"inspection", u"Inspection report", {.layout = true}, u"Inspection_") {}

  StepSelection Selection(const ReportChoices&) const override { return AllFindings(); }
  void Write(const ReportSource& source, ReportRun& run) const override;
};

}  // namespace inspector::reports
