// Pictures of every screen, for the user's guide and for the eyes of whoever changes one.
#pragma once

#include <filesystem>

namespace inspector::tools {

// Writes each screen of the device at `home` as PNG into `folder` (made when missing): at 480x800, at
// 1280x800, at 1280x800 in dark colours, and at 480x800 with the largest text in high contrast. Needs a
// QApplication. False when a picture could not be written or the device could not be started; why has been
// told.
bool WriteScreenPictures(const std::filesystem::path& home, const std::filesystem::path& folder);

}  // namespace inspector::tools
