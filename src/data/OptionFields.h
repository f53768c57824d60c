// The options by name, for the command line and for scripts.
#pragma once

#include <optional>

#include "data/OptionsTable.h"

namespace inspector::data {

// Every option in the order of its row.
std::vector<Text> OptionNames();
// Yes/no as TRUE or FALSE, a binary value as its size in bytes. Nothing for a name that no option has. Names
// compare without regard to case.
std::optional<Text> OptionText(const OptionsTable& options, TextView name);

enum class OptionSet { Done, Repaired, UnknownName, BadValue };
// Sets one option in memory. Yes/no takes TRUE, FALSE, yes, no, 1, 0 and -1. A font size or spacing that the
// program does not know is repaired as it would be when read. ReportIcon cannot be set by text,
// DataVersion and OptionsID not at all.
OptionSet SetOption(OptionsTable& options, TextView name, TextView value);

}  // namespace inspector::data
