// The seam to the disk. Tests replace it to make the tenth write fail or to list a folder in any order.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "device/Text.h"

namespace inspector::device {

// Reads front to back.
class InputFile {
public:
  virtual ~InputFile() = default;
  // Up to `size` bytes; fewer only at the end of the file, -1 on an error.
  virtual std::int64_t Read(char* buffer, std::size_t size) = 0;
  virtual std::optional<std::uint64_t> Size() = 0;
};

// A file that appears under its name only when it is whole: written beside the target, synced, renamed.
// Destroyed without Commit it leaves nothing, and the target as it was.
class OutputFile {
public:
  virtual ~OutputFile() = default;
  virtual bool Write(std::string_view bytes) = 0;
  virtual bool Commit() = 0;
  // The host's words for the last failure ("No space left on device"), empty when there was none.
  virtual std::string Error() const = 0;
};

// A text file that only grows: nothing that stands in it is ever touched, whenever the program ends.
class AppendFile {
public:
  virtual ~AppendFile() = default;
  // The line and CR LF behind all that is there, in one write, synced. A last line without an end gets one
  // first. False when that failed.
  virtual bool AppendLine(std::string_view line) = 0;
};

class Files {
public:
  virtual ~Files() = default;
  // Null when the file cannot be opened (a folder, a pipe or a device is no file).
  virtual std::unique_ptr<InputFile> OpenForReading(const std::filesystem::path& path) = 0;
  // Never null: what went wrong is told by the first Write or Commit and by Error.
  virtual std::unique_ptr<OutputFile> Create(const std::filesystem::path& target) = 0;
  // Makes the file when it is missing, but no folder. Null when it cannot be opened for reading and writing.
  virtual std::unique_ptr<AppendFile> OpenForAppending(const std::filesystem::path& path) = 0;
  // The entries of a folder, folders included, without "." and "..", in ascending 16-bit code units. A
  // folder that is missing has none.
  virtual std::vector<Text> ListEntries(const std::filesystem::path& folder) = 0;
  virtual bool Exists(const std::filesystem::path& path) = 0;
  // Makes a folder whose parent is there. One that is there already is the error file_exists.
  virtual std::error_code MakeFolder(const std::filesystem::path& folder) = 0;
  // A file, or a folder that is empty.
  virtual void Remove(const std::filesystem::path& path) = 0;
};

class HostFiles : public Files {
public:
  std::unique_ptr<InputFile> OpenForReading(const std::filesystem::path& path) override;
  std::unique_ptr<OutputFile> Create(const std::filesystem::path& target) override;
  std::unique_ptr<AppendFile> OpenForAppending(const std::filesystem::path& path) override;
  std::vector<Text> ListEntries(const std::filesystem::path& folder) override;
  bool Exists(const std::filesystem::path& path) override;
  std::error_code MakeFolder(const std::filesystem::path& folder) override;
  void Remove(const std::filesystem::path& path) override;
};

// The whole content, or nothing when it cannot be read or is larger than `limit` bytes.
std::optional<std::string> ReadWhole(Files& files, const std::filesystem::path& path, std::uint64_t limit);

}  // namespace inspector::device
