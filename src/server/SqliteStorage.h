// The office's storage in one SQLite file, DIR/syncd.db, which other tools may read at any time.
#pragma once

#include <memory>
#include <mutex>

#include "server/SqliteFile.h"
#include "server/Storage.h"

namespace inspector::server {

class SqliteStorage : public Storage {
public:
  // Makes folder and file where they are missing, readable by nobody else, and brings a file of an earlier
  // version up to date. On a fault there is no storage.
  // `patience`: so long a call waits for another process; a command and the server write to the same file in
  // turns, and a large import takes seconds.
  static Fault Open(const std::filesystem::path& folder, std::unique_ptr<SqliteStorage>& storage,
                    std::chrono::milliseconds patience = std::chrono::seconds(30));
  static std::filesystem::path FileIn(const std::filesystem::path& folder) { return folder / "syncd.db"; }

  Fault ListUsers(std::vector<User>& users) const override;
  Fault FindUser(const std::string& name, std::optional<User>& user) const override;
  Fault AddUser(const User& user) override;
  Fault RemoveUser(const std::string& name) override;
  Fault SetPasswordHash(const std::string& name, const std::string& hash) override;
  Fault NoteLogin(const std::string& name, bool succeeded, const device::CalendarTime& when) override;

  Fault OfferedKeys(const std::string& office, const std::optional<DayRange>& days,
                    std::vector<Key>& keys) const override;
  Fault Read(std::span<const Key> keys, std::size_t bytes,
             std::vector<OfficeInspection>& inspections) const override;
  Fault StorePushes(std::span<const Push> pushes) override;

  Fault ListOffices(std::vector<std::string>& offices) const override;
  Fault List(const std::string& office, const std::optional<DayRange>& days,
             std::vector<OfficeInspection>& inspections) const override;
  Fault Find(const std::string& office, TextView number,
             std::optional<OfficeInspection>& inspection) const override;
  Fault Apply(const std::string& office, std::span<const Change> changes, ChangeKind kind,
              const Origin& origin, Applied& applied) override;
  Fault Remove(const std::string& office, TextView number, const Origin& origin) override;
  Fault History(const std::string& office, TextView number, std::vector<Version>& versions) const override;
  Fault BackUp(const std::string& file) const override;

private:
  // A row of the table Inspection.
  struct Row {
    std::int64_t key = 0;
    bool isRemoved = false;
    OfficeInspection inspection;
  };

  SqliteStorage(const std::filesystem::path& file, std::chrono::milliseconds patience)
      : m_Reader(file, patience), m_Writer(file, patience) {}
  Fault Prepare();
  Fault ChangeUser(const char* sql, const std::string& name, std::string_view value);

  // Within a transaction of the writer. 0 after a failure.
  std::int64_t OfficeKey(const std::string& office);
  std::optional<Row> FindRow(std::int64_t office, const std::string& number);
  // `row` is the row of the same number, if there is one. False when that says the same already.
  bool Write(std::int64_t office, const std::optional<Row>& row, const OfficeInspection& inspection,
             ChangeKind kind, const Origin& origin);
  void AddVersion(std::int64_t office, const OfficeInspection& inspection, ChangeKind kind,
                  const Origin& origin);
  bool HasUnnumbered(std::int64_t office, const InspectionTexts& texts);

  mutable std::mutex m_ReaderMutex;
  mutable SqliteFile m_Reader;  // of the calls that only read
  std::mutex m_WriterMutex;
  SqliteFile m_Writer;
};

}  // namespace inspector::server
