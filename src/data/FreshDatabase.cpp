#include "data/FreshDatabase.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "device/Format.h"

namespace inspector::data {
namespace {

using device::Format;
using device::FromUtf8;
using device::ToUtf8;

std::string CreateStatement(const TableLayout& layout) {
  std::string sql = "CREATE TABLE IF NOT EXISTS " + QuotedName(layout.name) + " (";
  bool first = true;
  for (const ColumnLayout& column : layout.columns) {
    const TextView type = column.IsPositional() ? GeneratedSqlType(column.type) : column.sqlType;
    sql += (first ? "" : ", ") + ToUtf8(column.name) + " " + ToUtf8(type);
    first = false;
  }
  return sql + ")";
}

// Neutral values throughout, as the program itself would write them, and today's structure version.
std::string FirstOptionsRow() {
  std::string names;
  std::string values;
  for (const ColumnLayout& column : FindLayout(u"Options")->columns) {
    const char* value = "0";
    if (column.name == u"DataVersion")
      value = "'5.0'";
    else if (column.type == ValueType::String)
      value = "''";
    else if (column.type == ValueType::Binary)
      value = "x'00'";
    names += (names.empty() ? "" : ", ") + ToUtf8(column.name);
    values += (values.empty() ? "" : ", ") + std::string(value);
  }
  return "INSERT INTO Options (" + names + ") VALUES (" + values + ")";
}

bool CreateTableIndexes(Connection& connection, const TableLayout& layout) {
  const std::vector<StoredColumn>* stored = connection.ColumnsOf(layout.name);
  if (!stored) return true;
  for (const TextView column : layout.indexed) {
    std::size_t ordinal = 0;
    while (layout.columns[ordinal].name != column) ++ordinal;
    if (ordinal >= stored->size()) continue;
    const std::string name = ToUtf8(layout.name) + "_by_" + ToUtf8(column);
    if (!connection.ExecuteNative("CREATE INDEX IF NOT EXISTS " + name + " ON " + QuotedName(layout.name) +
                                  " (" + QuotedName((*stored)[ordinal].name) + ")"))
      return false;
  }
  return true;
}

bool SyncPath(const std::filesystem::path& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return false;
  const bool synced = fsync(descriptor) == 0;
  close(descriptor);
  return synced;
}

}  // namespace

Text CreateFreshDatabase(const std::filesystem::path& file, DatabaseKind kind, device::FaultLog& faults) {
  const Text name = FromUtf8(file.string());
  std::error_code error;
  if (std::filesystem::is_symlink(file, error))
    return Format(
        u"%s is a link to %s, where no database is. Put the database there, or remove the link to have a new "
        u"one made here.",
        name, FromUtf8(std::filesystem::read_symlink(file, error).string()));
  std::filesystem::create_directories(file.parent_path(), error);
  const std::filesystem::path building = file.string() + ".new";
  std::filesystem::remove(building, error);
  std::filesystem::remove(building.string() + "-journal", error);
  const auto fail = [&](TextView why) {
    std::filesystem::remove(building, error);
    return Format(
        u"The database %s cannot be created: %s. Check that the folder may be written to and that the disk "
        u"has room.",
        name, why);
  };

  sqlite3* database = nullptr;
  const int code =
      sqlite3_open_v2(building.c_str(), &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
  const bool touched =
      code == SQLITE_OK && sqlite3_exec(database, "VACUUM", nullptr, nullptr, nullptr) == SQLITE_OK;
  const Text why = FromUtf8(database ? sqlite3_errmsg(database) : "out of memory");
  sqlite3_close(database);
  if (!touched) return fail(why);
  {
    Connection connection(building, faults);
    if (const Text problem = connection.Open(); !problem.empty()) return fail(problem);
    Transaction transaction(connection);
    for (const TableLayout& layout : AllLayouts())
      if (layout.database == kind && !connection.ExecuteNative(CreateStatement(layout)))
        return fail(u"see above");
    // A file that the program made is of today's structure from its first moment on.
    const bool versioned = kind == DatabaseKind::Inspection || connection.ExecuteNative(FirstOptionsRow());
    if (!versioned || !CreateIndexes(connection, kind) || !transaction.Commit()) return fail(u"see above");
  }
  if (!SyncPath(building)) return fail(FromUtf8(std::strerror(errno)));
  // A file that has come there meanwhile stays. Where such a rename is unknown, a link does not replace it
  // either.
  if (renameat2(AT_FDCWD, building.c_str(), AT_FDCWD, file.c_str(), RENAME_NOREPLACE) != 0) {
    const bool isUnknown = errno == EINVAL || errno == ENOSYS || errno == ENOTSUP;
    if (!isUnknown || link(building.c_str(), file.c_str()) != 0) return fail(FromUtf8(std::strerror(errno)));
  }
  std::filesystem::remove(building, error);
  SyncPath(file.parent_path());
  return {};
}

bool CreateIndexes(Connection& connection, DatabaseKind kind) {
  Transaction transaction(connection);
  for (const TableLayout& layout : AllLayouts())
    if (layout.database == kind && !CreateTableIndexes(connection, layout)) return false;
  return transaction.Commit();
}

bool CreateIfMissing(Connection& connection, TextView table) {
  const TableLayout* layout = FindLayout(table);
  if (!layout || connection.ColumnsOf(layout->name)) return layout != nullptr;
  Transaction transaction(connection);
  const bool created = connection.ExecuteNative(CreateStatement(*layout));
  connection.SchemaChanged();
  return created && CreateTableIndexes(connection, *layout) && transaction.Commit();
}

}  // namespace inspector::data
