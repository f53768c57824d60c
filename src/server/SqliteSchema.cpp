#include "server/SqliteSchema.h"

#include <array>

namespace inspector::server {
namespace {

// The n-th entry leads from version n to n + 1, which the file's user_version tells. What has been released
// is never edited: a change is a new entry.
//
// Names of columns are those of the device's table. A removed inspection keeps its row, so that a session to
// which it was promised can still read it. Versions of what came without a number have an empty one.
constexpr std::array kSteps = {
    R"sql(
CREATE TABLE Office (
  OfficeKey INTEGER PRIMARY KEY,
  Name TEXT NOT NULL UNIQUE);
CREATE TABLE User (
  Name TEXT PRIMARY KEY,
  OfficeKey INTEGER NOT NULL REFERENCES Office,
  PasswordHash TEXT NOT NULL,
  LastLogin TEXT NOT NULL DEFAULT '',
  FailedLogins INTEGER NOT NULL DEFAULT 0) WITHOUT ROWID;
CREATE TABLE Inspection (
  InspectionKey INTEGER PRIMARY KEY,
  OfficeKey INTEGER NOT NULL REFERENCES Office,
  InspectionNum TEXT NOT NULL CHECK (InspectionNum <> ''),
  DwellingAddress TEXT NOT NULL,
  ClientName TEXT NOT NULL,
  ClientAddress TEXT NOT NULL,
  ClientCityStateZip TEXT NOT NULL,
  GeneralInformation TEXT NOT NULL,
  DocType TEXT NOT NULL,
  CityStateZip TEXT NOT NULL,
  ClientAgent TEXT NOT NULL,
  ListingAgent TEXT NOT NULL,
  RealEstateCompany TEXT NOT NULL,
  InspectionDate TEXT NOT NULL,
  InspectionTypeID INTEGER NOT NULL,
  IsRemoved INTEGER NOT NULL DEFAULT 0,
  UNIQUE (OfficeKey, InspectionNum));
CREATE INDEX Offered ON Inspection (OfficeKey, InspectionDate, InspectionNum) WHERE IsRemoved = 0;
CREATE TABLE Version (
  VersionKey INTEGER PRIMARY KEY,
  OfficeKey INTEGER NOT NULL REFERENCES Office,
  InspectionNum TEXT NOT NULL,
  DwellingAddress TEXT NOT NULL,
  ClientName TEXT NOT NULL,
  ClientAddress TEXT NOT NULL,
  ClientCityStateZip TEXT NOT NULL,
  GeneralInformation TEXT NOT NULL,
  DocType TEXT NOT NULL,
  CityStateZip TEXT NOT NULL,
  ClientAgent TEXT NOT NULL,
  ListingAgent TEXT NOT NULL,
  RealEstateCompany TEXT NOT NULL,
  InspectionDate TEXT NOT NULL,
  InspectionTypeID INTEGER NOT NULL,
  Number INTEGER NOT NULL,
  Kind TEXT NOT NULL,
  ChangedBy TEXT NOT NULL,
  ChangedFrom TEXT NOT NULL,
  ChangedAt TEXT NOT NULL,
  UNIQUE (OfficeKey, InspectionNum, Number));
-- The same visit pushed twice without a number is found by what it says.
CREATE INDEX Unnumbered ON Version (OfficeKey, DwellingAddress, ClientName) WHERE InspectionNum = '';
)sql",
};

}  // namespace

Fault BringUpToDate(SqliteFile& file) {
  const auto version = [&file] {
    SqliteQuery query(file, "PRAGMA user_version");
    return query.Step() ? query.Integer(0) : 0;
  };
  constexpr auto kNewest = static_cast<std::int64_t>(kSteps.size());
  const std::int64_t found = version();
  if (file.Failed()) return file.Failure();
  if (found > kNewest) return file.Path().string() + " was written by a later version of this program.";
  if (found == kNewest) return {};

  SqliteTransaction transaction(file);
  // Another process may have been faster.
  for (std::int64_t step = version(); step < kNewest && !file.Failed(); ++step) {
    const std::string next = "PRAGMA user_version = " + std::to_string(step + 1);
    if (file.Execute(kSteps[static_cast<std::size_t>(step)])) file.Execute(next.c_str());
  }
  transaction.Commit();
  return file.Failure();
}

}  // namespace inspector::server
