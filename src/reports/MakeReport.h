// Making a report: the one way for screens and command line.
#pragma once

#include "data/Workspace.h"
#include "reports/ReportFormat.h"

namespace inspector::reports {

struct ReportRequest {
  std::int32_t inspectionID = 0;
  Text format;  // the name of a ReportFormat
  ReportChoices choices;
  std::optional<std::filesystem::path> target;  // the format's suggestion, or asked for, when missing
  bool mayReplace = false;  // as for ReportTarget; a file was asked about before it became the target
};

// A format, layout or inspection that does not exist, and every failure, has been told to the person when
// this returns Failed.
ReportOutcome MakeReport(data::Workspace& workspace, const ReportRequest& request);

// The layout of the inspection's type; the first of all where that names none.
Text LayoutOf(data::Workspace& workspace, std::int32_t inspectionID);

}  // namespace inspector::reports
