#include "server/SqliteFile.h"

#include <sqlite3.h>

#include <cstring>

namespace inspector::server {

SqliteQuery::SqliteQuery(SqliteFile& file, const char* sql) : m_File(file), m_Statement(file.Prepared(sql)) {}

SqliteQuery::~SqliteQuery() {
  if (m_Statement == nullptr) return;
  sqlite3_reset(m_Statement);
  sqlite3_clear_bindings(m_Statement);
}

SqliteQuery& SqliteQuery::Bind(std::string_view text) {
  ++m_Bound;
  // A null pointer would be NULL.
  if (text.data() == nullptr) text = "";
  if (m_Statement != nullptr)
    sqlite3_bind_text64(m_Statement, m_Bound, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
  return *this;
}

SqliteQuery& SqliteQuery::Bind(std::int64_t value) {
  ++m_Bound;
  if (m_Statement != nullptr) sqlite3_bind_int64(m_Statement, m_Bound, value);
  return *this;
}

bool SqliteQuery::Step() {
  if (m_Statement == nullptr || m_File.Failed()) return false;
  const int code = sqlite3_step(m_Statement);
  if (code != SQLITE_ROW && code != SQLITE_DONE) m_File.Note();
  return code == SQLITE_ROW;
}

bool SqliteQuery::Run() {
  while (Step()) {
  }
  return !m_File.Failed();
}

std::string_view SqliteQuery::Text(int column) const {
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(m_Statement, column));
  if (bytes == nullptr) return {};
  return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(m_Statement, column))};
}

std::int64_t SqliteQuery::Integer(int column) const {
  return sqlite3_column_int64(m_Statement, column);
}

SqliteFile::~SqliteFile() {
  for (const auto& [sql, statement] : m_Statements) sqlite3_finalize(statement);
  sqlite3_close(m_Database);
}

bool SqliteFile::Open(Mode mode) {
  const int flags =
      SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | (mode == Mode::Create ? SQLITE_OPEN_CREATE : 0);
  const int code = sqlite3_open_v2(m_Path.c_str(), &m_Database, flags, nullptr);
  if (code != SQLITE_OK) {
    Note();
    return false;
  }
  sqlite3_busy_timeout(m_Database, static_cast<int>(m_Patience.count()));
  return true;
}

bool SqliteFile::Execute(const char* sql) {
  if (sqlite3_exec(m_Database, sql, nullptr, nullptr, nullptr) == SQLITE_OK) return true;
  Note();
  return false;
}

sqlite3_stmt* SqliteFile::Prepared(const char* sql) {
  const auto found = m_Statements.find(sql);
  if (found != m_Statements.end()) return found->second;
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v3(m_Database, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr) != SQLITE_OK) {
    Note();
    return nullptr;
  }
  m_Statements.emplace(sql, statement);
  return statement;
}

void SqliteFile::Note() {
  if (!m_Failure.empty()) return;
  m_Failure = m_Path.string() + ": " + (m_Database != nullptr ? sqlite3_errmsg(m_Database) : "out of memory");
  const int system = m_Database != nullptr ? sqlite3_system_errno(m_Database) : 0;
  if (system != 0) m_Failure += std::string(" (") + std::strerror(system) + ")";
}

SqliteTransaction::SqliteTransaction(SqliteFile& file)
    : m_File(file), m_IsOpen(file.Execute("BEGIN IMMEDIATE")) {}

SqliteTransaction::~SqliteTransaction() {
  if (!m_IsOpen) return;
  // SQLite may have rolled back by itself; then this fails, which is no news.
  const bool hadFailed = m_File.Failed();
  m_File.Execute("ROLLBACK");
  if (!hadFailed) m_File.ClearFailure();
}

bool SqliteTransaction::Commit() {
  if (!m_IsOpen || m_File.Failed() || !m_File.Execute("COMMIT")) return false;
  m_IsOpen = false;
  return true;
}

}  // namespace inspector::server
