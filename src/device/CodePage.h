// The device's ANSI code page, Windows-1252: one byte per character, in reports, export files and protocol.
#pragma once

#include <string>
#include <string_view>

#include "device/Text.h"

namespace inspector::device {

// One byte per 16-bit unit; a unit that the code page lacks becomes '?' (a surrogate pair gives two).
// U+0081, 8D, 8F, 90 and 9D map to themselves.
std::string ToCodePage(TextView text);
void AppendCodePage(std::string& out, TextView text);
Text FromCodePage(std::string_view bytes);
bool FitsCodePage(TextView text);

}  // namespace inspector::device
