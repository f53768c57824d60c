// What the commands for reports take, refuse and say.
#include "CommandLineFixture.h"

namespace inspector::cli {
namespace {

using ::testing::HasSubstr;

class ReportCommandsTest : public tests::CommandLineTest {
protected:
  void SetUp() override {
    CommandLineTest::SetUp();
    Out({"new", "--type", "House", "number=7"});
    Cli({"--yes", "defaults", "1001"});
  }
};

TEST_F(ReportCommandsTest, WhatMakesNoDifferenceIsSaidAndWhatIsUnknownRefused) {
  const std::string target = m_Device.Root() / "report.rtf";
  struct Case {
    std::vector<std::string> words;
    int exit;
    std::string said;
  };
  const Case cases[] = {
      {{"--kind", "summary", "--rating", "Nix"}, 1, "The library has no rating \"Nix\". It must be \""},
      {{"--kind", "summary", "--rating", ""}, 1, "The library has no rating"},
      {{"--rating", "Nix"}, 0, "--rating makes no difference to the inspection report."},
      {{"--kind", "major-systems", "--layout", "1 Column"},
       0,
       "--layout makes no difference to the major systems report."},
      {{"--kind", "major-systems", "--skip", "Roof"}, 0, "--skip makes no difference"},
  };
  for (const auto& [words, exit, said] : cases) {
    m_Device.Put("report.rtf", "an older report");
    std::vector<std::string> all{"report", "1001", "--out", target};
    all.insert(all.end(), words.begin(), words.end());
    const tests::CliRun run = Cli(all);
    EXPECT_EQ(run.exit, exit) << said;
    EXPECT_THAT(run.err, HasSubstr(said));
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
    EXPECT_EQ(tests::ContentOf(target) == "an older report", exit != 0) << said;
  }
}

TEST_F(ReportCommandsTest, NamesOfFilesAreTakenByTheirBytes) {
  const std::string name = m_Device.Root() / "\xC9t\xE9.txt";  // as older systems wrote it
  EXPECT_EQ(Out({"text", "1001", "--out", name}), name + "\n");
  EXPECT_TRUE(std::filesystem::exists(name));
  const tests::CliRun device = Cli({"text", "1001", "--out", "\\\xC9t\xE9.txt"});
  EXPECT_EQ(device.exit, 2);
  EXPECT_THAT(device.err, HasSubstr("no UTF-8"));
}

TEST_F(ReportCommandsTest, NoReportReplacesWhatAnybodyMayNeed) {
  m_Device.Open();
  m_Device.RunInVisits("UPDATE Step SET Comments = '***Path=\\evidence***'");
  m_Device.Close();
  for (const char* const name :
       {"evidence", "other.webp", "registry.toml", "inspector.log", "page-records/7.toml",
        "My Documents/Inspection_Data.cdb.before-5.0", "My Documents/Template_Data.cdb.before-import-2",
        "My Documents/Inspection_Data.cdb"}) {
    const std::filesystem::path file = m_Device.Root() / name;
    if (!std::filesystem::exists(file)) m_Device.Put(name, "needed");
    const std::string before = tests::ContentOf(file);
    const tests::CliRun run = Cli({"text", "1001", "--out", file});
    EXPECT_EQ(run.exit, 1) << name;
    EXPECT_THAT(run.err, HasSubstr("Give the report another name.")) << name;
    EXPECT_TRUE(tests::ContentOf(file) == before) << name;
  }
}

TEST_F(ReportCommandsTest, PagesOfAnotherInspectionAreKeptUnlessYesIsSaid) {
  const std::string folder = m_Device.Root() / "pages";
  for (int n = 0; n < 2; ++n) EXPECT_EQ(Out({"html", "1001", "--out", folder}), folder + "\n");
  const tests::CliRun other = Cli({"html", "1000", "--out", folder});
  EXPECT_EQ(other.exit, 1);
  EXPECT_THAT(other.err, HasSubstr("already holds the pages of another inspection"));
  EXPECT_THAT(tests::ContentOf(folder + "/inspection.htm"), HasSubstr("Roof"));
  EXPECT_EQ(Cli({"--yes", "html", "1000", "--out", folder}).exit, 0);
}

}  // namespace
}  // namespace inspector::cli
