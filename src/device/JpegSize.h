// How large a photograph is, without decoding it.
#pragma once

#include <optional>

#include "device/Files.h"

namespace inspector::device {

// Pixels, each side from 1 to 65,535.
struct PictureSize {
  int width = 0;
  int height = 0;
};

// The size in which a viewer shows a JPEG: a camera that was held upright says so in the file, and its
// pictures are turned. Reads from where the file stands up to the size; nothing for what is no JPEG or broken
// before.
std::optional<PictureSize> ReadJpegSize(InputFile& file);

}  // namespace inspector::device
