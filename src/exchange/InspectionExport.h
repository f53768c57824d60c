// Writing an inspection into one file, to be imported on another device.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "data/Workspace.h"

namespace inspector::exchange {

using device::Text;
using device::TextView;

struct ExportRequest {
  std::int32_t inspectionID = 0;
  std::optional<std::filesystem::path> target;  // asked for when missing; replaced without asking when given
};

enum class ExportResult { Written, Cancelled, Failed };

struct ExportOutcome {
  ExportResult result = ExportResult::Failed;
  std::filesystem::path file;  // set when written
  int records = 0;
  std::vector<Text> notes;  // for the person who asked for it: what the file does not hold
};

// Asks before it writes values that a reader will not get as they are. The file appears whole or not at all:
// Cancel and failures leave what was there. Every failure has been told when this returns Failed.
ExportOutcome ExportInspection(data::Workspace& workspace, const ExportRequest& request);

}  // namespace inspector::exchange
