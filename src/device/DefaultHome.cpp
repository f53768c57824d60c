#include "device/DefaultHome.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace inspector::device {

std::filesystem::path DefaultHome() {
  const auto variable = [](const char* name) {
    const char* value = std::getenv(name);
    return std::string(value ? value : "");
  };
  if (const std::string home = variable("INSPECTOR_HOME"); !home.empty()) return home;
  if (const std::filesystem::path data = variable("XDG_DATA_HOME"); data.is_absolute())
    return data / "inspector";
  std::string home = variable("HOME");
  // Without a home the databases would end up in whatever folder the command is typed.
  if (const passwd* const user = home.empty() ? getpwuid(getuid()) : nullptr) home = user->pw_dir;
  return std::filesystem::path(home.empty() ? "/" : home) / ".local/share/inspector";
}

}  // namespace inspector::device
