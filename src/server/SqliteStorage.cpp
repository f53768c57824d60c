#include "server/SqliteStorage.h"

#include <sys/stat.h>

#include <algorithm>

#include "server/SqliteSchema.h"

// The columns of an inspection, in the order of OfficeInspection, as part of statements.
#define INSPECTION_COLUMNS                                                                    \
  "InspectionNum, DwellingAddress, ClientName, ClientAddress, ClientCityStateZip, "           \
  "GeneralInformation, DocType, CityStateZip, ClientAgent, ListingAgent, RealEstateCompany, " \
  "InspectionDate, InspectionTypeID"
#define INSPECTION_PLACES "?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?"

namespace inspector::server {
namespace {

constexpr int kColumns = static_cast<int>(kTexts) + 2;

constexpr std::array kKinds = {"added", "set", "imported", "pushed", "restored", "removed"};

std::string StoredDay(const device::CalendarTime& day) {
  return device::ToIso(day).substr(0, 10);
}

device::CalendarTime ReadTime(std::string_view iso) {
  return device::FromIso(iso).value_or(device::CalendarTime{});
}

// Of a row that begins, at `first`, with INSPECTION_COLUMNS.
OfficeInspection ReadInspection(const SqliteQuery& query, int first) {
  OfficeInspection inspection;
  for (std::size_t at = 0; at < kTexts; ++at)
    inspection.texts[at] = device::FromUtf8(query.Text(first + static_cast<int>(at)));
  inspection.day = ReadTime(query.Text(first + static_cast<int>(kTexts)));
  inspection.type = static_cast<std::int32_t>(query.Integer(first + static_cast<int>(kTexts) + 1));
  return inspection;
}

// An inspection as it is bound; lives as long as the query.
struct BoundInspection {
  explicit BoundInspection(const OfficeInspection& inspection)
      : day(StoredDay(inspection.day)), type(inspection.type) {
    for (std::size_t at = 0; at < kTexts; ++at) texts[at] = device::ToUtf8(inspection.texts[at]);
  }
  void BindTo(SqliteQuery& query) const {
    for (const std::string& text : texts) query.Bind(text);
    query.Bind(day).Bind(type);
  }

  std::array<std::string, kTexts> texts;
  std::string day;
  std::int32_t type;
};

device::CalendarTime DayOf(const device::CalendarTime& time) {
  return device::MakeCalendarTime(time.year, time.month, time.day);
}

std::string NameOf(TextView number) {
  return "\"" + device::ToUtf8(number) + "\"";
}

User ReadUser(const SqliteQuery& query) {
  return {std::string(query.Text(0)), std::string(query.Text(1)), std::string(query.Text(2)),
          ReadTime(query.Text(3)), static_cast<int>(query.Integer(4))};
}

// While one lives, files come into being for their owner alone: names, addresses and hashes of passwords are
// nobody else's business. SQLite gives its journal the mode of the file.
class PrivateFiles {
public:
  PrivateFiles() : m_Before(umask(S_IRWXG | S_IRWXO)) {}
  ~PrivateFiles() { umask(m_Before); }
  PrivateFiles(const PrivateFiles&) = delete;
  PrivateFiles& operator=(const PrivateFiles&) = delete;

private:
  mode_t m_Before;
};

}  // namespace

Fault SqliteStorage::Open(const std::filesystem::path& folder, std::unique_ptr<SqliteStorage>& storage,
                          std::chrono::milliseconds patience) {
  std::error_code error;
  if (std::filesystem::create_directories(folder, error))
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all, error);
  if (!std::filesystem::is_directory(folder, error))
    return folder.string() + " is no folder and cannot be made one.";
  std::unique_ptr<SqliteStorage> opened(new SqliteStorage(FileIn(folder), patience));
  if (Fault fault = opened->Prepare(); !fault.empty()) return fault;
  storage = std::move(opened);
  return {};
}

