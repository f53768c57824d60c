// What can be told about a database file from outside: whether it may be opened at all, and whether another
// Inspector has it.
#pragma once

#include <filesystem>

#include "device/Text.h"

namespace inspector::data {

using device::Text;

// Reads the file's header and changes nothing. Returns why the file cannot be used, in words for a person:
// missing, no file, read-only, empty, no database, written by a newer version of SQLite, cut short. An empty
// text means that it may be opened.
Text ExamineDatabaseFile(const std::filesystem::path& file);

Text DamagedFileMessage(const std::filesystem::path& file);
Text ReadOnlyFileMessage(const std::filesystem::path& file);

// Keeps a second Inspector off the same database, by an advisory lock on a file beside it. Other programs
// are not kept off. The system releases it when the process ends, however it ends.
class DatabaseLock {
public:
  DatabaseLock() = default;
  ~DatabaseLock();
  DatabaseLock(const DatabaseLock&) = delete;
  DatabaseLock& operator=(const DatabaseLock&) = delete;

  // Empty when the lock is held; else why it is not.
  Text Acquire(const std::filesystem::path& database);

private:
  int m_Descriptor = -1;
};

}  // namespace inspector::data
