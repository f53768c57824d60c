#include "device/Files.h"

#include <algorithm>
#include <system_error>

#include "device/HostAppendFile.h"
#include "device/HostInputFile.h"
#include "device/HostOutputFile.h"

namespace inspector::device {

std::unique_ptr<InputFile> HostFiles::OpenForReading(const std::filesystem::path& path) {
  return HostInputFile::Open(path);
}

std::unique_ptr<OutputFile> HostFiles::Create(const std::filesystem::path& target) {
  return std::make_unique<HostOutputFile>(target);
}

std::unique_ptr<AppendFile> HostFiles::OpenForAppending(const std::filesystem::path& path) {
  return HostAppendFile::Open(path);
}

std::vector<Text> HostFiles::ListEntries(const std::filesystem::path& folder) {
  std::vector<Text> entries;
  if (folder.native().find('\0') != std::string::npos) return entries;
  std::error_code error;
  for (std::filesystem::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
    entries.push_back(FromUtf8(at->path().filename().native()));
  }
  std::sort(entries.begin(), entries.end());
  return entries;
}

bool HostFiles::Exists(const std::filesystem::path& path) {
  std::error_code error;
  return path.native().find('\0') == std::string::npos && std::filesystem::exists(path, error);
}

std::error_code HostFiles::MakeFolder(const std::filesystem::path& folder) {
  if (folder.native().find('\0') != std::string::npos) return make_error_code(std::errc::invalid_argument);
  std::error_code error;
  if (!std::filesystem::create_directory(folder, error) && !error)
    error = make_error_code(std::errc::file_exists);
  return error;
}

void HostFiles::Remove(const std::filesystem::path& path) {
  std::error_code ignored;
  if (path.native().find('\0') == std::string::npos) std::filesystem::remove(path, ignored);
}

std::optional<std::string> ReadWhole(Files& files, const std::filesystem::path& path, std::uint64_t limit) {
  const std::unique_ptr<InputFile> file = files.OpenForReading(path);
  if (file == nullptr) return std::nullopt;
  const std::optional<std::uint64_t> size = file->Size();
  if (!size || *size > limit) return std::nullopt;
  // The size is only a start: the file may grow or shrink, and those of /proc say 0.
  constexpr std::size_t kAtOnce = 64 * 1024;
  std::string content;
  content.resize(static_cast<std::size_t>(*size) + 1);
  std::size_t filled = 0;
  while (true) {
    const std::int64_t count = file->Read(content.data() + filled, content.size() - filled);
    if (count < 0) return std::nullopt;
    filled += static_cast<std::size_t>(count);
    if (filled > limit) return std::nullopt;
    if (filled < content.size()) break;
    content.resize(content.size() + kAtOnce);
  }
  content.resize(filled);
  return content;
}

}  // namespace inspector::device
