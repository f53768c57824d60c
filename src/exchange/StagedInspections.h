// What was imported and has not been merged yet.
#pragma once

#include <optional>
#include <vector>

#include "data/Workspace.h"
#include "device/Text.h"

namespace inspector::exchange {

using device::Text;

struct StagedInspection {
  std::int32_t inspectionID = 0;  // its key in the staging tables
  Text client;
  Text address;
  Text documentNumber;
  int categories = 0;
  int steps = 0;
};

// In the order in which they were imported. Nothing when they could not be read, which has been reported.
std::optional<std::vector<StagedInspection>> ReadStaged(data::Databases& databases);
// Nothing, too, when there is none of that key.
std::optional<StagedInspection> FindStaged(data::Databases& databases, std::int32_t inspectionID);

// Asks, then deletes one with its categories and steps. False when nothing was deleted; a failure has been
// told.
bool DiscardStaged(data::Workspace& workspace, const StagedInspection& staged);

}  // namespace inspector::exchange