Fault SqliteStorage::Prepare() {
  const PrivateFiles privacy;
  const bool isOpen = m_Writer.Open(SqliteFile::Mode::Create);
  const bool isPrepared = isOpen && m_Writer.Execute(
                                        "PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL; "
                                        "PRAGMA foreign_keys = ON; PRAGMA wal_autocheckpoint = 4000");
  if (!isPrepared) return m_Writer.Failure();
  if (Fault fault = BringUpToDate(m_Writer); !fault.empty()) return fault;
  if (!m_Reader.Open(SqliteFile::Mode::Existing) || !m_Reader.Execute("PRAGMA query_only = ON"))
    return m_Reader.Failure();
  return {};
}

// --- users

Fault SqliteStorage::ListUsers(std::vector<User>& users) const {
  const std::lock_guard lock(m_ReaderMutex);
  m_Reader.ClearFailure();
  SqliteQuery query(m_Reader,
                    "SELECT User.Name, Office.Name, PasswordHash, LastLogin, FailedLogins FROM User "
                    "JOIN Office USING (OfficeKey) ORDER BY Office.Name, User.Name");
  while (query.Step()) users.push_back(ReadUser(query));
  return m_Reader.Failure();
}

Fault SqliteStorage::FindUser(const std::string& name, std::optional<User>& user) const {
  const std::lock_guard lock(m_ReaderMutex);
  m_Reader.ClearFailure();
  SqliteQuery query(m_Reader,
                    "SELECT User.Name, Office.Name, PasswordHash, LastLogin, FailedLogins FROM User "
                    "JOIN Office USING (OfficeKey) WHERE User.Name = ?");
  user.reset();
  if (query.Bind(name).Step()) user = ReadUser(query);
  return m_Reader.Failure();
}

Fault SqliteStorage::AddUser(const User& user) {
  const std::lock_guard lock(m_WriterMutex);
  m_Writer.ClearFailure();
  SqliteTransaction transaction(m_Writer);
  bool isTaken = false;
  {
    SqliteQuery query(m_Writer, "SELECT 1 FROM User WHERE Name = ?");
    isTaken = query.Bind(user.name).Step();
  }
  if (isTaken) return "There is a user \"" + user.name + "\" already.";
  const std::int64_t office = OfficeKey(user.office);
  SqliteQuery insert(m_Writer, "INSERT INTO User (Name, OfficeKey, PasswordHash) VALUES (?, ?, ?)");
  insert.Bind(user.name).Bind(office).Bind(user.passwordHash).Run();
  transaction.Commit();
  return m_Writer.Failure();
}

Fault SqliteStorage::ChangeUser(const char* sql, const std::string& name, std::string_view value) {
  const std::lock_guard lock(m_WriterMutex);
  m_Writer.ClearFailure();
  SqliteTransaction transaction(m_Writer);
  bool isThere = false;
  {
    SqliteQuery change(m_Writer, sql);
    isThere = change.Bind(name).Bind(value).Step();
    change.Run();
  }
  transaction.Commit();
  if (m_Writer.Failed()) return m_Writer.Failure();
  return isThere ? "" : "There is no user \"" + name + "\".";
}

Fault SqliteStorage::RemoveUser(const std::string& name) {
  return ChangeUser("DELETE FROM User WHERE Name = ?1 AND ?2 = '' RETURNING 1", name, "");
}

Fault SqliteStorage::SetPasswordHash(const std::string& name, const std::string& hash) {
  return ChangeUser("UPDATE User SET PasswordHash = ?2, FailedLogins = 0 WHERE Name = ?1 RETURNING 1", name,
                    hash);
}

Fault SqliteStorage::NoteLogin(const std::string& name, bool succeeded, const device::CalendarTime& when) {
  if (!succeeded)
    return ChangeUser(
        "UPDATE User SET FailedLogins = FailedLogins + 1 WHERE Name = ?1 AND ?2 = '' RETURNING 1", name, "");
  return ChangeUser("UPDATE User SET LastLogin = ?2, FailedLogins = 0 WHERE Name = ?1 RETURNING 1", name,
                    device::ToIso(when));
}

