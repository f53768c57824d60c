// Texts from files and servers on their way to a terminal.
#pragma once

#include "device/Text.h"

namespace inspector::cli {

// Lines and tabs stay. Other control characters, with which a text from elsewhere could command the terminal,
// become U+FFFD.
device::Text ForTerminal(device::Text text);

}  // namespace inspector::cli
