// Bytes as the letters that a page can hold.
#pragma once

#include "device/Files.h"

namespace inspector::reports {

// Writes an input to its end, block after block, so that a picture takes no memory. False when it could not
// be read to its end; what was read is written, and the code is whole. A failed write stays in the output.
bool WriteBase64(device::InputFile& input, std::string_view begun, device::OutputFile& output);

}  // namespace inspector::reports
