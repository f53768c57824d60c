// A tablet whose program is killed again and again, and what must be true of it afterwards.
#pragma once

#include <chrono>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace inspector::tests {

using Duration = std::chrono::microseconds;

// Of a program.
struct Ending {
  bool killed;
  std::string out;  // standard output, as far as it got
  Duration lasted;
};

// PROGRAM... [KILLS [SEED]] on the command line of a test, and a new folder for its tablets.
struct KillRun {
  KillRun(int count, char** words, int programCount);

  std::vector<std::string> programs;
  int kills = 200;
  unsigned seed = std::random_device()();
  std::filesystem::path folder;
};

class Tablet {
public:
  // Creates databases and sample visit in `home` with the given command-line program.
  Tablet(std::string program, std::filesystem::path home, unsigned seed);
  // One with the same files, beside this one; it replaces the last copy.
  Tablet Copy() const;

  // Runs a command to its end; a failure ends the test.
  std::string Run(const std::vector<std::string>& command);
  // Kills it, if it is still running then, as a dead battery would. Without `program`, the command line's.
  Ending RunAndKill(const std::vector<std::string>& command, Duration after, const std::string& program = {});

  // Asks the Inspection database as another program would: fields joined with '|', rows with '\n'.
  // The database is closed again, as the next command must find it.
  std::string Ask(const std::string& sql);
  std::string AskTemplates(const std::string& sql);
  // Both databases whole, no step without its category, no key twice.
  void CheckDatabases();

  // A violation: says what, where the tablet is kept, and ends the program with 1.
  [[noreturn]] void Fail(const std::string& what);
  void Expect(bool holds, const std::string& what) {
    if (!holds) Fail(what);
  }

  const std::filesystem::path& Home() const { return m_Home; }
  std::size_t Random(std::size_t below) {
    return std::uniform_int_distribution<std::size_t>(0, below - 1)(m_Random);
  }
  double Fraction() { return std::uniform_real_distribution<double>(0, 1)(m_Random); }
  // One of several lines.
  std::string OneOf(const std::string& lines);

private:
  std::filesystem::path File(const std::string& name) const { return m_Home / "My Documents" / name; }

  std::string m_Program;
  std::filesystem::path m_Home;
  unsigned m_Seed;
  std::mt19937 m_Random;
  std::string m_Last;  // the last command, for Fail
};

}  // namespace inspector::tests
