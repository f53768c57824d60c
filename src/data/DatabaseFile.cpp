#include "data/DatabaseFile.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "device/Format.h"

namespace inspector::data {
namespace {

using device::Format;
using device::FromUtf8;

// The database header: 16 bytes of name, page size at 16, write and read version at 18 and 19, page count
// at 28, schema format at 44; all numbers big-endian.
constexpr std::size_t kHeaderSize = 100;
constexpr char kHeaderName[] = "SQLite format 3";
constexpr int kNewestFileFormat = 2;
constexpr std::uint32_t kNewestSchemaFormat = 4;

std::uint32_t BigEndian(const unsigned char* bytes, int count) {
  std::uint32_t value = 0;
  for (int i = 0; i < count; ++i) value = value << 8 | bytes[i];
  return value;
}

bool HasJournal(const std::filesystem::path& file) {
  for (const char* const ending : {"-wal", "-journal"}) {
    std::error_code error;
    const auto size = std::filesystem::file_size(file.string() + ending, error);
    if (!error && size > 0) return true;
  }
  return false;
}

// Reads through SQLite: were the file opened and closed here, the system would drop the locks that other
// connections of this process hold on it, and a program beside it could take the write-ahead journal away.
// Returns SQLite's code; SQLITE_IOERR_SHORT_READ when the file is shorter.
int ReadHeader(const std::filesystem::path& file, unsigned char* header) {
  sqlite3_initialize();
  sqlite3_vfs* const system = sqlite3_vfs_find(nullptr);
  if (!system) return SQLITE_NOMEM;
  // SQLite keeps the name as long as the file is open and looks for parameters behind its end.
  // It follows no link here, since it resolves them itself before.
  std::error_code ignored;
  std::string name = std::filesystem::canonical(file, ignored).string();
  name.append(4, '\0');
  std::vector<std::max_align_t> room(static_cast<std::size_t>(system->szOsFile) / sizeof(std::max_align_t) +
                                     1);
  auto* const handle = reinterpret_cast<sqlite3_file*>(room.data());
  int code = system->xOpen(system, name.c_str(), handle, SQLITE_OPEN_READONLY | SQLITE_OPEN_MAIN_DB, nullptr);
  if (code == SQLITE_OK) code = handle->pMethods->xRead(handle, header, kHeaderSize, 0);
  if (handle->pMethods) handle->pMethods->xClose(handle);
  return code;
}

bool IsCutShort(const std::filesystem::path& file, const unsigned char* header, std::uint64_t size) {
  // A journal that a killed program left may hold pages that the file itself has not got yet.
  if (HasJournal(file)) return false;
  // The page count is only good when the last writer also noted that it wrote it (offsets 24 and 92).
  if (BigEndian(header + 24, 4) != BigEndian(header + 92, 4)) return false;
  std::uint64_t pageSize = BigEndian(header + 16, 2);
  if (pageSize == 1) pageSize = 65536;
  return pageSize * BigEndian(header + 28, 4) > size;
}

}  // namespace

Text DamagedFileMessage(const std::filesystem::path& file) {
  return Format(
      u"The database %s is damaged or is no database. It was left as it is. Copy it to a safe place, put "
      u"your last good copy in its place and start again.",
      FromUtf8(file.string()));
}

Text ReadOnlyFileMessage(const std::filesystem::path& file) {
  return Format(
      u"The database %s is read-only. It was left as it is. Give yourself the right to write to the file "
      u"and its folder, then start again.",
      FromUtf8(file.string()));
}

Text ExamineDatabaseFile(const std::filesystem::path& file) {
  const Text name = FromUtf8(file.string());
  struct stat status {};
  if (stat(file.c_str(), &status) != 0) {
    return Format(
        u"The database %s cannot be found: %s. Check the path, or create the databases with \"init\".", name,
        FromUtf8(std::strerror(errno)));
  }
  if (!S_ISREG(status.st_mode)) return Format(u"%s is not a file. Name the database file itself.", name);
  // Write permission for nobody is somebody's decision, even where the system would let this user through.
  if ((status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0 || access(file.c_str(), W_OK) != 0)
    return ReadOnlyFileMessage(file);

  if (status.st_size == 0) {
    if (HasJournal(file)) return {};
    return Format(
        u"The database %s is empty: it holds no table. It was left as it is. Put your last good copy in its "
        u"place, or remove it and create the databases with \"init\".",
        name);
  }
  std::array<unsigned char, kHeaderSize> header{};
  const int code = ReadHeader(file, header.data());
  if (code != SQLITE_OK && code != SQLITE_IOERR_SHORT_READ) {
    return Format(
        u"The database %s cannot be read: %s. Check the disk, and that you have the right to read it.", name,
        FromUtf8(sqlite3_errstr(code)));
  }
  if (code != SQLITE_OK || std::memcmp(header.data(), kHeaderName, sizeof kHeaderName) != 0)
    return DamagedFileMessage(file);
  if (header[18] > kNewestFileFormat || header[19] > kNewestFileFormat ||
      BigEndian(header.data() + 44, 4) > kNewestSchemaFormat) {
    return Format(
        u"The database %s was written in a newer file format than this program knows. It was left as it is. "
        u"Update this program, or copy the data into a new file with the program that wrote it.",
        name);
  }
  if (IsCutShort(file, header.data(), static_cast<std::uint64_t>(status.st_size))) {
    return Format(
        u"The database %s is damaged: it has been cut short. It was left as it is. Copy it again from where "
        u"it came from, or put your last good copy in its place.",
        name);
  }
  return {};
}

DatabaseLock::~DatabaseLock() {
  if (m_Descriptor >= 0) close(m_Descriptor);
}

Text DatabaseLock::Acquire(const std::filesystem::path& database) {
  // However the database is called, there is one lock for it.
  std::error_code ignored;
  const std::filesystem::path target = std::filesystem::canonical(database, ignored);
  const std::string path = (ignored ? database : target).string() + ".lock";
  m_Descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  if (m_Descriptor < 0) {
    return Format(
        u"The folder of the database %s cannot be written to: %s. Give yourself the right to write there, "
        u"then start again.",
        FromUtf8(database.string()), FromUtf8(std::strerror(errno)));
  }
  if (flock(m_Descriptor, LOCK_EX | LOCK_NB) == 0) return {};
  close(m_Descriptor);
  m_Descriptor = -1;
  return Format(u"Another Inspector is working with the database %s. Close it, then try again.",
                FromUtf8(database.string()));
}

}  // namespace inspector::data
