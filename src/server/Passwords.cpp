#include "server/Passwords.h"

#include <sodium.h>

#include <algorithm>
#include <array>

#include "device/CodePage.h"
#include "server/InspectionEntry.h"

namespace inspector::server {
namespace {

std::string WhyNotTyped(const char* what, device::TextView text, std::size_t longest) {
  const std::string subject = what;
  if (text.empty()) return subject + " may not be empty.";
  if (text.size() > longest) return subject + " may have " + std::to_string(longest) + " characters at most.";
  if (!device::FitsCodePage(text))
    return subject + " may only have characters of Windows-1252, as devices do.";
  if (std::any_of(text.begin(), text.end(), IsControl)) return subject + " may have no control characters.";
  return {};
}

}  // namespace

bool PreparePasswords() {
  return sodium_init() >= 0;
}

std::optional<std::string> HashPassword(std::string_view password, const PasswordCost& cost) {
  std::array<char, crypto_pwhash_STRBYTES> hash{};
  if (crypto_pwhash_str_alg(hash.data(), password.data(), password.size(), cost.passes, cost.bytes,
                            crypto_pwhash_ALG_ARGON2ID13) != 0)
    return std::nullopt;
  return std::string(hash.data());
}

bool IsPassword(const std::string& hash, std::string_view password) {
  return crypto_pwhash_str_verify(hash.c_str(), password.data(), password.size()) == 0;
}

std::string WhyNoPassword(device::TextView password) {
  return WhyNotTyped("A password", password, kLongestPassword);
}

std::string WhyNoName(device::TextView name) {
  return WhyNotTyped("A name", name, kLongestName);
}

}  // namespace inspector::server
