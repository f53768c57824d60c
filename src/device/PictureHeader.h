// How large a picture of the usual kinds is, by its first bytes. Photographs tell it later: see JpegSize.
#pragma once

#include <string_view>

#include "device/JpegSize.h"

namespace inspector::device {

// So many bytes from the beginning are enough.
inline constexpr std::size_t kPictureHeaderBytes = 32;

// Of a PNG, GIF, BMP or WebP picture. Nothing for any other, for one that breaks off before its size, and for
// sides that are out of PictureSize's range.
std::optional<PictureSize> SizeInHeader(std::string_view begin);

// Of a picture of any kind that is known here; reads `file` from its beginning.
std::optional<PictureSize> ReadPictureSize(Files& files, const std::filesystem::path& file);

}  // namespace inspector::device
