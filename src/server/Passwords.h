// Passwords as Argon2id hashes, and what may be one.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "device/Text.h"

namespace inspector::server {

// How much work a hash is. A hash carries its own, so that a change concerns new passwords only.
struct PasswordCost {
  unsigned long long passes = 2;
  std::size_t bytes = 64 * 1024 * 1024;
};

// To be called once, before anything else here. False when the system has no source of random numbers.
bool PreparePasswords();

// Passwords are bytes in the device's code page, as they arrive. Takes a tenth of a second and `cost.bytes`
// of memory; nothing when there is no such memory.
std::optional<std::string> HashPassword(std::string_view password, const PasswordCost& cost = {});
bool IsPassword(const std::string& hash, std::string_view password);

// Devices let a person type this many characters.
inline constexpr std::size_t kLongestPassword = 16;
inline constexpr std::size_t kLongestName = 64;
// Why a device could not send it, for a person; empty when it could.
std::string WhyNoPassword(device::TextView password);
std::string WhyNoName(device::TextView name);

}  // namespace inspector::server
