// A text file of the host that only grows.
#pragma once

#include <memory>

#include "device/Files.h"

namespace inspector::device {

// Several programs may append to the same file: each line is written under a lock.
class HostAppendFile : public AppendFile {
public:
  // Null when `path` is no ordinary file, or cannot be opened or made.
  static std::unique_ptr<HostAppendFile> Open(const std::filesystem::path& path);

  ~HostAppendFile() override;
  HostAppendFile(const HostAppendFile&) = delete;
  HostAppendFile& operator=(const HostAppendFile&) = delete;

  bool AppendLine(std::string_view line) override;

private:
  explicit HostAppendFile(int descriptor) : m_Descriptor(descriptor) {}

  // What ends the last line; empty when it has an end. False when that cannot be read.
  bool FindMissingEnd(std::string& end) const;

  int m_Descriptor;
};

}  // namespace inspector::device
