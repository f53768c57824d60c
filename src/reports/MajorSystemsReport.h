// What deserves the client's attention, major system by major system.
#pragma once

#include "reports/RtfFormat.h"

namespace inspector::reports {

class MajorSystemsReport : public RtfFormat {
public:
  MajorSystemsReport()
      : RtfFormat(u"major-systems", u"Major systems report", {.categories = false, .pictures = false},
                  u"MajorSystems_") {}

  StepSelection Selection(const ReportChoices&) const override { return MajorSystemFindings(); }
  int Parts(const ReportContent& content) const override;
  void Write(const ReportSource& source, ReportRun& run) const override;
};

}  // namespace inspector::reports
