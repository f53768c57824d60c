// Stored text made fit for a Rich Text file.
#pragma once

#include "device/Text.h"

namespace inspector::reports {

using device::Text;
using device::TextView;

// Puts a backslash before a brace and "\par " in the place of a carriage return or the sign U+00AC.
// Backslashes and line feeds stay. A special character at the beginning, or directly after another, ends the
// escaping: the rest is left as it is. That is kept on purpose, for the reports are compared with those of
// other devices.
Text EscapeText(TextView text);

}  // namespace inspector::reports
