// Lists as one text, so that an expectation is one line and a failure shows all that is there.
#pragma once

#include <utility>
#include <vector>

#include "device/Text.h"

namespace inspector::tests {

// What `show` makes of each entry.
template <typename List, typename Show>
device::Text Joined(const List& list, Show show, const char16_t* between = u"|") {
  device::Text joined;
  for (bool isFirst = true; const auto& entry : list) {
    if (!std::exchange(isFirst, false)) joined += between;
    joined += show(entry);
  }
  return joined;
}
inline device::Text Joined(const std::vector<device::Text>& list, const char16_t* between = u"|") {
  return Joined(
      list, [](const device::Text& entry) { return entry; }, between);
}

}  // namespace inspector::tests
