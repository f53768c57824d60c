// One open SQLite file with its prepared statements. Belongs to one thread at a time.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace inspector::server {

class SqliteFile;

// A prepared statement in use: bound from left to right, then stepped. It goes back to its file, reset, at
// the end of its life.
class SqliteQuery {
public:
  SqliteQuery(SqliteFile& file, const char* sql);
  ~SqliteQuery();
  SqliteQuery(const SqliteQuery&) = delete;
  SqliteQuery& operator=(const SqliteQuery&) = delete;

  // What is bound must live until the query is stepped for the last time.
  SqliteQuery& Bind(std::string_view text);
  SqliteQuery& Bind(std::int64_t value);
  // True while there is a row. A failure reads as no row, and is what the file's Failed tells; after one
  // nothing more is run, so that what could not begin changes nothing.
  bool Step();
  // Runs to the end; false on a failure.
  bool Run();

  std::string_view Text(int column) const;  // valid until the next step
  std::int64_t Integer(int column) const;

private:
  SqliteFile& m_File;
  sqlite3_stmt* m_Statement;
  int m_Bound = 0;
};

class SqliteFile {
public:
  // `patience`: so long a call waits for another process that writes.
  explicit SqliteFile(std::filesystem::path path, std::chrono::milliseconds patience)
      : m_Path(std::move(path)), m_Patience(patience) {}
  ~SqliteFile();
  SqliteFile(const SqliteFile&) = delete;
  SqliteFile& operator=(const SqliteFile&) = delete;

  enum class Mode { Create, Existing };
  bool Open(Mode mode);
  // Several statements without parameters.
  bool Execute(const char* sql);

  // The first failure since ClearFailure, in words with the name of the file; empty when there was none.
  const std::string& Failure() const { return m_Failure; }
  bool Failed() const { return !m_Failure.empty(); }
  void ClearFailure() { m_Failure.clear(); }

  const std::filesystem::path& Path() const { return m_Path; }
  std::chrono::milliseconds Patience() const { return m_Patience; }

private:
  friend class SqliteQuery;

  sqlite3_stmt* Prepared(const char* sql);
  void Note();

  std::filesystem::path m_Path;
  std::chrono::milliseconds m_Patience;
  sqlite3* m_Database = nullptr;
  std::map<std::string_view, sqlite3_stmt*> m_Statements;  // by their texts, which are literals
  std::string m_Failure;
};

// BEGIN IMMEDIATE; rolled back at the end of its life unless it was committed.
class SqliteTransaction {
public:
  explicit SqliteTransaction(SqliteFile& file);
  ~SqliteTransaction();
  SqliteTransaction(const SqliteTransaction&) = delete;
  SqliteTransaction& operator=(const SqliteTransaction&) = delete;

  // False when anything since the begin has failed: then nothing of it is in the file.
  bool Commit();

private:
  SqliteFile& m_File;
  bool m_IsOpen;
};

}  // namespace inspector::server
