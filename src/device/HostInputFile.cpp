#include "device/HostInputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace inspector::device {

std::unique_ptr<HostInputFile> HostInputFile::Open(const std::filesystem::path& path) {
  // The host's calls would take a name only up to its first NUL, and so find another file.
  if (path.native().find('\0') != std::string::npos) return nullptr;
  // Without O_NONBLOCK a pipe that nobody writes to would stop the program here.
  constexpr int kFlags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
  int descriptor = -1;
  do {
    descriptor = ::open(path.c_str(), kFlags);
  } while (descriptor < 0 && errno == EINTR);
  if (descriptor < 0) return nullptr;
  std::unique_ptr<HostInputFile> file(new HostInputFile(descriptor));
  struct stat status {};
  if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return nullptr;
  return file;
}

HostInputFile::~HostInputFile() {
  ::close(m_Descriptor);
}

std::int64_t HostInputFile::Read(char* buffer, std::size_t size) {
  std::size_t done = 0;
  while (done < size) {
    const ssize_t count = ::read(m_Descriptor, buffer + done, size - done);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return -1;
    if (count == 0) break;
    done += static_cast<std::size_t>(count);
  }
  return static_cast<std::int64_t>(done);
}

std::optional<std::uint64_t> HostInputFile::Size() {
  struct stat status {};
  if (::fstat(m_Descriptor, &status) != 0) return std::nullopt;
  return static_cast<std::uint64_t>(status.st_size);
}

}  // namespace inspector::device
