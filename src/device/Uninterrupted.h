// Calls of the system that a signal may cut short.
#pragma once

#include <cerrno>

namespace inspector::device {

// Calls until it is not a signal that made it fail; what the last call returned.
template <typename Call>
auto Uninterrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

}  // namespace inspector::device
