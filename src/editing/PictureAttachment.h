// Pictures that belong to an inspection for good: copies in a folder of its own, under names that can stand
// in a picture tag.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "device/Machine.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

inline constexpr int kAttachedSide = 1600;  // pixels: sharp on paper at the width of a page

// How a picture is copied when it is attached; a habit of the device, kept in its registry.
struct AttachmentForm {
  int longestSide = kAttachedSide;  // in pixels; 0 leaves the size as it is
  bool upright = true;              // turned as the camera was held

  bool operator==(const AttachmentForm&) const = default;
};
AttachmentForm ReadAttachmentForm(const device::Registry& registry);
// Sizes to kAttachedSide or not at all. False when the registry cannot be written.
bool WriteAttachmentForm(device::Registry& registry, const AttachmentForm& form);

// "\My Documents\Pictures\1000\". Never the card's folder, whose numbering a copy would shift.
Text AttachmentFolder(std::int32_t inspectionID);

// A name for the copy of `original` (a bare file name), always ".jpg": without what would end a tag or a path
// in it, and unlike any of `taken`, without regard to case.
Text AttachmentName(TextView original, const std::vector<Text>& taken);

// Writes the JPEG under such a name. The device path, or nothing when it could not be written, which has been
// reported.
std::optional<Text> StoreAttachment(const device::Machine& machine, std::int32_t inspectionID,
                                    TextView original, std::string_view jpeg);

// The device path of a file of the host that lies below the device's root; any other path as it is.
Text PicturePathOf(const device::DevicePaths& paths, const std::filesystem::path& file);

}  // namespace inspector::editing
