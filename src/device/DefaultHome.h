// The device root where nobody named one.
#pragma once

#include <filesystem>

namespace inspector::device {

// $INSPECTOR_HOME, else "inspector" in the user's data folder.
std::filesystem::path DefaultHome();

}  // namespace inspector::device
