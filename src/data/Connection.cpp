#include "data/Connection.h"

#include <sqlite3.h>

#include <algorithm>

#include "data/DatabaseFile.h"
#include "device/Format.h"

namespace inspector::data {
namespace {

constexpr int kPatience = 2000;      // milliseconds that a person waits for another program
constexpr int kTimersPatience = 50;  // that a timer stops a person from typing
constexpr int kBetweenTries = 10;
// 2 MiB in the journal are worth a moment in which nobody waits; 32 MiB are too much to wait for one.
constexpr int kManyJournalPages = 500;
constexpr int kMostJournalPages = 8000;
constexpr std::uintmax_t kJournalIndexBytes = 32u << 10;
// Statements differ in little but their values, which are bound. More shapes than this come only from values
// that stand without quotes.
constexpr std::size_t kMostShapes = 300;
// 2 MiB, some ten milliseconds: four times the starter library. More would show: the window would open late.
// `inspector-cli check` looks through files of any size.
constexpr std::uintmax_t kMostBytesToLookThrough = 2u << 20;

bool IsFull(const std::filesystem::path& file) {
  std::error_code error;
  const auto space = std::filesystem::space(file.parent_path(), error);
  return !error && space.available < kJournalIndexBytes;
}

}  // namespace

Connection::Connection(std::filesystem::path file, device::FaultLog& faults)
    : m_File(std::move(file)), m_Faults(faults) {}

Connection::~Connection() {
  Close();
}

Text Connection::Open() {
  if (const Text problem = ExamineDatabaseFile(m_File); !problem.empty()) return problem;
  int code = OpenHandle(false);
  if (code != SQLITE_OK && IsFull(m_File)) {
    // There is no room for the journal's index. Who has the file alone needs none, and can at least read.
    Close();
    code = OpenHandle(true);
  }
  if (code == SQLITE_OK) return {};
  const Text problem = DescribeFailure(code, m_Database ? sqlite3_errmsg(m_Database) : "out of memory");
  Close();
  return problem;
}

int Connection::OpenHandle(bool isAlone) {
  int code =
      sqlite3_open_v2(m_File.c_str(), &m_Database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  if (code == SQLITE_OK) {
    sqlite3_extended_result_codes(m_Database, 0);
    WaitForOthers(true);
    // A double-quoted value that reached SQLite untranslated must fail, not quietly become a text.
    sqlite3_db_config(m_Database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(m_Database, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    // Before the next statement, which reads the structure already.
    if (isAlone) sqlite3_exec(m_Database, "PRAGMA locking_mode = EXCLUSIVE", nullptr, nullptr, nullptr);
    sqlite3_exec(m_Database, "PRAGMA synchronous = FULL", nullptr, nullptr, nullptr);
    code = sqlite3_exec(m_Database, "SELECT count(*) FROM sqlite_master", nullptr, nullptr, nullptr);
    if (code == SQLITE_OK && sqlite3_db_readonly(m_Database, "main") == 1) code = SQLITE_READONLY;
  }
  return code;
}

Text Connection::OpenForReading() {
  std::error_code error;
  const auto waiting = std::filesystem::file_size(m_File.string() + "-wal", error);
  Text problem = Open();
  if (!problem.empty()) return problem;
  sqlite3_exec(m_Database, "PRAGMA query_only = ON", nullptr, nullptr, nullptr);
  // Closing the last connection would carry the journal into the file.
  if (!error && waiting > 0) sqlite3_db_config(m_Database, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
  return {};
}

bool Connection::PrepareForWriting() {
  if (!m_Database) return false;
  // While another program is reading, the journal stays as it is, which only costs time: no need to wait for
  // it.
  WaitForOthers(false);
  const int code = sqlite3_exec(m_Database, "PRAGMA journal_mode = WAL", nullptr, nullptr, nullptr);
  WaitForOthers(true);
  if (code != SQLITE_OK && code != SQLITE_BUSY && code != SQLITE_LOCKED) {
    ReportFailure();
    return false;
  }
  sqlite3_wal_hook(
      m_Database,
      [](void* self, sqlite3* database, const char* name, int pages) {
        static_cast<Connection*>(self)->m_JournalPages = pages;
        if (pages >= kMostJournalPages)
          sqlite3_wal_checkpoint_v2(database, name, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
        return SQLITE_OK;
      },
      this);
  return true;
}

void Connection::TidyJournal() {
  if (m_JournalPages >= kManyJournalPages) BeginJournal();
}

void Connection::PrepareJournal() {
  if (m_JournalPages == kNoJournal) BeginJournal();
}

void Connection::BeginJournal() {
  if (!m_Database || m_Depth > 0 || m_Reading > 0) return;
  m_JournalPages = 0;
  WaitForOthers(false);
  // The first change in a journal that begins anew syncs its head as well, so that is made here: one that
  // changes nothing. Where another program is in the way, it is done by the next change, or the next time.
  sqlite3_stmt* const version = Prepare("PRAGMA user_version");
  if (version && sqlite3_step(version) == SQLITE_ROW) {
    const std::string same = "PRAGMA user_version = " + std::to_string(sqlite3_column_int(version, 0));
    sqlite3_reset(version);
    if (sqlite3_wal_checkpoint_v2(m_Database, "main", SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr) ==
        SQLITE_OK)
      sqlite3_exec(m_Database, same.c_str(), nullptr, nullptr, nullptr);
  }
  WaitForOthers(true);
}

void Connection::WaitForOthers(bool wait) {
  constexpr auto kWait = [](void* self, int tries) {
    const bool isTimer = static_cast<Connection*>(self)->m_Faults.IsHurried();
    if (tries * kBetweenTries >= (isTimer ? kTimersPatience : kPatience)) return 0;
    sqlite3_sleep(kBetweenTries);
    return 1;
  };
  sqlite3_busy_handler(m_Database, wait ? +kWait : nullptr, this);
}

void Connection::Close() {
  if (!m_Database) return;
  ForgetStatements();
  sqlite3_close_v2(m_Database);
  m_Database = nullptr;
  m_Depth = 0;
  m_Reading = 0;
  m_Doomed = false;
}

void Connection::ForgetStatements() {
  for (auto& [shape, prepared] : m_Shapes) sqlite3_finalize(prepared.statement);
  for (auto& [sql, statement] : m_Native) sqlite3_finalize(statement);
  ++m_Generation;
  m_Shapes.clear();
  m_Native.clear();
  m_Columns.clear();
}

Connection::Prepared* Connection::PrepareShape(const SqlTokens& tokens, TextView sql, Result& result,
                                               Text& table) {
  if (const auto known = m_Shapes.find(tokens.shape); known != m_Shapes.end()) return &known->second;
  if (m_Shapes.size() >= kMostShapes) ForgetStatements();
  Prepared prepared;
  m_CatalogFailed = false;
  prepared.translation = TranslateSql(tokens, sql, *this);
  if (prepared.translation.outcome == SqlTranslation::Outcome::TableMissing) {
    // A file that cannot be read has not lost its tables.
    result = m_CatalogFailed ? Result::Failed : Result::TableMissing;
    table = prepared.translation.table;
    return nullptr;
  }
  if (prepared.translation.outcome == SqlTranslation::Outcome::NotUnderstood) {
    const Text& what = prepared.translation.table;
    const Text file = device::FromUtf8(m_File.string());
    // What the file lacks is one trouble, in whichever statement it shows.
    if (what.empty())
      FailMalformed(sql,
                    device::Format(u"A statement for the database %s was not understood: %s", file, sql));
    else
      Fail(
          device::Format(u"The database %s lacks %s, so what belongs there is neither shown nor stored. Put "
                         u"your last good copy in its place.",
                         file, what));
    result = Result::Failed;
    return nullptr;
  }
  if (sqlite3_prepare_v3(m_Database, prepared.translation.sql.c_str(), -1, SQLITE_PREPARE_PERSISTENT,
                         &prepared.statement, nullptr) != SQLITE_OK) {
    ReportFailure();
    result = Result::Failed;
    return nullptr;
  }
  return &m_Shapes.emplace(tokens.shape, std::move(prepared)).first->second;
}

bool Connection::Bind(sqlite3_stmt* statement, const SqlTranslation& translation, const SqlTokens& tokens) {
  int place = 0;
  for (const std::size_t index : translation.binds) {
    ++place;
    const SqlValue& value = tokens.values[index];
    int code = SQLITE_OK;
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
      code = sqlite3_bind_int64(statement, place, *whole);
    } else if (const auto* real = std::get_if<double>(&value)) {
      code = sqlite3_bind_double(statement, place, *real);
    } else {
      const auto& text = std::get<std::string>(value);
      code =
          sqlite3_bind_text(statement, place, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    }
    if (code != SQLITE_OK) return false;
  }
  return true;
}

Connection::Result Connection::Query(TextView sql, std::vector<std::int64_t>& keys, Text& table) {
  keys.clear();
  table.clear();
  if (!m_Database) return Result::Failed;
  const std::optional<SqlTokens> tokens = Tokenise(sql);
  if (!tokens) {
    FailMalformed(sql, device::Format(u"A statement for the database %s has an open quote: %s",
                                      device::FromUtf8(m_File.string()), sql));
    return Result::Failed;
  }
  bool stale = false;
  const Result result = Attempt(*tokens, sql, keys, table, stale);
  if (!stale) return result;
  // Another program has changed the tables since the statement was translated.
  ForgetStatements();
  return Attempt(*tokens, sql, keys, table, stale);
}

Connection::Result Connection::Attempt(const SqlTokens& tokens, TextView sql, std::vector<std::int64_t>& keys,
                                       Text& table, bool& stale) {
  const bool isFirst = !stale;
  stale = false;
  Result result = Result::Done;
  const std::size_t shapes = m_Shapes.size();
  Prepared* prepared = PrepareShape(tokens, sql, result, table);
  if (!prepared) return result;
  const bool isKept = m_Shapes.size() == shapes;
  sqlite3_stmt* const statement = prepared->statement;
  table = prepared->translation.table;
  const bool isDefinition = table.empty();
  if (prepared->translation.outcome == SqlTranslation::Outcome::Change && !MayWrite()) {
    if (isDefinition) ForgetStatements();
    return Result::Failed;
  }
  if (!Bind(statement, prepared->translation, tokens)) {
    ReportFailure();
    return Result::Failed;
  }
  int code = SQLITE_ROW;
  while ((code = sqlite3_step(statement)) == SQLITE_ROW) keys.push_back(sqlite3_column_int64(statement, 0));
  if (code != SQLITE_DONE) {
    keys.clear();
    result = Result::Failed;
    stale = code == SQLITE_ERROR && isKept && isFirst;
    if (!stale) ReportFailure();
  }
  if (prepared->translation.mustSort) std::sort(keys.begin(), keys.end());
  sqlite3_reset(statement);
  if (isDefinition) ForgetStatements();  // also when it failed: another may differ only in its numbers
  return result;
}

bool Connection::MayWrite() {
  if (m_Depth > 0) return !m_Doomed;
  // Outside a transaction each change stands alone; in a read transaction it would wait for the loop's end.
  while (m_Reading > 0) EndReading();
  return true;
}

Connection::Result Connection::Execute(TextView sql) {
  std::vector<std::int64_t> keys;
  Text table;
  return Query(sql, keys, table);
}

bool Connection::ExecuteNative(const std::string& sql) {
  if (!m_Database || (m_Depth > 0 && m_Doomed)) return false;
  if (sqlite3_exec(m_Database, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK) return true;
  ReportFailure();
  return false;
}

const std::vector<StoredColumn>* Connection::ColumnsOf(TextView table) {
  const Text name(table);
  if (const auto known = m_Columns.find(name); known != m_Columns.end()) return &known->second;
  sqlite3_stmt* const statement = Prepare("SELECT name, type FROM pragma_table_info(?) ORDER BY cid");
  if (!statement) {
    m_CatalogFailed = true;
    return nullptr;
  }
  const std::string bytes = device::ToUtf8(name);
  sqlite3_bind_text(statement, 1, bytes.data(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
  std::vector<StoredColumn> columns;
  int code = SQLITE_ROW;
  while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
    const auto text = [statement](int column) {
      const auto* content = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
      return std::string(content ? content : "");
    };
    columns.push_back({device::FromUtf8(text(0)), StoredTypeOf(text(1))});
  }
  m_CatalogFailed = code != SQLITE_DONE;
  if (m_CatalogFailed) ReportFailure();
  sqlite3_reset(statement);
  if (m_CatalogFailed || columns.empty()) return nullptr;
  return &m_Columns.emplace(name, std::move(columns)).first->second;
}

bool Connection::IsView(TextView table) {
  sqlite3_stmt* const statement =
      Prepare("SELECT 1 FROM sqlite_schema WHERE type = 'view' AND name = ? COLLATE NOCASE");
  if (!statement) return false;
  const std::string bytes = device::ToUtf8(table);
  sqlite3_bind_text(statement, 1, bytes.data(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
  const int code = sqlite3_step(statement);
  if (code != SQLITE_ROW && code != SQLITE_DONE) ReportFailure();
  sqlite3_reset(statement);
  return code == SQLITE_ROW;
}

sqlite3_stmt* Connection::Prepare(const std::string& sql) {
  if (!m_Database) return nullptr;
  if (const auto known = m_Native.find(sql); known != m_Native.end()) return known->second;
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v3(m_Database, sql.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr) !=
      SQLITE_OK) {
    ReportFailure();
    return nullptr;
  }
  m_Native.emplace(sql, statement);
  return statement;
}

bool Connection::Run(sqlite3_stmt* statement) {
  if (!MayWrite()) {
    sqlite3_clear_bindings(statement);
    return false;
  }
  const bool done = sqlite3_step(statement) == SQLITE_DONE;
  if (!done) ReportFailure();
  sqlite3_reset(statement);
  sqlite3_clear_bindings(statement);
  return done;
}

int Connection::ChangedRows() const {
  return sqlite3_changes(m_Database);
}

void Connection::ReportVanishedRow(TextView table) {
  Fail(device::Format(
      u"A row of the table %s in the database %s was deleted by another program while it was being "
      u"worked on. What was entered in it could not be stored.",
      table, device::FromUtf8(m_File.string())));
}

void Connection::ReportUsedKey(TextView table, std::int32_t key) {
  Fail(device::Format(
      u"A new row of the table %s in the database %s would get the key %d, which is in use: the counter of "
      u"these keys is wrong. Nothing was added, and nothing was lost. Choose \"Repair counters\" in "
      u"\"Tools\", or run \"inspector-cli check --repair\", and do it again.",
      table, device::FromUtf8(m_File.string()), key));
}

std::int64_t Connection::ReadFile(std::int64_t offset, char* buffer, int size) {
  sqlite3_file* file = nullptr;
  sqlite3_int64 end = 0;
  if (!m_Database ||
      sqlite3_file_control(m_Database, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
      !file->pMethods || file->pMethods->xFileSize(file, &end) != SQLITE_OK)
    return -1;
  const std::int64_t count = std::clamp<std::int64_t>(end - offset, 0, size);
  if (count > 0 && file->pMethods->xRead(file, buffer, static_cast<int>(count), offset) != SQLITE_OK)
    return -1;
  return count;
}

std::int64_t Connection::LastRowId() const {
  return sqlite3_last_insert_rowid(m_Database);
}

void Connection::ReportFailure() {
  Fail(DescribeFailure(sqlite3_errcode(m_Database), sqlite3_errmsg(m_Database)));
}

void Connection::Fail(const Text& problem) {
  m_Doomed = m_Depth > 0;
  m_Faults.Report(problem);
}

void Connection::FailMalformed(TextView sql, const Text& problem) {
  constexpr TextView kQuery = u"SELECT ";
  if (device::EqualIgnoringCase(sql.substr(0, kQuery.size()), kQuery))
    m_Faults.Report(problem);
  else
    Fail(problem);
}

Text Connection::DescribeFailure(int code, const char* detail) const {
  const Text file = device::FromUtf8(m_File.string());
  switch (code & 0xFF) {
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return DamagedFileMessage(m_File);
    case SQLITE_IOERR:
      // A disk with no room for the journal's index reports no more than an error.
      if (!IsFull(m_File)) {
        return device::Format(
            u"The disk that holds the database %s reported an error. Nothing was changed. Check the "
            u"disk and try again.",
            file);
      }
      [[fallthrough]];
    case SQLITE_FULL:
      return device::Format(
          u"The disk that holds the database %s is full. Nothing was changed. Free some space "
          u"and do it again.",
          file);
    case SQLITE_READONLY:
      return ReadOnlyFileMessage(m_File);
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return device::Format(u"Another program has locked the database %s. Close it there and try again.",
                            file);
    case SQLITE_CANTOPEN:
      return device::Format(
          u"The database %s, or the journal beside it, cannot be opened. Check that its folder is "
          u"there and may be written to.",
          file);
    default:
      return device::Format(u"The database %s reported: %s", file, device::FromUtf8(detail));
  }
}

// What is written into a file that has lost its name is lost with the program.
bool Connection::HasGone() {
  int moved = 0;
  sqlite3_file_control(m_Database, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
  char first = 0;
  if (moved == 0 && ReadFile(0, &first, 1) == 0) moved = 1;  // emptied
  if (moved != 0)
    m_Faults.Report(device::Format(
        u"The database %s is no longer where it was: it was deleted, emptied, replaced or renamed, or the "
        u"card was taken out. Nothing can be stored. Bring it back, or leave the program and start it again.",
        device::FromUtf8(m_File.native())));
  return moved != 0;
}

bool Connection::Begin() {
  if (m_Depth == 0) {
    m_Doomed = false;
    while (m_Reading > 0) EndReading();
    if (HasGone() || !ExecuteNative("BEGIN IMMEDIATE")) return false;
  }
  ++m_Depth;
  return true;
}

void Connection::BeginRefused() {
  ++m_Depth;
  m_Doomed = true;
}

bool Connection::Commit() {
  if (m_Depth > 1) {
    --m_Depth;
    return !m_Doomed;
  }
  if (m_Doomed || !ExecuteNative("COMMIT")) {
    Rollback();
    return false;
  }
  m_Depth = 0;
  return true;
}

void Connection::Rollback() {
  if (m_Depth > 1) {
    --m_Depth;
    m_Doomed = true;
    return;
  }
  // SQLite may have rolled back on its own (a full disk); a second time is no failure.
  if (m_Database && !sqlite3_get_autocommit(m_Database))
    sqlite3_exec(m_Database, "ROLLBACK", nullptr, nullptr, nullptr);
  LeaveTransaction();
}

void Connection::LeaveTransaction() {
  m_Depth = 0;
  m_Doomed = false;
  ForgetStatements();  // a table that the transaction created is gone again
}

void Connection::BeginReading() {
  if (m_Depth == 0 && m_Reading == 0 && m_Database && !ExecuteNative("BEGIN")) return;
  if (m_Depth == 0) ++m_Reading;
}

void Connection::EndReading() {
  if (m_Reading == 0) return;
  if (--m_Reading == 0 && m_Depth == 0 && m_Database) ExecuteNative("COMMIT");
}

Text Connection::FindDamage() {
  std::error_code error;
  const auto size = std::filesystem::file_size(m_File, error);
  if (!m_Database || error || size > kMostBytesToLookThrough) return {};
  bool sound = false;
  sqlite3_stmt* check = nullptr;
  int code = sqlite3_prepare_v2(m_Database, "PRAGMA quick_check(1)", -1, &check, nullptr);
  if (code == SQLITE_OK && (code = sqlite3_step(check)) == SQLITE_ROW) {
    const auto* line = reinterpret_cast<const char*>(sqlite3_column_text(check, 0));
    sound = line && std::string_view(line) == "ok";
    code = SQLITE_CORRUPT;
  }
  sqlite3_finalize(check);
  return sound ? Text() : DescribeFailure(code, sqlite3_errmsg(m_Database));
}

bool Connection::CheckIntegrity(std::vector<Text>& findings) {
  sqlite3_stmt* const statement = Prepare("PRAGMA integrity_check");
  if (!statement) return false;
  bool sound = true;
  int code = SQLITE_ROW;
  while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
    const auto* line = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
    const Text text = device::FromUtf8(line ? line : "");
    if (text == u"ok") continue;
    findings.push_back(text);
    sound = false;
  }
  if (code != SQLITE_DONE) {
    findings.push_back(DescribeFailure(code, sqlite3_errmsg(m_Database)));
    sound = false;
  }
  sqlite3_reset(statement);
  return sound;
}

}  // namespace inspector::data
