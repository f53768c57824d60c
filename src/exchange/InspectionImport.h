// Reading an export file into the staging tables, where an inspection lies until it is merged.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "data/Workspace.h"

namespace inspector::exchange {

using device::Text;
using device::TextView;

// What a category belongs to that stands before any inspection, and a step before any category.
inline constexpr std::int32_t kNoParent = -777;

enum class ImportResult { Staged, Cancelled, Failed };

struct ImportOutcome {
  ImportResult result = ImportResult::Failed;
  std::vector<std::int32_t> inspections;  // the keys of what was staged, in the order of the file
  int categories = 0;
  int steps = 0;
  std::vector<Text> notes;  // for the person who asked for it: what was odd about the file
};

// Shows what is read in alerts as it goes, which the person can have stopped for this file. One transaction:
// all of the file is staged or nothing. Every failure has been told when this returns Failed.
ImportOutcome ImportInspectionFile(data::Workspace& workspace, const std::filesystem::path& file);
// Asks for the file. When the person cancels, the alerts still come.
ImportOutcome ImportInspectionFile(data::Workspace& workspace);

}  // namespace inspector::exchange
