// What the office does at the command line: users, inspections, their history. They work on the storage
// itself, whether the server runs or not.
#pragma once

#include <cstdint>
#include <istream>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "server/Passwords.h"
#include "server/Storage.h"

namespace inspector::server {

enum class ExitCode { Done = 0, Failed = 1, Usage = 2 };

struct CommandRun {
  Storage& storage;
  device::Clock& clock;
  std::istream& in;  // where a password comes from, unless it is a terminal
  std::ostream& out;
  std::ostream& err;
  std::string who;  // at the command line
  bool asJson = false;
  PasswordCost cost = {};

  // On a fault, false.
  bool KnowsOffice(const std::string& office, Fault& fault) const;
  Origin Here() const { return {who, "command line", clock.Now()}; }
  ExitCode Tell(const Fault& fault) const;  // Done when there is none
};

ExitCode AddUser(CommandRun& run, const std::string& name, const std::string& office);
ExitCode RemoveUser(CommandRun& run, const std::string& name);
ExitCode ChangePassword(CommandRun& run, const std::string& name);
ExitCode ListUsers(CommandRun& run);

// `words` are FIELD=VALUE, or a number alone.
ExitCode AddInspection(CommandRun& run, const std::string& office, const std::vector<std::string>& words);
ExitCode SetInspection(CommandRun& run, const std::string& office, const std::vector<std::string>& words);
// `words` choose: every field that is named has that value.
ExitCode ListInspections(CommandRun& run, const std::string& office, std::optional<protocol::Period> period,
                         const std::vector<std::string>& words);
ExitCode ShowInspection(CommandRun& run, const std::string& office, const std::vector<std::string>& words);
ExitCode RemoveInspection(CommandRun& run, const std::string& office, const std::string& number);
// The first row names fields. All rows or none; inspections that are there already get the fields set.
ExitCode ImportInspections(CommandRun& run, const std::string& office, const std::string& file, bool isTrial);

// Of an empty number: what devices have sent without one.
ExitCode ShowHistory(CommandRun& run, const std::string& office, const std::string& number);
// Makes a version the present one. With `unnumbered` it is one of those that came without a number, and gets
// this one.
ExitCode Restore(CommandRun& run, const std::string& office, const std::string& number, int version,
                 bool unnumbered);
ExitCode BackUp(CommandRun& run, const std::string& file);

}  // namespace inspector::server
