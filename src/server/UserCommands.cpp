#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>

#include "server/OfficeCommands.h"
#include "server/Table.h"

namespace inspector::server {
namespace {

// While one lives, the terminal does not show what is typed.
class Blindfold {
public:
  Blindfold() {
    m_IsOn = tcgetattr(STDIN_FILENO, &m_Before) == 0;
    termios blind = m_Before;
    blind.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    if (m_IsOn) tcsetattr(STDIN_FILENO, TCSAFLUSH, &blind);
  }
  ~Blindfold() {
    if (m_IsOn) tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_Before);
  }
  Blindfold(const Blindfold&) = delete;
  Blindfold& operator=(const Blindfold&) = delete;

private:
  termios m_Before{};
  bool m_IsOn = false;
};

std::string ReadLine(std::istream& in) {
  std::string line;
  std::getline(in, line);
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

// Asked for twice at a terminal, else the first line of the input. Nothing when it may not be one.
std::optional<std::string> ReadPassword(CommandRun& run) {
  std::string typed;
  if (&run.in == &std::cin && isatty(STDIN_FILENO) != 0) {
    const Blindfold blindfold;
    run.err << "Password: " << std::flush;
    typed = ReadLine(run.in);
    run.err << "\nOnce more: " << std::flush;
    const bool isSame = ReadLine(run.in) == typed;
    run.err << '\n';
    if (!isSame) {
      run.err << "These were two different passwords. Nothing has changed.\n";
      return std::nullopt;
    }
  } else {
    typed = ReadLine(run.in);
  }
  const Text password = device::FromUtf8(typed);
  if (const std::string why = WhyNoPassword(password); !why.empty()) {
    run.err << why << '\n';
    return std::nullopt;
  }
  return protocol::ToWire(password);
}

std::optional<std::string> ReadHash(CommandRun& run) {
  const auto password = ReadPassword(run);
  if (!password) return std::nullopt;
  auto hash = HashPassword(*password, run.cost);
  if (!hash) run.err << "There is no memory for hashing the password.\n";
  return hash;
}

}  // namespace

ExitCode CommandRun::Tell(const Fault& fault) const {
  if (fault.empty()) return ExitCode::Done;
  err << fault << '\n';
  return ExitCode::Failed;
}

bool CommandRun::KnowsOffice(const std::string& office, Fault& fault) const {
  std::vector<std::string> offices;
  fault = storage.ListOffices(offices);
  return std::find(offices.begin(), offices.end(), office) != offices.end();
}

ExitCode AddUser(CommandRun& run, const std::string& name, const std::string& office) {
  for (const std::string& word : {name, office}) {
    const std::string why = WhyNoName(device::FromUtf8(word));
    if (why.empty()) continue;
    run.err << why << '\n';
    return ExitCode::Usage;
  }
  // Before anybody types a password for nothing.
  std::optional<User> known;
  if (const Fault fault = run.storage.FindUser(name, known); !fault.empty()) return run.Tell(fault);
  if (known)
    return run.Tell("There is a user \"" + name + "\" already, of the office \"" + known->office + "\".");
  Fault fault;
  if (!run.KnowsOffice(office, fault) && fault.empty()) run.err << "\"" << office << "\" is a new office.\n";
  const auto hash = ReadHash(run);
  if (!hash) return ExitCode::Failed;
  return run.Tell(run.storage.AddUser({name, office, *hash}));
}

ExitCode RemoveUser(CommandRun& run, const std::string& name) {
  return run.Tell(run.storage.RemoveUser(name));
}

ExitCode ChangePassword(CommandRun& run, const std::string& name) {
  std::optional<User> known;
  if (const Fault fault = run.storage.FindUser(name, known); !fault.empty()) return run.Tell(fault);
  if (!known) return run.Tell("There is no user \"" + name + "\".");
  const auto hash = ReadHash(run);
  if (!hash) return ExitCode::Failed;
  return run.Tell(run.storage.SetPasswordHash(name, *hash));
}

ExitCode ListUsers(CommandRun& run) {
  std::vector<User> users;
  if (const Fault fault = run.storage.ListUsers(users); !fault.empty()) return run.Tell(fault);
  Table table({"Office", "User", "LastLogin", "FailedLogins"});
  for (const User& user : users)
    table.Add({user.office, user.name, device::ToIso(user.lastLogin), std::int64_t{user.failedLogins}});
  table.Print(run.out, run.asJson);
  return ExitCode::Done;
}

}  // namespace inspector::server
