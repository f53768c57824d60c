// The visit as plain text, for mail and for readers without anything else.
#pragma once

#include "reports/ReportFormat.h"

namespace inspector::reports {

class TextReport : public ReportFormat {
public:
  TextReport() : ReportFormat(u"text", u"Plain text", {.pictures = false}) {}

  StepSelection Selection(const ReportChoices&) const override { return AllFindings(); }
  device::SaveQuestion Question(const ReportHeader&) const override {
    return {u"Inspection1.txt", u"\\My Documents\\", u"Text (*.txt)|*.txt|", u"txt"};
  }
  TextView ProgressTitle() const override { return u"Exporting text..."; }
  void Write(const ReportSource& source, ReportRun& run) const override;
};

}  // namespace inspector::reports
