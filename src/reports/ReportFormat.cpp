#include "reports/ReportFormat.h"

#include "reports/InspectionReport.h"
#include "reports/MajorSystemsReport.h"
#include "reports/SummaryReport.h"

namespace inspector::reports {

std::span<const ReportFormat* const> Formats() {
  static const InspectionReport inspection;
  static const SummaryReport summary;
  static const MajorSystemsReport majorSystems;
  static const ReportFormat* const formats[] = {&inspection, &summary, &majorSystems};
  return formats;
}

const ReportFormat* FindFormat(TextView name) {
  for (const ReportFormat* const format : Formats()) {
    if (format->Name() == name) return format;
  }
  return nullptr;
}

}  // namespace inspector::reports
