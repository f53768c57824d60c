#include "device/HostAppendFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "device/Uninterrupted.h"

namespace inspector::device {
namespace {

class FileLock {
public:
  explicit FileLock(int descriptor) : m_Descriptor(descriptor) {
    Uninterrupted(
        [&] { return ::flock(descriptor, LOCK_EX); });  // where there are no locks, there is one program
  }
  ~FileLock() { ::flock(m_Descriptor, LOCK_UN); }
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

private:
  int m_Descriptor;
};

// The name of a new file is part of its folder.
void SyncFolderOf(const std::filesystem::path& path) {
  const std::filesystem::path folder = path.has_parent_path() ? path.parent_path() : ".";
  const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  ::fsync(descriptor);
  ::close(descriptor);
}

}  // namespace

std::unique_ptr<HostAppendFile> HostAppendFile::Open(const std::filesystem::path& path) {
  if (path.native().find('\0') != std::string::npos) return nullptr;
  constexpr int kFlags = O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
  constexpr mode_t kNewFileMode = 0666;  // less the umask
  const int descriptor = Uninterrupted([&] { return ::open(path.c_str(), kFlags, kNewFileMode); });
  if (descriptor < 0) return nullptr;
  std::unique_ptr<HostAppendFile> file(new HostAppendFile(descriptor));
  struct stat status {};
  if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return nullptr;
  if (status.st_size == 0) SyncFolderOf(path);
  return file;
}

HostAppendFile::~HostAppendFile() {
  ::close(m_Descriptor);
}

bool HostAppendFile::FindMissingEnd(std::string& end) const {
  struct stat status {};
  if (::fstat(m_Descriptor, &status) != 0) return false;
  if (status.st_size == 0) return true;
  char last = '\0';
  if (Uninterrupted([&] { return ::pread(m_Descriptor, &last, 1, status.st_size - 1); }) != 1) return false;
  if (last == '\r')
    end = "\n";
  else if (last != '\n')
    end = "\r\n";
  return true;
}

bool HostAppendFile::AppendLine(std::string_view line) {
  const FileLock lock(m_Descriptor);
  std::string bytes;
  if (!FindMissingEnd(bytes)) return false;
  bytes.append(line).append("\r\n");
  // One write, so that a kill leaves the whole line or nothing of it; a disk that is full may take a part.
  const ssize_t written = Uninterrupted([&] { return ::write(m_Descriptor, bytes.data(), bytes.size()); });
  return written == static_cast<ssize_t>(bytes.size()) && ::fsync(m_Descriptor) == 0;
}

}  // namespace inspector::device
