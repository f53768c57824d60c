#include "kill/Tablet.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "support/Shell.h"

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
  std::vector<std::string> words = {program.empty() ? m_Program : program, "--home", m_Home.string()};
  words.insert(words.end(), command.begin(), command.end());
  m_Last.clear();
  for (const std::string& word : command) m_Last += word + " ";
  m_Last += "(killed after " + std::to_string(after.count()) + " us)";
  const Ending ending = RunProgram(words, m_Home.string() + ".err", after);
  if (!ending.killed && ending.exit != 0) Fail("it ended with " + std::to_string(ending.exit));
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