// --- what devices receive and send

Fault SqliteStorage::OfferedKeys(const std::string& office, const std::optional<DayRange>& days,
                                 std::vector<Key>& keys) const {
  const std::lock_guard lock(m_ReaderMutex);
  m_Reader.ClearFailure();
  const std::string first = days ? StoredDay(days->first) : "";
  const std::string last = days ? StoredDay(days->last) : "9999-12-31";
  SqliteQuery query(m_Reader,
                    "SELECT InspectionKey FROM Inspection WHERE IsRemoved = 0 "
                    "AND OfficeKey = (SELECT OfficeKey FROM Office WHERE Name = ?) "
                    "AND InspectionDate BETWEEN ? AND ? ORDER BY InspectionDate, InspectionNum");
  query.Bind(office).Bind(first).Bind(last);
  while (query.Step()) keys.push_back(query.Integer(0));
  return m_Reader.Failure();
}

Fault SqliteStorage::Read(std::span<const Key> keys, std::size_t bytes,
                          std::vector<OfficeInspection>& inspections) const {
  const std::lock_guard lock(m_ReaderMutex);
  m_Reader.ClearFailure();
  std::size_t size = 0;
  for (const Key key : keys) {
    SqliteQuery query(m_Reader, "SELECT " INSPECTION_COLUMNS " FROM Inspection WHERE InspectionKey = ?");
    if (!query.Bind(key).Step())
      return m_Reader.Failed() ? m_Reader.Failure() : "An inspection that was offered has vanished.";
    OfficeInspection inspection = ReadInspection(query, 0);
    for (const Text& text : inspection.texts) size += text.size();
    if (size > bytes && !inspections.empty()) break;
    inspections.push_back(std::move(inspection));
  }
  return {};
}

Fault SqliteStorage::StorePushes(std::span<const Push> pushes) {
  const std::lock_guard lock(m_WriterMutex);
  m_Writer.ClearFailure();
  SqliteTransaction transaction(m_Writer);
  for (const Push& push : pushes) {
    const std::int64_t office = OfficeKey(push.office);
    if (m_Writer.Failed()) break;
    OfficeInspection inspection{push.texts, DayOf(push.origin.when), kNoType};
    if (inspection.Number().empty()) {
      if (!HasUnnumbered(office, push.texts)) AddVersion(office, inspection, ChangeKind::Pushed, push.origin);
      continue;
    }
    const std::optional<Row> row = FindRow(office, device::ToUtf8(inspection.Number()));
    if (row) {
      inspection.day = row->inspection.day;
      inspection.type = row->inspection.type;
    }
    Write(office, row, inspection, ChangeKind::Pushed, push.origin);
  }
  transaction.Commit();
  return m_Writer.Failure();
}

// --- what the office does

Fault SqliteStorage::ListOffices(std::vector<std::string>& offices) const {
  const std::lock_guard lock(m_ReaderMutex);
  m_Reader.ClearFailure();
  SqliteQuery query(m_Reader, "SELECT Name FROM Office ORDER BY Name");
  while (query.Step()) offices.emplace_back(query.Text(0));
  return m_Reader.Failure();
}

Fault SqliteStorage::List(const std::string& office, const std::optional<DayRange>& days,
                          std::vector<OfficeInspection>& inspections) const {
  std::vector<Key> keys;
  if (Fault fault = OfferedKeys(office, days, keys); !fault.empty()) return fault;
  return Read(keys, std::string::npos, inspections);
}

Fault SqliteStorage::Find(const std::string& office, TextView number,
                          std::optional<OfficeInspection>& inspection) const {
  const std::lock_guard lock(m_ReaderMutex);
  m_Reader.ClearFailure();
  const std::string stored = device::ToUtf8(number);
  SqliteQuery query(m_Reader, "SELECT " INSPECTION_COLUMNS
                              " FROM Inspection JOIN Office USING (OfficeKey) "
                              "WHERE Name = ? AND InspectionNum = ? AND IsRemoved = 0");
  inspection.reset();
  if (query.Bind(office).Bind(stored).Step()) inspection = ReadInspection(query, 0);
  return m_Reader.Failure();
}

