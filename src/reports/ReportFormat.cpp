#include "reports/ReportFormat.h"

#include "reports/HtmlReport.h"
#include "reports/InspectionReport.h"
#include "reports/MajorSystemsReport.h"
#include "reports/SummaryReport.h"
#include "reports/TextReport.h"
#include "reports/WebReport.h"

namespace inspector::reports {

std::span<const ReportFormat* const> Formats() {
  static const InspectionReport inspection;
  static const SummaryReport summary;
  static const MajorSystemsReport majorSystems;
  static const HtmlExport htmlExport;
  static const HtmlView htmlView;
  static const TextReport text;
  static const WebReport web;
  static const ReportFormat* const formats[] = {&inspection, &summary,    &majorSystems, &web,
                                                &text,       &htmlExport, &htmlView};
  return formats;
}

const ReportFormat* FindFormat(TextView name) {
  for (const ReportFormat* const format : Formats()) {
    if (format->Name() == name) return format;
  }
  return nullptr;
}

}  // namespace inspector::reports
