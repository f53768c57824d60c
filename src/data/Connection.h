// One open database file: statements, transactions, and what its failures mean to a person.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "data/SqlDialect.h"
#include "device/FaultLog.h"
#include "device/Text.h"

struct sqlite3;
struct sqlite3_stmt;

namespace inspector::data {

// Belongs to one thread. Every failure is reported to the fault log with the file's name and what to do, and
// is also the return value. Queries go through the dialect; the values in them are bound.
class Connection : private SqlCatalog {
public:
  Connection(std::filesystem::path file, device::FaultLog& faults);
  ~Connection() override;
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  // Opens an existing file and reads its schema; nothing is written. On failure returns why, in words for a
  // person; an empty text means that it is open.
  Text Open();
  // The same for somebody who only looks: nothing can be written, and a journal that waits beside the file
  // is left there.
  Text OpenForReading();
  bool IsOpen() const { return m_Database != nullptr; }
  // Write-ahead journal and full syncing. Not done by Open, because it alters the file's header.
  bool PrepareForWriting();
  void Close();
  const std::filesystem::path& File() const { return m_File; }
  device::FaultLog& Faults() const { return m_Faults; }

  enum class Result { Done, TableMissing, Failed };
  // A query: the row ids of what it finds, and the table they belong to; of a missing table, its name. One
  // that a value has made unreadable fails, but dooms no transaction: the database is sound, and nothing was
  // asked of it.
  Result Query(TextView sql, std::vector<std::int64_t>& keys, Text& table);
  // DELETE, CREATE TABLE, ALTER TABLE; a query is run and its rows are dropped.
  Result Execute(TextView sql);
  // To be called after a definition that went through ExecuteNative.
  void SchemaChanged() { ForgetStatements(); }
  // A statement in SQLite's own words, for indexes and pragmas.
  bool ExecuteNative(const std::string& sql);

  // Null when there is no such table, or when that cannot be told (which has been reported). Valid until the
  // next definition.
  const std::vector<StoredColumn>* ColumnsOf(TextView table) override;

  bool IsView(TextView table);

  // A prepared statement in SQLite's own words, kept for the next call. Null on failure.
  sqlite3_stmt* Prepare(const std::string& sql);
  // Runs a prepared statement that changes rows and returns none, and resets it.
  bool Run(sqlite3_stmt* statement);
  // How many rows the last change touched. None by an update means that another program deleted the row.
  int ChangedRows() const;
  void ReportVanishedRow(TextView table);
  // A new row would share its key with another one, or get what belongs to another one.
  void ReportUsedKey(TextView table, std::int32_t key);
  // Reports the connection's last failure. A failure, of reading too, dooms the transaction it is part of.
  void ReportFailure();
  std::int64_t LastRowId() const;
  // Changes when prepared statements are dropped; whoever keeps one compares it.
  int Generation() const { return m_Generation; }

  // Up to `size` bytes of the file itself, -1 on an error. Opening the file a second time would not do:
  // closing it again would drop the locks by which other programs see that this one has it open.
  std::int64_t ReadFile(std::int64_t offset, char* buffer, int size);

  // Transactions nest: only the outermost begins, and commits when none inside it failed. After a failure
  // nothing more is written until the outermost ends: SQLite may have rolled back already, and a later
  // change would stand alone.
  bool Begin();
  // In place of a Begin that failed, so that nothing is written until Rollback.
  void BeginRefused();
  bool Commit();  // false: nothing of the transaction is in the file
  void Rollback();
  bool IsInTransaction() const { return m_Depth > 0; }
  // In the middle of an action or of a loop over rows.
  bool IsBusy() const { return m_Depth > 0 || m_Reading > 0; }
  // A read transaction, so that a loop of fetches does not take a lock for each. Inside any other it does
  // nothing.
  void BeginReading();
  void EndReading();

  // Moves what the journal holds into the file when that is much. It takes several syncs, and to be called
  // while nobody waits it spares a later change from doing it. Does nothing within a transaction.
  void TidyJournal();
  // Makes the journal, before the first change of a run would have to: that one syncs three times otherwise.
  // Does nothing once there is one, or within a transaction.
  void PrepareJournal();

  // Looks for damage in the whole file when that takes no longer than a glance. Why the file cannot be used,
  // or an empty text.
  Text FindDamage();
  // True when `PRAGMA integrity_check` says "ok"; else what it found is added to `findings`.
  bool CheckIntegrity(std::vector<Text>& findings);

private:
  // An SQLite code; where it is not 0, the handle may be there all the same.
  int OpenHandle(bool isAlone);
  static constexpr int kNoJournal = -1;
  struct Prepared {
    SqlTranslation translation;
    sqlite3_stmt* statement = nullptr;
  };

  Result Attempt(const SqlTokens& tokens, TextView sql, std::vector<std::int64_t>& keys, Text& table,
                 bool& stale);
  Prepared* PrepareShape(const SqlTokens& tokens, TextView sql, Result& result, Text& table);
  bool MayWrite();
  bool HasGone();
  void BeginJournal();
  // For a lock of another program; for a timer's work only for a moment, because it stops who is typing.
  void WaitForOthers(bool wait);
  bool Bind(sqlite3_stmt* statement, const SqlTranslation& translation, const SqlTokens& tokens);
  void ForgetStatements();
  void LeaveTransaction();
  void Fail(const Text& problem);
  void FailMalformed(TextView sql, const Text& problem);
  Text DescribeFailure(int code, const char* detail) const;

  std::filesystem::path m_File;
  device::FaultLog& m_Faults;
  sqlite3* m_Database = nullptr;
  std::unordered_map<std::string, Prepared> m_Shapes;
  std::unordered_map<std::string, sqlite3_stmt*> m_Native;
  std::unordered_map<Text, std::vector<StoredColumn>> m_Columns;
  int m_Generation = 1;
  int m_JournalPages = kNoJournal;
  int m_Depth = 0;
  int m_Reading = 0;
  bool m_Doomed = false;
  bool m_CatalogFailed = false;  // ColumnsOf could not tell
};

// One user action. Rolls back unless committed. One that could not begin keeps everything inside it from
// being written, so that an action never happens by halves.
class Transaction {
public:
  explicit Transaction(Connection& connection)
      : m_Silence(connection.Faults()), m_Connection(connection), m_Open(connection.Begin()) {
    if (!m_Open) m_Connection.BeginRefused();
  }
  ~Transaction() {
    if (!m_Ended) m_Connection.Rollback();
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  bool IsOpen() const { return m_Open && !m_Ended; }
  bool Commit() {
    if (!m_Open || m_Ended) return false;
    m_Ended = true;
    return m_Connection.Commit();
  }

private:
  device::FaultLog::Silence m_Silence;  // first, so that it ends last
  Connection& m_Connection;
  bool m_Open;
  bool m_Ended = false;
};

// A loop over rows reads inside one of these.
class ReadScope {
public:
  explicit ReadScope(Connection& connection) : m_Connection(connection) { m_Connection.BeginReading(); }
  ~ReadScope() { m_Connection.EndReading(); }
  ReadScope(const ReadScope&) = delete;
  ReadScope& operator=(const ReadScope&) = delete;

private:
  Connection& m_Connection;
};

}  // namespace inspector::data
