// A tablet whose program is killed again and again, and what must be true of it afterwards.
#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>
#include <thread>

#include "support/Shell.h"
#include "support/TestSupport.h"

namespace inspector::tests {

// PROGRAM... [KILLS [SEED]] on the command line of a test, and a new folder for its tablets.
struct KillRun {
  KillRun(int count, char** words, std::size_t programCount) : programs(words + 1, words + count) {
    std::string pattern = std::filesystem::temp_directory_path() / "inspector-kill-XXXXXX";
    if (programs.size() < programCount || mkdtemp(pattern.data()) == nullptr) {
      std::fprintf(stderr, "Usage: %s PROGRAM... [KILLS [SEED]]\n", words[0]);
      std::exit(2);
    }
    folder = pattern;
    if (programs.size() > programCount) kills = std::stoi(programs[programCount]);
    if (programs.size() > programCount + 1) seed = static_cast<unsigned>(std::stoul(programs.back()));
    ::testing::GTEST_FLAG(throw_on_failure) = true;  // what Shell finds ends the program
  }

  std::vector<std::string> programs;
  int kills = 200;
  unsigned seed = std::random_device()();
  std::filesystem::path folder;
};

class Tablet {
public:
  using Duration = std::chrono::microseconds;
  // Of a program.
  struct Ending {
    bool killed;
    std::string out;  // standard output, as far as it got
    Duration lasted;
  };

  // Creates databases and sample visit in `home` with the given command-line program.
  Tablet(std::string program, std::filesystem::path home, unsigned seed)
      : m_Program(std::move(program)), m_Home(std::move(home)), m_Seed(seed), m_Random(seed) {
    Run({"init", "--sample"});
  }
  // One with the same files, beside this one; it replaces the last copy.
  Tablet Copy() const {
    Tablet copy = *this;
    copy.m_Home += ".copy";
    std::filesystem::remove_all(copy.m_Home);
    std::filesystem::copy(m_Home, copy.m_Home, std::filesystem::copy_options::recursive);
    return copy;
  }

  // Runs a command to its end; a failure ends the test.
  std::string Run(const std::vector<std::string>& command) {
    const Ending ending = RunAndKill(command, std::chrono::minutes(10));
    Expect(!ending.killed, "it does not end");
    return ending.out;
  }
  // Kills it, if it is still running then, as a dead battery would. Without `program`, the command line's.
  Ending RunAndKill(const std::vector<std::string>& command, Duration after,
                    const std::string& program = {}) {
    std::vector<std::string> words = {program.empty() ? m_Program : program, "--home", m_Home.string()};
    words.insert(words.end(), command.begin(), command.end());
    m_Last = command[0] + " (killed after " + std::to_string(after.count()) + " us)";
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const std::string out = m_Home.string() + ".out";
    const std::string err = m_Home.string() + ".err";

    std::ofstream(out).flush();  // nothing of the last program, however early this one is killed
    const auto start = std::chrono::steady_clock::now();
    const auto lasted = [start] {
      return std::chrono::duration_cast<Duration>(std::chrono::steady_clock::now() - start);
    };
    const pid_t process = fork();
    if (process == 0) {
      constexpr int kAnew = O_WRONLY | O_CREAT | O_TRUNC;
      dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
      dup2(open(out.c_str(), kAnew, 0666), STDOUT_FILENO);
      dup2(open(err.c_str(), kAnew, 0666), STDERR_FILENO);
      execv(arguments[0], arguments.data());
      _exit(127);
    }
    Expect(process > 0, "it cannot be started");
    int status = 0;
    while (waitpid(process, &status, WNOHANG) == 0) {
      if (lasted() >= after) kill(process, SIGKILL);
      std::this_thread::sleep_for(std::chrono::microseconds(50));
    }
    Ending ending{WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL, ContentOf(out), lasted()};
    Expect(ending.killed || status == 0, "it ended with " + std::to_string(status));
    return ending;
  }

  // Asks the Inspection database as another program would: fields joined with '|', rows with '\n'.
  // The database is closed again, as the next command must find it.
  std::string Ask(const std::string& sql) const { return Shell(File("Inspection_Data.cdb")).Ask(sql); }
  std::string AskTemplates(const std::string& sql) const { return Shell(File("Template_Data.cdb")).Ask(sql); }
  // Both databases whole, no step without its category, no key twice.
  void CheckDatabases() const {
    Expect(AskTemplates("PRAGMA integrity_check") == "ok", "the Template database is damaged");
    Expect(Ask("PRAGMA integrity_check") == "ok", "the Inspection database is damaged");
    const auto expectNone = [this](const std::string& from, const std::string& what) {
      Expect(Ask("SELECT 1 FROM " + from).empty(), what);
    };
    expectNone("Step WHERE CategoryID NOT IN (SELECT CategoryID FROM Category)", "steps without category");
    expectNone("Category WHERE InspectionID NOT IN (SELECT InspectionID FROM Inspection)", "lost categories");
    for (const std::string table : {"Inspection", "Category", "Step"})
      expectNone(table + " GROUP BY " + table + "ID HAVING count(*) > 1", "a key twice in " + table);
  }
  // What does not hold is said, with where the tablet is kept, and ends the program with 1.
  void Expect(bool holds, const std::string& what) const {
    if (holds) return;
    std::fprintf(stderr, "%s: %s\nSeed %u. The tablet is kept in %s, its last messages in %s.err\n",
                 m_Last.c_str(), what.c_str(), m_Seed, m_Home.c_str(), m_Home.c_str());
    std::exit(1);
  }

  const std::filesystem::path& Home() const { return m_Home; }
  std::size_t Random(std::size_t below) {
    return std::uniform_int_distribution<std::size_t>(0, below - 1)(m_Random);
  }
  double Fraction() { return std::uniform_real_distribution<double>(0, 1)(m_Random); }
  // One of several lines.
  std::string OneOf(const std::string& lines) {
    std::vector<std::string> choices;
    std::istringstream in(lines);
    for (std::string line; std::getline(in, line);) choices.push_back(line);
    return choices.at(Random(choices.size()));
  }

private:
  std::filesystem::path File(const std::string& name) const { return m_Home / "My Documents" / name; }

  std::string m_Program;
  std::filesystem::path m_Home;
  unsigned m_Seed;
  std::mt19937 m_Random;
  std::string m_Last;  // the last command, for a violation
};

}  // namespace inspector::tests
