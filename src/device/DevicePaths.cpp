#include "device/DevicePaths.h"

#include <optional>
#include <string>
#include <system_error>
#include <tuple>
#include <utility>
#include <vector>

namespace inspector::device {
namespace {

namespace fs = std::filesystem;

// UTF-8, with U+FFFD for NUL: the host's calls would end the name there and find another file.
std::string HostName(TextView name) {
  Text cleaned(name);
  for (char16_t& unit : cleaned) {
    if (unit == 0) unit = 0xFFFD;
  }
  return ToUtf8(cleaned);
}

bool IsSlash(char16_t unit) {
  return unit == u'\\' || unit == u'/';
}

// The names from the root down, without "." and with ".." carried out as far as the root.
std::vector<std::string> NamesOf(TextView path) {
  std::vector<std::string> names;
  while (!path.empty()) {
    std::size_t end = 0;
    while (end < path.size() && !IsSlash(path[end])) ++end;
    const TextView name = path.substr(0, end);
    path.remove_prefix(end < path.size() ? end + 1 : end);
    if (name == u"..") {
      if (!names.empty()) names.pop_back();
    } else if (!name.empty() && name != u".") {
      names.push_back(HostName(name));
    }
  }
  return names;
}

// A link that leads nowhere is there, too.
bool IsThere(const fs::path& path) {
  std::error_code error;
  return fs::exists(fs::symlink_status(path, error));
}

// The entry of `folder` that is called `name` in another spelling; of several the first in ascending order.
std::optional<fs::path> FindIgnoringCase(const fs::path& folder, const std::string& name) {
  const Text wanted = FromUtf8(name);
  std::optional<fs::path> found;
  Text foundText;
  std::error_code error;
  for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
    fs::path entry = at->path().filename();
    Text text = FromUtf8(entry.native());
    if (!EqualIgnoringCase(text, wanted)) continue;
    if (!found || std::tie(text, entry) < std::tie(foundText, *found)) {
      found = std::move(entry);
      foundText = std::move(text);
    }
  }
  return found;
}

}  // namespace

DevicePaths::DevicePaths(fs::path root) : m_Root(std::move(root)) {}

fs::path DevicePaths::Resolve(TextView devicePath) const {
  const std::vector<std::string> names = NamesOf(devicePath);
  fs::path asSpelt = m_Root;
  for (const std::string& name : names) asSpelt /= name;
  if (IsThere(asSpelt)) return asSpelt;

  fs::path path = m_Root;
  bool exists = true;  // below something that is missing there is nothing to look up
  for (const std::string& name : names) {
    if (exists && !IsThere(path / name)) {
      if (const auto other = FindIgnoringCase(path, name)) {
        path /= *other;
        continue;
      }
      exists = false;
    }
    path /= name;
  }
  return path;
}

fs::path DevicePaths::ResolveTyped(TextView path) const {
  if (path.empty()) return {};
  if (path.front() == u'\\') return Resolve(path);
  if (path.front() == u'/') return HostName(path);
  // A shell has done that already; a dialog has not.
  if (const char* const home = std::getenv("HOME"); home != nullptr && path.starts_with(u"~/"))
    return fs::path(home) / HostName(path.substr(2));
  std::error_code error;  // a start folder that is gone by now leaves the path relative
  return fs::current_path(error) / HostName(path);
}

fs::path DevicePaths::ResolveStored(TextView path) const {
  return path.empty() || path.front() == u'/' ? ResolveTyped(path) : Resolve(path);
}

fs::path DevicePaths::ResolvePicture(TextView path) const {
  if (!path.empty() && path.front() == u'/') {
    fs::path onHost = HostName(path);
    std::error_code error;
    if (fs::is_regular_file(onHost, error)) return onHost;
  }
  return Resolve(path);
}

}  // namespace inspector::device
