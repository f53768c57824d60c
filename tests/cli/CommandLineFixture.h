// The command line, called as a shell calls it, on a tablet with the small library.
#pragma once

#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "cli/CommandLine.h"
#include "support/VisitFixture.h"

namespace inspector::tests {

struct CliRun {
  int exit = 0;
  std::string out;
  std::string err;
};

inline CliRun RunWords(std::vector<std::string> words) {
  std::ostringstream out;
  std::ostringstream err;
  const int exit = cli::RunCommandLine(std::move(words), out, err);
  return {exit, out.str(), err.str()};
}

// Nobody sits at the terminal, also when a person runs the tests.
inline void LeaveTheTerminal() {
  ASSERT_NE(std::freopen("/dev/null", "r", stdin), nullptr);
}

class CommandLineTest : public ::testing::Test {
protected:
  static void SetUpTestSuite() { LeaveTheTerminal(); }
  void SetUp() override { m_Device.Close(); }

  CliRun Cli(std::vector<std::string> words) {
    words.insert(words.begin(), {"--home", m_Device.Root()});
    return RunWords(std::move(words));
  }
  // The output of a command that must succeed without a word on standard error.
  std::string Out(std::vector<std::string> words) {
    const std::string command = ::testing::PrintToString(words);
    const CliRun run = Cli(std::move(words));
    EXPECT_EQ(run.exit, 0) << command << run.err;
    EXPECT_EQ(run.err, "") << command;
    return run.out;
  }
  // What the databases hold: between two commands, as another program would look.
  std::vector<Text> Outline(std::int32_t inspectionID) {
    m_Device.Open();
    std::vector<Text> lines = m_Device.Outline(inspectionID);
    m_Device.Close();
    return lines;
  }
  Text RowCounts() {
    m_Device.Open();
    Text counts = m_Device.RowCounts();
    m_Device.Close();
    return counts;
  }

  VisitDevice m_Device;
};

}  // namespace inspector::tests
