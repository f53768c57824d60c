// Where the device's paths lead on the machine that the program runs on.
#pragma once

#include <filesystem>

#include "device/Text.h"

namespace inspector::device {

// Maps "\My Documents\X" to ROOT/My Documents/X. Names on the device compare without regard to case, so an
// existing file or folder is found under any spelling; what does not exist keeps the spelling given.
// Either slash separates; "." and ".." are followed but never lead above the root.
class DevicePaths {
public:
  explicit DevicePaths(std::filesystem::path root);

  const std::filesystem::path& Root() const { return m_Root; }

  // A path of the program's own or from a database: always below the root.
  std::filesystem::path Resolve(TextView devicePath) const;

  // A path that a person typed: absolute on the host when it begins with '/', on the device when it begins
  // with '\', in the person's home with "~/", else relative to the folder the program was started in.
  std::filesystem::path ResolveTyped(TextView path) const;

  // A path that was stored: as ResolveTyped for '/', everything else lies below the root. In which folder the
  // program was started says nothing about it.
  std::filesystem::path ResolveStored(TextView path) const;

  // A picture path out of a text or an option that a person typed: as ResolveTyped for '/', falling back to
  // the device when the host has no such file; everything else is a device path.
  std::filesystem::path ResolvePicture(TextView path) const;

private:
  std::filesystem::path m_Root;
};

}  // namespace inspector::device
