#include "server/Settings.h"

#include <toml++/toml.h>

#include <charconv>
#include <functional>
#include <map>

#include "device/Files.h"

namespace inspector::server {
namespace {

constexpr std::uint64_t kLargestFile = 1024 * 1024;
constexpr std::int64_t kLargestNumber = 1'000'000;

// Takes a value; false when it is none for this key.
using Reader = std::function<bool(const toml::node&)>;

struct Key {
  const char* expects;
  Reader read;
};

Reader Into(std::string& text) {
  return [&text](const toml::node& node) {
    if (!node.is_string()) return false;
    text = node.value_or(std::string());
    return true;
  };
}

Reader IntoNumber(const std::function<void(std::int64_t)>& set) {
  return [set](const toml::node& node) {
    const std::int64_t number = node.is_integer() ? node.value_or(std::int64_t{0}) : 0;
    if (number < 1 || number > kLargestNumber) return false;
    set(number);
    return true;
  };
}

Reader IntoPlace(const std::function<void(const HostAndPort&)>& set) {
  return [set](const toml::node& node) {
    const auto place = ReadHostAndPort(node.value_or(std::string()));
    if (place) set(*place);
    return place.has_value();
  };
}

}  // namespace

std::optional<HostAndPort> ReadHostAndPort(std::string_view text) {
  const std::size_t colon = text.rfind(':');
  if (colon == std::string_view::npos) return std::nullopt;
  std::string_view host = text.substr(0, colon);
  const std::string_view number = text.substr(colon + 1);
  if (host.starts_with('[') && host.ends_with(']')) {
    host = host.substr(1, host.size() - 2);
  } else if (host.find(':') != std::string_view::npos) {
    return std::nullopt;
  }
  HostAndPort place{std::string(host), 0};
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), place.port);
  if (error != std::errc() || end != number.data() + number.size() || host.empty()) return std::nullopt;
  return place;
}

std::string ToString(const HostAndPort& place) {
  const bool isV6 = place.host.find(':') != std::string::npos;
  return (isV6 ? "[" + place.host + "]" : place.host) + ":" + std::to_string(place.port);
}

void ReadSettings(const std::filesystem::path& file, Settings& settings, std::vector<std::string>& faults) {
  device::HostFiles files;
  const auto content = device::ReadWhole(files, file, kLargestFile);
  if (!content) {
    faults.push_back(file.string() + ": cannot be read.");
    return;
  }
  toml::table table;
  try {
    table = toml::parse(std::string_view(*content));
  } catch (const toml::parse_error& fault) {
    faults.push_back(file.string() + ":" + std::to_string(fault.source().begin.line) + ": " +
                     std::string(fault.description()));
    return;
  }

  std::string data;
  std::string log;
  const std::map<std::string, Key, std::less<>> keys = {
      {"data", {"a folder", Into(data)}},
      {"listen", {"HOST:PORT", IntoPlace([&](const HostAndPort& place) { settings.listen = place; })}},
      {"status", {"HOST:PORT", IntoPlace([&](const HostAndPort& place) { settings.status = place; })}},
      {"time_zone", {"a name like \"Europe/Vienna\"", Into(settings.timeZone)}},
      {"log",
       {"\"words\" or \"json\"",
        [&](const toml::node& node) {
          log = node.value_or(std::string());
          return log == "words" || log == "json";
        }}},
      {"max_sessions",
       {"a number above 0", IntoNumber([&](std::int64_t n) { settings.maxSessions = static_cast<int>(n); })}},
      {"max_per_address", {"a number above 0", IntoNumber([&](std::int64_t n) {
                             settings.maxPerAddress = static_cast<int>(n);
                           })}},
      {"idle_seconds",
       {"a number above 0", IntoNumber([&](std::int64_t n) { settings.idle = std::chrono::seconds(n); })}},
      {"session_seconds",
       {"a number above 0", IntoNumber([&](std::int64_t n) { settings.session = std::chrono::seconds(n); })}},
      {"stop_seconds",
       {"a number above 0", IntoNumber([&](std::int64_t n) { settings.stop = std::chrono::seconds(n); })}},
      {"password_mib", {"a number above 0", IntoNumber([&](std::int64_t n) {
                          settings.cost.bytes = static_cast<std::size_t>(n) << 20;
                        })}},
      {"login_delay_ms", {"a number above 0", IntoNumber([&](std::int64_t n) {
                            settings.loginDelay = std::chrono::milliseconds(n);
                          })}},
  };
  for (const auto& [name, node] : table) {
    const std::string place = file.string() + ":" + std::to_string(node.source().begin.line) + ": ";
    const auto key = keys.find(name.str());
    if (key == keys.end()) {
      std::string known;
      for (const auto& [other, unused] : keys) known += (known.empty() ? "" : ", ") + other;
      faults.push_back(place + "there is no setting \"" + std::string(name.str()) + "\". There are " + known +
                       ".");
    } else if (!key->second.read(node)) {
      faults.push_back(place + std::string(name.str()) + " is " + key->second.expects + ".");
    }
  }
  if (!data.empty()) settings.data = file.parent_path() / data;
  if (!log.empty()) settings.logJson = log == "json";
}

void CheckSettings(const Settings& settings, std::vector<std::string>& faults) {
  if (settings.data.empty())
    faults.emplace_back("Where is the data? Give --data DIR, or \"data\" in the configuration file.");
  if (settings.maxSessions < 1) faults.emplace_back("The number of sessions must be above 0.");
  if (settings.maxPerAddress < 1)
    faults.emplace_back("The number of sessions of one address must be above 0.");
  const std::filesystem::path zone = std::filesystem::path("/usr/share/zoneinfo") / settings.timeZone;
  std::error_code error;
  if (!settings.timeZone.empty() && !std::filesystem::is_regular_file(zone, error))
    faults.push_back("There is no time zone \"" + settings.timeZone + "\".");
}

}  // namespace inspector::server