Fault SqliteStorage::Apply(const std::string& office, std::span<const Change> changes, ChangeKind kind,
                           const Origin& origin, Applied& applied) {
  const std::lock_guard lock(m_WriterMutex);
  m_Writer.ClearFailure();
  SqliteTransaction transaction(m_Writer);
  const std::int64_t key = OfficeKey(office);
  Applied done;
  for (const Change& change : changes) {
    const std::optional<Row> row = FindRow(key, device::ToUtf8(change.number));
    if (m_Writer.Failed()) break;
    const bool isThere = row && !row->isRemoved;
    if (isThere && change.expect == Change::Expect::New)
      return "There is an inspection " + NameOf(change.number) + " already.";
    if (!isThere && change.expect == Change::Expect::Existing)
      return "There is no inspection " + NameOf(change.number) + ".";
    OfficeInspection inspection;
    if (isThere)
      inspection = row->inspection;
    else
      inspection.day = DayOf(origin.when);
    inspection.texts[0] = change.number;
    for (std::size_t at = 1; at < kTexts; ++at)
      if (change.texts[at]) inspection.texts[at] = *change.texts[at];
    if (change.day) inspection.day = *change.day;
    if (change.type) inspection.type = *change.type;
    const bool isChanged = Write(key, row, inspection, kind, origin);
    ++(!isChanged ? done.same : isThere ? done.changed : done.added);
  }
  if (transaction.Commit()) applied = done;
  return m_Writer.Failure();
}

Fault SqliteStorage::Remove(const std::string& office, TextView number, const Origin& origin) {
  const std::lock_guard lock(m_WriterMutex);
  m_Writer.ClearFailure();
  SqliteTransaction transaction(m_Writer);
  const std::int64_t key = OfficeKey(office);
  const std::optional<Row> row = FindRow(key, device::ToUtf8(number));
  if (m_Writer.Failed()) return m_Writer.Failure();
  if (!row || row->isRemoved) return "There is no inspection " + NameOf(number) + ".";
  SqliteQuery(m_Writer, "UPDATE Inspection SET IsRemoved = 1 WHERE InspectionKey = ?").Bind(row->key).Run();
  AddVersion(key, row->inspection, ChangeKind::Removed, origin);
  transaction.Commit();
  return m_Writer.Failure();
}

Fault SqliteStorage::History(const std::string& office, TextView number,
                             std::vector<Version>& versions) const {
  const std::lock_guard lock(m_ReaderMutex);
  m_Reader.ClearFailure();
  const std::string stored = device::ToUtf8(number);
  SqliteQuery query(m_Reader, "SELECT " INSPECTION_COLUMNS
                              ", Number, Kind, ChangedBy, ChangedFrom, ChangedAt FROM Version "
                              "WHERE OfficeKey = (SELECT OfficeKey FROM Office WHERE Name = ?) "
                              "AND InspectionNum = ? ORDER BY Number");
  query.Bind(office).Bind(stored);
  while (query.Step()) {
    Version& version = versions.emplace_back();
    version.inspection = ReadInspection(query, 0);
    version.number = static_cast<int>(query.Integer(kColumns));
    const auto kind = std::find(kKinds.begin(), kKinds.end(), query.Text(kColumns + 1));
    if (kind != kKinds.end()) version.kind = static_cast<ChangeKind>(kind - kKinds.begin());
    version.origin = {std::string(query.Text(kColumns + 2)), std::string(query.Text(kColumns + 3)),
                      ReadTime(query.Text(kColumns + 4))};
  }
  return m_Reader.Failure();
}

Fault SqliteStorage::BackUp(const std::string& file) const {
  // Through a connection of its own: the reader may write nothing, not even another file.
  SqliteFile source(m_Reader.Path(), m_Reader.Patience());
  if (!source.Open(SqliteFile::Mode::Existing)) return source.Failure();
  const PrivateFiles privacy;
  SqliteQuery(source, "VACUUM INTO ?").Bind(file).Run();
  return source.Failure();
}

