// The command line, called as a shell calls it.
#pragma once

#include <nlohmann/json.hpp>

#include <cstdio>
#include <iomanip>
#include <sstream>

#include "cli/CommandLine.h"
#include "support/VisitFixture.h"

namespace inspector::tests {

struct CliRun {
  int exit = 0;
  std::string out;
  std::string err;
};

// Blanks separate the words of what is typed; single quotes around a whole word hold it together.
inline CliRun RunTyped(const std::string& typed) {
  std::istringstream in(typed);
  std::vector<std::string> words;
  for (std::string word; in >> std::quoted(word, '\'', '\0');) words.push_back(word);
  std::ostringstream out;
  std::ostringstream err;
  const int exit = cli::RunCommandLine(std::move(words), out, err);
  return {exit, out.str(), err.str()};
}

// On the device in the folder Home().
class CliTest : public ::testing::Test {
protected:
  // Nobody sits at the terminal, also when a person runs the tests.
  static void SetUpTestSuite() { ASSERT_NE(std::freopen("/dev/null", "r", stdin), nullptr); }
  virtual std::filesystem::path Home() const = 0;

  CliRun Cli(const std::string& typed) const { return RunTyped("--home '" + Home().string() + "' " + typed); }
  // The output of a command that must succeed without a word on standard error.
  std::string Out(const std::string& typed) const {
    const CliRun run = Cli(typed);
    EXPECT_EQ(run.exit, 0) << typed;
    EXPECT_EQ(run.err, "") << typed;
    return run.out;
  }
  nlohmann::ordered_json Json(const std::string& typed) const {
    return nlohmann::ordered_json::parse(Out(typed + " --json"));
  }
  // A command that succeeds and has something to say about it.
  void ExpectDone(const std::string& typed, const std::string& says) const {
    const CliRun run = Cli(typed);
    EXPECT_EQ(run.exit, 0) << typed;
    EXPECT_THAT(run.err, HasSubstr(says)) << typed;
  }
  // A command that does nothing but say why not.
  void ExpectRefused(int exit, const std::string& typed, const std::string& says = "") const {
    const CliRun run = Cli(typed);
    EXPECT_EQ(run.exit, exit) << typed;
    EXPECT_EQ(run.out, "") << typed;
    EXPECT_NE(run.err, "") << typed;
    EXPECT_THAT(run.err, HasSubstr(says)) << typed;
  }
};

// On a tablet with the small library.
class CommandLineTest : public CliTest {
protected:
  void SetUp() override { m_Device.Close(); }
  std::filesystem::path Home() const override { return m_Device.Root(); }

  // What the databases hold or are to hold: between two commands, as another program would look.
  template <typename Work>
  auto Between(Work work) {
    m_Device.Open();
    const std::shared_ptr<void> close(nullptr, [this](void*) { m_Device.Close(); });
    return work();
  }
  std::vector<Text> Outline(std::int32_t key) {
    return Between([&] { return m_Device.Outline(key); });
  }
  std::string InVisits(const std::string& sql) { return m_Device.Visits().Ask(sql); }
  Text RowCounts() {
    return Between([&] { return m_Device.RowCounts(); });
  }

  VisitDevice m_Device;
};

}  // namespace inspector::tests
