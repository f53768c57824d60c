// Bringing databases of an older structure up to date.
#pragma once

#include "data/Workspace.h"

namespace inspector::data {

enum class UpgradeResult { Sound, Refused, Failed, Fatal };

// The stored structure version, without touching the file; empty when there is no options row.
Text ReadDataVersion(Databases& databases);

// Nothing when the version is "5.0" in any case. Else asks, keeps a copy of both files beside them (which can
// be cancelled: then it is as if the person had refused), checks every table under a progress window and
// writes the version. Each table is a transaction of its own; killed half-way it runs again to the same end.
UpgradeResult UpgradeStructure(Workspace& workspace);

// The options table's own check, before its row is first read. Keeps a copy too when it has to alter the
// file.
UpgradeResult CheckOptionsStructure(Workspace& workspace);

// Copies a database byte for byte to a new name beside it: its own, `suffix`, and a number where that is
// taken. Empty when done, else why not; cancelled in `progress` there is no copy.
Text KeepCopy(Connection& connection, device::Files& files, const std::string& suffix,
              std::filesystem::path* copy = nullptr, device::ProgressWindow* progress = nullptr);

}  // namespace inspector::data
