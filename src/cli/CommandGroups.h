// The groups of commands, one file each. A new group is one file and one line in Commands.cpp.
#pragma once

#include <vector>

#include "cli/Command.h"

namespace inspector::cli {

std::vector<Command> SetUpCommands();       // init, check
std::vector<Command> InspectionCommands();  // types, list, new, set, fields, apply-type, defaults, delete
std::vector<Command> StepCommands();        // categories, steps, rate, comment, material
std::vector<Command> ReportCommands();      // report
std::vector<Command> SettingCommands();     // options, owner
std::vector<Command> LibraryCommands();     // library
std::vector<Command> ExchangeCommands();    // export, import, staged, merge
std::vector<Command> SyncCommands();        // sync
std::vector<Command> SpellCommands();       // spell
std::vector<Command> PageCommands();        // man, completion

// "--json", shared by the commands that list.
CommandOption JsonOption();

// Of a repeated argument, one must be given.
Argument AtLeastOne(Argument repeated);

// The file that somebody typed, in whatever encoding. Nothing for a name that cannot be used, which has been
// said; `which` is "after --out".
std::optional<std::filesystem::path> TypedFile(Session& session, device::TextView which,
                                               const std::string& name);

// "NAME=VALUE" cut at the first "="; without one the value is missing.
struct Assignment {
  device::Text name;
  std::optional<device::Text> value;
};
Assignment ParseAssignment(const std::string& typed);

}  // namespace inspector::cli
