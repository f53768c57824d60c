// Making the inspection report: the one way for screens and command line.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "data/Workspace.h"
#include "reports/ReportRun.h"

namespace inspector::reports {

struct ReportRequest {
  std::int32_t inspectionID = 0;
  Text layout;                                  // the name of a ReportLayout
  std::optional<std::filesystem::path> target;  // asked for when missing
  std::vector<Text> deselected;                 // titles of the categories to leave out
  bool pictures = true;                         // an option of the office can leave them out as well
};

// A layout or an inspection that does not exist, and every failure, has been told to the person when this
// returns Failed.
ReportOutcome WriteInspectionReport(data::Workspace& workspace, const ReportRequest& request);

}  // namespace inspector::reports
