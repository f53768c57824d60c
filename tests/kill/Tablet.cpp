#include "kill/Tablet.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <thread>

#include "support/Shell.h"
#include "support/TestSupport.h"

namespace inspector::tests {
KillRun::KillRun(int count, char** words, int programCount) {
  const std::vector<std::string> given(words + 1, words + count);
  const auto options = static_cast<std::size_t>(programCount);
  std::string pattern = std::filesystem::temp_directory_path() / "inspector-kill-XXXXXX";
  if (given.size() < options || mkdtemp(pattern.data()) == nullptr) {
    std::fprintf(stderr, "Usage: %s PROGRAM... [KILLS [SEED]]\n", words[0]);
    std::exit(2);
  }
  folder = pattern;
  programs.assign(given.begin(), given.begin() + programCount);
  if (given.size() > options) kills = std::stoi(given[options]);
  if (given.size() > options + 1) seed = static_cast<unsigned>(std::stoul(given[options + 1]));
  ::testing::GTEST_FLAG(throw_on_failure) = true;  // what Shell finds ends the program
}

Tablet::Tablet(std::string program, std::filesystem::path home, unsigned seed)
    : m_Program(std::move(program)), m_Home(std::move(home)), m_Seed(seed), m_Random(seed) {
  Run({"init", "--sample"});
}

Tablet Tablet::Copy() const {
  Tablet copy = *this;
  copy.m_Home += ".copy";
  std::filesystem::remove_all(copy.m_Home);
  std::filesystem::copy(m_Home, copy.m_Home, std::filesystem::copy_options::recursive);
  return copy;
}

std::string Tablet::Run(const std::vector<std::string>& command) {
  const Ending ending = RunAndKill(command, std::chrono::minutes(10));
  Expect(!ending.killed, "it does not end");
  return ending.out;
}

Ending Tablet::RunAndKill(const std::vector<std::string>& command, Duration after,
                          const std::string& program) {
  m_Last.clear();
  std::vector<std::string> words = {program.empty() ? m_Program : program, "--home", m_Home.string()};
  for (const std::string& word : command) {
    m_Last += word + " ";
    words.push_back(word);
  }
  m_Last += "(killed after " + std::to_string(after.count()) + " us)";
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const std::string out = m_Home.string() + ".out";
  const std::string err = m_Home.string() + ".err";

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
  if (!ending.killed && status != 0) Fail("it ended with " + std::to_string(status));
  return ending;
}

void Tablet::Fail(const std::string& what) {
  std::fprintf(stderr, "%s: %s\nSeed %u. The tablet is kept in %s, its last messages in %s.err\n",
               m_Last.c_str(), what.c_str(), m_Seed, m_Home.c_str(), m_Home.c_str());
  std::exit(1);
}

std::string Tablet::Ask(const std::string& sql) {
  return Shell(File("Inspection_Data.cdb")).Ask(sql);
}

std::string Tablet::AskTemplates(const std::string& sql) {
  return Shell(File("Template_Data.cdb")).Ask(sql);
}

void Tablet::CheckDatabases() {
  Expect(AskTemplates("PRAGMA integrity_check") == "ok", "the Template database is damaged");
  Expect(Ask("PRAGMA integrity_check") == "ok", "the Inspection database is damaged");
  const auto expectNone = [this](const std::string& from, const std::string& what) {
    Expect(Ask("SELECT 1 FROM " + from).empty(), what);
  };
  expectNone("Step WHERE CategoryID NOT IN (SELECT CategoryID FROM Category)",
             "steps without their category");
  expectNone("Category WHERE InspectionID NOT IN (SELECT InspectionID FROM Inspection)",
             "categories without their inspection");
  for (const std::string table : {"Inspection", "Category", "Step"})
    expectNone(table + " GROUP BY " + table + "ID HAVING count(*) > 1", "a key twice in " + table);
}

std::string Tablet::OneOf(const std::string& lines) {
  std::vector<std::string> choices;
  std::istringstream in(lines);
  for (std::string line; std::getline(in, line);) choices.push_back(line);
  return choices.at(Random(choices.size()));
}

}  // namespace inspector::tests
