// Where the office keeps its users, its inspections and their history. The server and the commands know this
// interface only; SqliteStorage keeps all of it in one file.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "server/OfficeInspection.h"

namespace inspector::server {

// Empty when it went well, else what failed, in words for the person who runs the server.
using Fault = std::string;

struct User {
  std::string name;    // UTF-8, unique over all offices
  std::string office;  // UTF-8
  std::string passwordHash;
  device::CalendarTime lastLogin{};  // zero: never
  int failedLogins = 0;              // since then
};

// Days, both included.
struct DayRange {
  device::CalendarTime first;
  device::CalendarTime last;
};

// Who changed something, and from where: a user and the device's address, or a person at the command line.
struct Origin {
  std::string who;
  std::string where;
  device::CalendarTime when;  // the server's local time
};

// An inspection as a device sent it. What does not travel is in the storage's hands.
struct Push {
  std::string office;
  InspectionTexts texts;
  Origin origin;
};

enum class ChangeKind { Added, Set, Imported, Pushed, Restored, Removed };

// One entry of the history: the inspection as it was from then on.
struct Version {
  int number = 0;  // counts from 1 for each inspection
  ChangeKind kind = ChangeKind::Added;
  Origin origin;
  OfficeInspection inspection;
};

// What the office does to one inspection: sets some of its fields.
struct Change {
  enum class Expect { New, Existing, Either };
  Expect expect = Expect::Either;
  Text number;
  std::array<std::optional<Text>, kTexts> texts;  // of the first, which is the number, nothing
  std::optional<device::CalendarTime> day;        // a new one without it gets the day of the change
  std::optional<std::int32_t> type;               // and no type
};

struct Applied {
  int added = 0;
  int changed = 0;
  int same = 0;
};

// Guarantees that every storage gives:
//  - An inspection's key is its office and its number, compared unit by unit.
//  - A call that changes something is durable when it returns without a fault, and has changed nothing when
//  it
//    returns with one. A crash at any moment leaves the same choice.
//  - Each version of an inspection is kept, with who, when and from where. A change that changes nothing
//    makes no version.
//  - Keys that OfferedKeys has returned can be read for as long as the storage lives, also when the
//    inspection is changed or removed meanwhile: it is read as it is by then.
// Calls may come from any thread; those that read (const) do not wait for those that write. Another process
// may use the same storage.
class Storage {
public:
  using Key = std::int64_t;

  virtual ~Storage() = default;

  // Of all offices, by office and name.
  virtual Fault ListUsers(std::vector<User>& users) const = 0;
  // Nothing when there is none of that name.
  virtual Fault FindUser(const std::string& name, std::optional<User>& user) const = 0;
  // A fault when the name is taken.
  virtual Fault AddUser(const User& user) = 0;
  // A fault when there is no such user, as in the next two.
  virtual Fault RemoveUser(const std::string& name) = 0;
  virtual Fault SetPasswordHash(const std::string& name, const std::string& hash) = 0;
  virtual Fault NoteLogin(const std::string& name, bool succeeded, const device::CalendarTime& when) = 0;

  // What a device of the office is offered for these days (none: all), by date and number. Costs what it
  // returns, however much the storage holds.
  virtual Fault OfferedKeys(const std::string& office, const std::optional<DayRange>& days,
                            std::vector<Key>& keys) const = 0;
  // Appends inspections in the order of `keys`, the first in any case and then as many as come to about
  // `bytes` of text.
  virtual Fault Read(std::span<const Key> keys, std::size_t bytes,
                     std::vector<OfficeInspection>& inspections) const = 0;
  // All of them or none, durably. One with a known number keeps date and type, a new one gets the day of its
  // origin and no type; one without a number is kept in the history and never offered.
  virtual Fault StorePushes(std::span<const Push> pushes) = 0;

  // For the commands. An office is known once it has a user or an inspection.
  virtual Fault ListOffices(std::vector<std::string>& offices) const = 0;
  virtual Fault List(const std::string& office, const std::optional<DayRange>& days,
                     std::vector<OfficeInspection>& inspections) const = 0;
  virtual Fault Find(const std::string& office, TextView number,
                     std::optional<OfficeInspection>& inspection) const = 0;
  // All of them or none; when a number is there that should be new, or is missing, the fault names it.
  virtual Fault Apply(const std::string& office, std::span<const Change> changes, ChangeKind kind,
                      const Origin& origin, Applied& applied) = 0;
  // It is offered no more and its number is free; the history stays.
  virtual Fault Remove(const std::string& office, TextView number, const Origin& origin) = 0;
  // The oldest first. Of an empty number: what was pushed without one.
  virtual Fault History(const std::string& office, TextView number, std::vector<Version>& versions) const = 0;
  // A whole copy of the storage as it is now, into a file that is not there yet.
  virtual Fault BackUp(const std::string& file) const = 0;
};

}  // namespace inspector::server
