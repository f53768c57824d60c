// A file of the host, read front to back.
#pragma once

#include <memory>

#include "device/Files.h"

namespace inspector::device {

class HostInputFile : public InputFile {
public:
  // Null when `path` is no ordinary file or cannot be read.
  static std::unique_ptr<HostInputFile> Open(const std::filesystem::path& path);

  ~HostInputFile() override;
  HostInputFile(const HostInputFile&) = delete;
  HostInputFile& operator=(const HostInputFile&) = delete;

  std::int64_t Read(char* buffer, std::size_t size) override;
  std::optional<std::uint64_t> Size() override;

private:
  explicit HostInputFile(int descriptor) : m_Descriptor(descriptor) {}

  int m_Descriptor;
};

}  // namespace inspector::device
