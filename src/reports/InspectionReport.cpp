#include "reports/InspectionReport.h"

#include "reports/FullNarrativeRTFFile.h"

namespace inspector::reports {

void InspectionReport::Write(const ReportSource& source, ReportRun& run) const {
  const ReportLayout& layout = *FindLayout(source.choices.layout);
  CFullNarrativeRTFFile file(run.Create(), source.pictures, source.content, layout,
                             SettingsOf(source, layout.Columns()), StyleOf(source.options));
  file.WriteReport(run.Progress());
}

}  // namespace inspector::reports
