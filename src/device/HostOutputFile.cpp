#include "device/HostOutputFile.h"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstring>
#include <system_error>

#include "device/Uninterrupted.h"

namespace inspector::device {
namespace {

constexpr std::size_t kBufferSize = 64 * 1024;
constexpr std::uint64_t kWritebackSize = 8 << 20;
constexpr mode_t kNewFileMode = 0666;  // less the umask
constexpr int kLinksFollowed = 40;     // as many as the host itself follows
constexpr int kNamesTried = 1000;
constexpr std::size_t kNameBytesKept = 200;  // of the 255 that a name may have
constexpr std::string_view kHiddenSuffix = ".unfinished";

// The hidden names of report.rtf are ".report.rtf.", the process id, "-", a number and the suffix.
std::string HiddenPrefix(const std::string& name) {
  std::string prefix(1, '.');
  prefix.append(name, 0, kNameBytesKept).push_back('.');
  return prefix;
}

std::string HiddenName(const std::string& name, int number) {
  std::string hidden = HiddenPrefix(name);
  hidden.append(std::to_string(::getpid())).append("-").append(std::to_string(number)).append(kHiddenSuffix);
  return hidden;
}

// The process that a hidden name belongs to; 0 when it is no hidden name with this prefix.
pid_t OwnerOf(std::string_view entry, std::string_view prefix) {
  if (!entry.starts_with(prefix) || !entry.ends_with(kHiddenSuffix)) return 0;
  entry.remove_prefix(prefix.size());
  pid_t owner = 0;
  const auto [end, error] = std::from_chars(entry.data(), entry.data() + entry.size(), owner);
  return error == std::errc() && *end == '-' && owner > 0 ? owner : 0;
}

// A folder on a network may hold the file of a process on another machine: that one still has its lock.
bool IsLockedElsewhere(int folder, const char* name) {
  const int descriptor = ::openat(folder, name, O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
  if (descriptor < 0) return false;
  const bool locked = ::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  ::close(descriptor);
  return locked;
}

void RemoveLeftOvers(int folder, const std::string& name) {
  const int listed = ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (listed < 0) return;
  DIR* const entries = ::fdopendir(listed);
  if (entries == nullptr) {
    ::close(listed);
    return;
  }
  const std::string prefix = HiddenPrefix(name);
  std::vector<std::string> leftOvers;
  while (const dirent* const entry = ::readdir(entries)) {
    const pid_t owner = OwnerOf(entry->d_name, prefix);
    if (owner != 0 && ::kill(owner, 0) != 0 && errno == ESRCH) leftOvers.emplace_back(entry->d_name);
  }
  ::closedir(entries);
  for (const std::string& entry : leftOvers) {
    if (!IsLockedElsewhere(folder, entry.c_str())) ::unlinkat(folder, entry.c_str(), 0);
  }
}

// Where a chain of symbolic links ends, whether or not anything is there. False when it goes in a circle.
bool FollowLinks(std::filesystem::path& path) {
  for (int i = 0; i < kLinksFollowed; ++i) {
    std::error_code error;
    const auto next = std::filesystem::read_symlink(path, error);
    if (error) return true;  // no link, or nothing there
    path = path.parent_path() / next;
  }
  return false;
}

std::string LinkOfDescriptor(int descriptor) {
  return "/proc/self/fd/" + std::to_string(descriptor);
}

}  // namespace

HostOutputFile::HostOutputFile(const std::filesystem::path& target, Staging staging) {
  if (Prepare(target)) OpenStaging(staging);
  if (m_State == State::Failed) Discard();
}

HostOutputFile::~HostOutputFile() {
  if (m_State != State::Committed) Discard();
  if (m_Descriptor >= 0) ::close(m_Descriptor);
  if (m_FolderDescriptor >= 0) ::close(m_FolderDescriptor);
}

bool HostOutputFile::Fail(int error) {
  m_State = State::Failed;
  if (m_Error.empty()) m_Error = std::generic_category().message(error);
  return false;
}

bool HostOutputFile::Prepare(const std::filesystem::path& target) {
  if (target.native().find('\0') != std::string::npos) return Fail(EINVAL);
  std::filesystem::path path = target;
  if (!FollowLinks(path)) return Fail(ELOOP);
  m_Name = path.filename().native();
  if (m_Name.empty() || m_Name == "." || m_Name == "..") return Fail(target.empty() ? ENOENT : EISDIR);
  m_Folder = path.has_parent_path() ? path.parent_path() : std::filesystem::path(".");
  if (!MakeFolders(m_Folder)) return false;

  m_FolderDescriptor =
      Uninterrupted([&] { return ::open(m_Folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
  if (m_FolderDescriptor < 0) return Fail(errno);

  struct stat existing {};
  if (::fstatat(m_FolderDescriptor, m_Name.c_str(), &existing, AT_SYMLINK_NOFOLLOW) == 0) {
    if (S_ISDIR(existing.st_mode)) return Fail(EISDIR);
    if (!S_ISREG(existing.st_mode)) {
      m_Error = "Not an ordinary file";
      return Fail(EINVAL);
    }
    // Renaming would replace a file that its owner has write-protected.
    if (::faccessat(m_FolderDescriptor, m_Name.c_str(), W_OK, AT_EACCESS) != 0) return Fail(errno);
  } else if (errno != ENOENT) {
    return Fail(errno);
  }
  RemoveLeftOvers(m_FolderDescriptor, m_Name);
  return true;
}

bool HostOutputFile::MakeFolders(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> missing;
  std::error_code error;
  for (auto at = folder; !at.empty() && !std::filesystem::exists(at, error); at = at.parent_path()) {
    if (error) return Fail(error.value());
    if (at.has_filename()) missing.push_back(at);
  }
  for (auto at = missing.rbegin(); at != missing.rend(); ++at) {
    if (::mkdir(at->c_str(), 0777) == 0) {
      m_MadeFolders.push_back(*at);
    } else if (errno != EEXIST) {
      return Fail(errno);
    }
  }
  return true;
}

bool HostOutputFile::OpenStaging(Staging staging) {
  if (staging == Staging::Unnamed) {
    m_Descriptor = Uninterrupted(
        [&] { return ::openat(m_FolderDescriptor, ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, kNewFileMode); });
    // Without /proc the file could not be given a name later.
    if (m_Descriptor >= 0 && ::access(LinkOfDescriptor(m_Descriptor).c_str(), F_OK) != 0) {
      ::close(m_Descriptor);
      m_Descriptor = -1;
      staging = Staging::Hidden;
    } else if (m_Descriptor < 0 && (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL)) {
      staging = Staging::Hidden;
    } else if (m_Descriptor < 0) {
      return Fail(errno);
    }
  }
  if (staging == Staging::Hidden && !OpenHidden()) return false;
  ::flock(m_Descriptor, LOCK_EX | LOCK_NB);  // shows other machines that it is in use; may be unsupported
  m_Buffer = std::make_unique<char[]>(kBufferSize);
  return true;
}

bool HostOutputFile::OpenHidden() {
  for (int i = 0; i < kNamesTried; ++i) {
    std::string name = HiddenName(m_Name, i);
    m_Descriptor = Uninterrupted([&] {
      return ::openat(m_FolderDescriptor, name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC,
                      kNewFileMode);
    });
    if (m_Descriptor >= 0) {
      m_HiddenName = std::move(name);
      return true;
    }
    if (errno != EEXIST) break;
  }
  return Fail(errno);
}

bool HostOutputFile::Write(std::string_view bytes) {
  if (m_State != State::Open) return false;
  if (m_Buffered + bytes.size() > kBufferSize && !Flush()) return false;
  if (bytes.size() >= kBufferSize) return WriteThrough(bytes);
  std::memcpy(m_Buffer.get() + m_Buffered, bytes.data(), bytes.size());
  m_Buffered += bytes.size();
  return true;
}

bool HostOutputFile::Flush() {
  const std::size_t size = m_Buffered;
  m_Buffered = 0;
  return WriteThrough({m_Buffer.get(), size});
}

bool HostOutputFile::WriteThrough(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = Uninterrupted([&] { return ::write(m_Descriptor, bytes.data(), bytes.size()); });
    if (count < 0) return Fail(errno);
    bytes.remove_prefix(static_cast<std::size_t>(count));
    m_Unstarted += static_cast<std::uint64_t>(count);
    if (m_Unstarted < kWritebackSize) continue;
    // The disk may begin while the rest is still being made; Commit then waits less. Only a hint.
    m_Unstarted = 0;
    ::sync_file_range(m_Descriptor, 0, 0, SYNC_FILE_RANGE_WRITE);
  }
  return true;
}

bool HostOutputFile::Commit() {
  if (m_State != State::Open) return m_State == State::Committed;
  if (!Flush() || !TakeOverPermissions()) return false;
  if (Uninterrupted([&] { return ::fsync(m_Descriptor); }) != 0) return Fail(errno);
  if (m_HiddenName.empty() && !GiveHiddenName()) return false;
  if (::renameat(m_FolderDescriptor, m_HiddenName.c_str(), m_FolderDescriptor, m_Name.c_str()) != 0) {
    return Fail(errno);
  }
  m_HiddenName.clear();
  if (!SyncFolders()) return false;
  m_State = State::Committed;
  return true;
}

bool HostOutputFile::TakeOverPermissions() {
  struct stat existing {};
  struct stat own {};
  if (::fstatat(m_FolderDescriptor, m_Name.c_str(), &existing, AT_SYMLINK_NOFOLLOW) != 0) return true;
  if (::fstat(m_Descriptor, &own) != 0) return Fail(errno);
  if (own.st_uid != existing.st_uid || own.st_gid != existing.st_gid) {
    // Only the superuser may give a file away; everybody else's replacement belongs to its writer.
    if (::fchown(m_Descriptor, existing.st_uid, existing.st_gid) != 0 && errno != EPERM) return Fail(errno);
  }
  constexpr mode_t kPermissions = S_IRWXU | S_IRWXG | S_IRWXO;
  if (::fchmod(m_Descriptor, existing.st_mode & kPermissions) != 0) return Fail(errno);
  return true;
}

bool HostOutputFile::GiveHiddenName() {
  const std::string link = LinkOfDescriptor(m_Descriptor);
  for (int i = 0; i < kNamesTried; ++i) {
    std::string name = HiddenName(m_Name, i);
    if (::linkat(AT_FDCWD, link.c_str(), m_FolderDescriptor, name.c_str(), AT_SYMLINK_FOLLOW) == 0) {
      m_HiddenName = std::move(name);
      return true;
    }
    if (errno != EEXIST) break;
  }
  return Fail(errno);
}

bool HostOutputFile::SyncFolders() {
  // A file system that cannot sync a folder says EINVAL; it keeps the name as well as it can.
  if (Uninterrupted([&] { return ::fsync(m_FolderDescriptor); }) != 0 && errno != EINVAL) return Fail(errno);
  for (const auto& made : m_MadeFolders) {
    const std::filesystem::path parent =
        made.has_parent_path() ? made.parent_path() : std::filesystem::path(".");
    const int descriptor = ::open(parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) continue;  // may be entered but not read
    const int result = Uninterrupted([&] { return ::fsync(descriptor); });
    const int error = errno;
    ::close(descriptor);
    if (result != 0 && error != EINVAL) return Fail(error);
  }
  m_MadeFolders.clear();
  return true;
}

void HostOutputFile::Discard() {
  if (!m_HiddenName.empty()) ::unlinkat(m_FolderDescriptor, m_HiddenName.c_str(), 0);
  m_HiddenName.clear();
  // What somebody else has put something into by now stays.
  for (auto made = m_MadeFolders.rbegin(); made != m_MadeFolders.rend(); ++made) ::rmdir(made->c_str());
  m_MadeFolders.clear();
}

}  // namespace inspector::device
