// Where the inspector was last, so that the next start goes on there.
#pragma once

#include <cstdint>

#include "device/Registry.h"

namespace inspector::device {

// Keys of rows; -1 where there was none. The category 0 stands for the list of categories.
struct LastPlace {
  std::int32_t inspectionID = -1;
  std::int32_t categoryID = -1;
  std::int32_t stepID = -1;

  bool operator==(const LastPlace&) const = default;
};

// A value that is missing or no number reads as -1.
LastPlace ReadLastPlace(const Registry& registry);
// One write, and none when nothing changed. False when the registry cannot be written.
bool WriteLastPlace(Registry& registry, const LastPlace& place);

}  // namespace inspector::device
