// The device root where nobody named one, and the program's own files in it.
#pragma once

#include <filesystem>

namespace inspector::device {

// $INSPECTOR_HOME, else "inspector" in the user's data folder.
std::filesystem::path DefaultHome();

inline constexpr const char* kRegistryFile = "registry.toml";
inline constexpr const char* kLogFile = "inspector.log";

}  // namespace inspector::device
