// Names of copies: "Kitchen", "Kitchen #2", "Kitchen #3".
#pragma once

#include "device/Text.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

// What stands before the character that precedes the first "#"; the whole title when it has none. So a blank
// before the "#" goes too, and a title that begins with "#" gives an empty name.
Text BaseNameOf(TextView title);

// "Kitchen #3".
Text NumberedTitle(TextView baseName, int number);

}  // namespace inspector::editing