// --- within a transaction

std::int64_t SqliteStorage::OfficeKey(const std::string& office) {
  const auto find = [&]() -> std::int64_t {
    SqliteQuery query(m_Writer, "SELECT OfficeKey FROM Office WHERE Name = ?");
    return query.Bind(office).Step() ? query.Integer(0) : 0;
  };
  const std::int64_t key = find();
  if (key != 0 || m_Writer.Failed()) return key;
  SqliteQuery(m_Writer, "INSERT INTO Office (Name) VALUES (?)").Bind(office).Run();
  return find();
}

std::optional<SqliteStorage::Row> SqliteStorage::FindRow(std::int64_t office, const std::string& number) {
  SqliteQuery query(m_Writer, "SELECT " INSPECTION_COLUMNS
                              ", InspectionKey, IsRemoved FROM Inspection "
                              "WHERE OfficeKey = ? AND InspectionNum = ?");
  if (!query.Bind(office).Bind(number).Step()) return std::nullopt;
  return Row{query.Integer(kColumns), query.Integer(kColumns + 1) != 0, ReadInspection(query, 0)};
}

bool SqliteStorage::Write(std::int64_t office, const std::optional<Row>& row,
                          const OfficeInspection& inspection, ChangeKind kind, const Origin& origin) {
  if (row && !row->isRemoved && row->inspection == inspection) return false;
  const BoundInspection bound(inspection);
  if (row) {
    SqliteQuery update(m_Writer, "UPDATE Inspection SET IsRemoved = 0, (" INSPECTION_COLUMNS
                                 ") = (" INSPECTION_PLACES ") WHERE InspectionKey = ?");
    bound.BindTo(update);
    update.Bind(row->key).Run();
  } else {
    SqliteQuery insert(m_Writer, "INSERT INTO Inspection (" INSPECTION_COLUMNS
                                 ", OfficeKey) "
                                 "VALUES (" INSPECTION_PLACES ", ?)");
    bound.BindTo(insert);
    insert.Bind(office).Run();
  }
  AddVersion(office, inspection, kind, origin);
  return true;
}

void SqliteStorage::AddVersion(std::int64_t office, const OfficeInspection& inspection, ChangeKind kind,
                               const Origin& origin) {
  const BoundInspection bound(inspection);
  std::int64_t number = 1;
  {
    SqliteQuery last(m_Writer, "SELECT MAX(Number) FROM Version WHERE OfficeKey = ? AND InspectionNum = ?");
    if (last.Bind(office).Bind(bound.texts[0]).Step()) number = last.Integer(0) + 1;
  }
  const std::string when = device::ToIso(origin.when);
  SqliteQuery insert(m_Writer, "INSERT INTO Version (" INSPECTION_COLUMNS
                               ", OfficeKey, Number, Kind, ChangedBy, ChangedFrom, ChangedAt) "
                               "VALUES (" INSPECTION_PLACES ", ?, ?, ?, ?, ?, ?)");
  bound.BindTo(insert);
  insert.Bind(office).Bind(number).Bind(kKinds[static_cast<std::size_t>(kind)]);
  insert.Bind(origin.who).Bind(origin.where).Bind(when).Run();
}

bool SqliteStorage::HasUnnumbered(std::int64_t office, const InspectionTexts& texts) {
  const BoundInspection bound({texts, {}, kNoType});
  SqliteQuery query(m_Writer, "SELECT " INSPECTION_COLUMNS
                              " FROM Version WHERE OfficeKey = ? AND InspectionNum = '' "
                              "AND DwellingAddress = ? AND ClientName = ?");
  query.Bind(office).Bind(bound.texts[1]).Bind(bound.texts[2]);
  while (query.Step())
    if (ReadInspection(query, 0).texts == texts) return true;
  return false;
}

}  // namespace inspector::server
