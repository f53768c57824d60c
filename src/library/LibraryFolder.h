// The files of a library folder, and how large they may be.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "device/Files.h"
#include "device/Text.h"

namespace inspector::library {

using device::Text;

// Far more than any office writes; a video under a wrong name must not fill the tablet's memory.
inline constexpr std::uint64_t kLargestFile = 32u << 20;
inline constexpr std::uint64_t kLargestLibrary = 128u << 20;

// Adds the .toml files below `folder`, as paths relative to it, in path order. Names that begin with a dot
// are passed over. A folder that is missing has none. Returns what is wrong, or an empty text.
Text FindLibraryFiles(device::Files& files, const std::filesystem::path& folder,
                      std::vector<std::filesystem::path>& found);

}  // namespace inspector::library
