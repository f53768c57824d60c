#include "data/DatabaseFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>

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

bool IsCutShort(const std::filesystem::path& file, const unsigned char* header, std::uint64_t size) {
  // A write-ahead journal may hold pages that the file itself has not got yet.
  std::error_code ignored;
  if (std::filesystem::exists(file.string() + "-wal", ignored)) return false;
  // The page count is only good when the last writer also noted that it wrote it (offsets 24 and 92).
  if (BigEndian(header + 24, 4) != BigEndian(header + 92, 4)) return false;
  std::uint64_t pageSize = BigEndian(header + 16, 2);
  if (pageSize == 1) pageSize = 65536;
  return pageSize * BigEndian(header + 28, 4) > size;
}

}  // namespace

Text DamagedFileMessage(const std::filesystem::path& file) {
  return Format(u"The database %s is damaged or is no database. It was left as it is. Copy it to a safe place, put "
                u"your last good copy in its place and start again.", FromUtf8(file.string()));
}

Text ReadOnlyFileMessage(const std::filesystem::path& file) {
  return Format(u"The database %s is read-only. It was left as it is. Give yourself the right to write to the file "
                u"and its folder, then start again.", FromUtf8(file.string()));
}

Text ExamineDatabaseFile(const std::filesystem::path& file) {
  const Text name = FromUtf8(file.string());
  struct stat status {};
  if (stat(file.c_str(), &status) != 0) {
    return Format(u"The database %s cannot be found: %s. Check the path, or create the databases with \"init\".", name,
                  FromUtf8(std::strerror(errno)));
  }
  if (!S_ISREG(status.st_mode)) return Format(u"%s is not a file. Name the database file itself.", name);
  // Write permission for nobody is somebody's decision, even where the system would let this user through.
  if ((status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0 || access(file.c_str(), W_OK) != 0)
    return ReadOnlyFileMessage(file);

  const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0)
    return Format(u"The database %s cannot be read: %s.", name, FromUtf8(std::strerror(errno)));
  std::array<unsigned char, kHeaderSize> header{};
  const ssize_t count = pread(descriptor, header.data(), header.size(), 0);
  close(descriptor);
  if (count == 0) return {};  // an empty file is a database without tables
  if (count < static_cast<ssize_t>(kHeaderSize) || std::memcmp(header.data(), kHeaderName, sizeof kHeaderName) != 0)
    return DamagedFileMessage(file);
  if (header[18] > kNewestFileFormat || header[19] > kNewestFileFormat ||
      BigEndian(header.data() + 44, 4) > kNewestSchemaFormat) {
    return Format(u"The database %s was written in a newer file format than this program knows. It was left as it is. "
                  u"Update this program, or copy the data into a new file with the program that wrote it.", name);
  }
  if (IsCutShort(file, header.data(), static_cast<std::uint64_t>(status.st_size))) {
    return Format(u"The database %s is damaged: it has been cut short. It was left as it is. Copy it again from where "
                  u"it came from, or put your last good copy in its place.", name);
  }
  return {};
}

DatabaseLock::~DatabaseLock() {
  if (m_Descriptor >= 0) close(m_Descriptor);
}

Text DatabaseLock::Acquire(const std::filesystem::path& database) {
  const std::string path = database.string() + ".lock";
  m_Descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  if (m_Descriptor < 0) {
    return Format(u"The folder of the database %s cannot be written to: %s. Give yourself the right to write there, "
                  u"then start again.", FromUtf8(database.string()), FromUtf8(std::strerror(errno)));
  }
  if (flock(m_Descriptor, LOCK_EX | LOCK_NB) == 0) return {};
  close(m_Descriptor);
  m_Descriptor = -1;
  return Format(u"Another Inspector is working with the database %s. Close it, then try again.",
                FromUtf8(database.string()));
}

}  // namespace inspector::data
