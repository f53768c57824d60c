#include "reports/SummaryReport.h"

#include "reports/ReportLayout.h"
#include "reports/SummaryRTFFile.h"

namespace inspector::reports {

// Of the layout only its language matters: the rows have a form of their own.
void SummaryReport::Write(const ReportSource& source, ReportRun& run) const {
  const bool isFrench = FindLayout(source.choices.layout)->IsFrench();
  CSummaryRTFFile file(run.Create(), source.pictures, source.content,
                       SettingsOf(source, RtfSettings::kSummary), StyleOf(source.options), isFrench);
  file.WriteReport(run.Progress());
}

}  // namespace inspector::reports
