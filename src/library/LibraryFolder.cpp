#include "library/LibraryFolder.h"

#include <system_error>

#include "device/Format.h"

namespace inspector::library {
namespace {

constexpr int kDeepestFolder = 16;  // a link may lead back to a folder above it
constexpr std::size_t kMostFiles = 5000;

Text Find(device::Files& files, const std::filesystem::path& folder, const std::filesystem::path& below,
          int depth, std::vector<std::filesystem::path>& found) {
  const std::filesystem::path here = below.empty() ? folder : folder / below;
  const Text name = device::FromUtf8(here.string());
  std::error_code error;
  // A folder that cannot be listed must not pass for an empty one.
  std::filesystem::directory_iterator probe(here, error);
  if (error && error != std::errc::no_such_file_or_directory)
    return device::Format(u"The folder %s cannot be read: %s.", name, device::FromUtf8(error.message()));
  if (depth > kDeepestFolder)
    return device::Format(u"The folder %s lies too deep. Does a link in it lead back up?", name);
  for (const Text& entry : files.ListEntries(here)) {
    if (entry.starts_with(u'.')) continue;
    const std::filesystem::path path = below / device::ToUtf8(entry);
    if (std::filesystem::is_directory(folder / path, error)) {
      if (Text problem = Find(files, folder, path, depth + 1, found); !problem.empty()) return problem;
    } else if (device::EqualIgnoringCase(device::FromUtf8(path.extension().string()), u".toml")) {
      found.push_back(path);
      if (found.size() > kMostFiles)
        return device::Format(u"The folder %s holds more files than a library has.", name);
    }
  }
  return {};
}

}  // namespace

Text FindLibraryFiles(device::Files& files, const std::filesystem::path& folder,
                      std::vector<std::filesystem::path>& found) {
  return Find(files, folder, {}, 0, found);
}

}  // namespace inspector::library
