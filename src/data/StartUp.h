// From nothing to two open databases of the right structure.
#pragma once

#include <memory>

#include "data/Workspace.h"
#include "device/Machine.h"

namespace inspector::data {

inline constexpr TextView kStartUpKey = u"HKEY_USERS\\.Default\\Software\\Pellory\\Inspector";
// The options page writes the paths here, and start-up never reads them: two different keys, on purpose.
inline constexpr TextView kOptionsKey = u"HKEY_USERS\\.Default\\Software\\Brindlecove\\Inspector";
inline constexpr TextView kOwnerKey = u"HKEY_CURRENT_USER\\ControlPanel\\Owner";
inline constexpr TextView kDefaultTemplatePath = u"\\My Documents\\Template_Data.cdb";
inline constexpr TextView kDefaultInspectionPath = u"\\My Documents\\Inspection_Data.cdb";
inline constexpr TextView kDataVersion = u"5.0";

enum class StartUpResult {
  Ready,
  Refused,     // the person left a dialog, or a file cannot be used; where it was a fault, it has been said
  Terminated,  // a fault of the structure; a message box has been shown
};

struct StartUp {
  StartUpResult result = StartUpResult::Refused;
  std::unique_ptr<Workspace> workspace;  // set when Ready
};

// Reads the paths from the registry (writing back defaults), asks for them while a file is missing, locks and
// opens both files, brings their structure to version "5.0" after asking, and loads the options.
StartUp StartData(const device::Machine& machine);

// The paths of the registry, the defaults where it has none. Nothing when the registry cannot be used: that
// has been said.
std::optional<device::DatabasePaths> ReadDatabasePaths(const device::Machine& machine);

enum class OptionsSaved { Done, Failed, MustQuit };
// Writes the options row, then both paths to the options key. MustQuit: a path differs from the one in use
// (letter case counts); the message has been shown and the program must end.
OptionsSaved SaveOptions(Workspace& workspace, const device::DatabasePaths& paths);

}  // namespace inspector::data
