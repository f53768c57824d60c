// Words of a person inside the markup of a page.
#pragma once

#include "device/Text.h"

namespace inspector::reports {

using device::Text;
using device::TextView;

// "&" becomes "&amp;" and so on for "<", ">" and the double quote; the end of a line becomes `lineEnd`.
void AppendEscaped(Text& page, TextView words, TextView lineEnd);

}  // namespace inspector::reports
