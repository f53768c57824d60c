// How the server is to run: from its configuration file, and from the command line, which wins.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "server/Passwords.h"

namespace inspector::server {

// "127.0.0.1:7020", "office.example:7020", "[::1]:7020".
struct HostAndPort {
  std::string host;
  std::uint16_t port = 0;  // 0: any free one
  bool operator==(const HostAndPort&) const = default;
};
std::optional<HostAndPort> ReadHostAndPort(std::string_view text);
std::string ToString(const HostAndPort& place);

// What a device lets its user enter.
inline constexpr std::uint16_t kLowestDevicePort = 10;
inline constexpr std::uint16_t kHighestDevicePort = 10'000;

struct Settings {
  std::filesystem::path data;
  HostAndPort listen{"127.0.0.1", 7020};
  std::optional<HostAndPort> status;  // no page without it
  std::string timeZone;               // "Europe/Vienna"; empty: the system's
  bool logJson = false;

  int maxSessions = 2000;
  int maxPerAddress = 500;
  std::chrono::seconds idle{120};              // without a byte from a device that has the word
  std::chrono::seconds session{3600};          // from the connection to the end
  std::chrono::seconds stop{10};               // for inspections under way when the server is to end
  std::chrono::milliseconds loginDelay{1000};  // after the first wrong password
  PasswordCost cost;                           // of new passwords
};

// Adds what the file says; a relative `data` is relative to the file. What is wrong with it is added to
// `faults`, one line each, with the place.
void ReadSettings(const std::filesystem::path& file, Settings& settings, std::vector<std::string>& faults);
// What no server can run with.
void CheckSettings(const Settings& settings, std::vector<std::string>& faults);

}  // namespace inspector::server
