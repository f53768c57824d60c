// What is to be known of a text that an office puts into its reports, while it is written.
#pragma once

#include "device/Text.h"

namespace inspector::app {

using device::Text;
using device::TextView;

// The characters that the reports' code page lacks, each once, in their order.
Text LostCharacters(TextView text);

// Remarks for a person, one per line; empty when there is nothing to say. What holds for every text: lost
// characters, and backslashes, which reports take for commands.
Text ReportTextRemark(TextView text);
Text DefinitionsRemark(TextView text);
// Also how much of every page it takes.
Text FooterRemark(TextView text);

}  // namespace inspector::app
