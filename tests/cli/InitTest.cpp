// "init" on a device that has nothing, with the starter library and the sample visit as they are shipped.
#include <nlohmann/json.hpp>

#include <fstream>

#include "CommandLineFixture.h"
#include "support/Shell.h"

namespace inspector::cli {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;

class InitTest : public ::testing::Test {
protected:
  static void SetUpTestSuite() { tests::LeaveTheTerminal(); }

  tests::CliRun Cli(std::vector<std::string> words) {
    words.insert(words.begin(), {"--home", Home()});
    return tests::RunWords(std::move(words));
  }
  json Json(std::vector<std::string> words) {
    words.push_back("--json");
    const tests::CliRun run = Cli(std::move(words));
    EXPECT_EQ(run.exit, 0) << run.err;
    return json::parse(run.out);
  }
  std::filesystem::path Home() const { return m_Folder / "device"; }
  // Every file of the device but the locks, which say nothing.
  std::map<std::string, std::string> Files() const {
    auto files = tests::FilesBelow(Home());
    std::erase_if(files, [](const auto& file) { return file.first.ends_with(".lock"); });
    return files;
  }

  tests::TemporaryFolder m_Folder;
};

TEST_F(InitTest, WithoutDatabasesEveryCommandSaysHowToGetThem) {
  const tests::CliRun run = Cli({"list"});
  EXPECT_EQ(run.exit, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_THAT(run.err, HasSubstr("\"inspector-cli init\" creates"));
}

TEST_F(InitTest, MakesWhatIsMissingAndNeverOverwrites) {
  const tests::CliRun first = Cli({"init"});
  EXPECT_EQ(first.exit, 0) << first.err;
  EXPECT_EQ(first.err, "");
  EXPECT_THAT(first.out, HasSubstr("Added the starter library\n"));
  EXPECT_EQ(Json({"list"}).size(), 1U);
  EXPECT_EQ(Json({"list"})[0]["id"], 1000);
  EXPECT_EQ(Cli({"new"}).out, "1001\n");
  EXPECT_EQ(Json({"types"}).size(), 4U);
  // The options of the library, not those that a new database begins with.
  EXPECT_EQ(Cli({"options", "ReportFontName", "BlankLineBetweenComments", "DefaultPictCardPath"}).out,
            "ReportFontName=Arial\nBlankLineBetweenComments=TRUE\nDefaultPictCardPath=\\Storage Card\\\n");
  for (const std::string name : {"FinePrint", "DefinitionOfTerms", "FooterText", "SummaryDisclaimer"})
    EXPECT_NE(Cli({"options", name}).out, name + "=\n");
  EXPECT_EQ(Cli({"options", "ReportFontName=Times New Roman"}).exit, 0);

  const auto before = Files();
  const tests::CliRun second = Cli({"init"});
  EXPECT_EQ(second.exit, 0);
  EXPECT_EQ(second.out, "");
  EXPECT_EQ(Files(), before) << "not a byte is touched";

  // One of the two files lost: only that one comes anew, and the library stays as the office has it.
  std::filesystem::remove(Home() / "My Documents/Inspection_Data.cdb");
  const tests::CliRun third = Cli({"init"});
  EXPECT_EQ(third.exit, 0) << third.err;
  EXPECT_THAT(third.out, HasSubstr("Inspection_Data.cdb"));
  EXPECT_EQ(third.out.find("library"), std::string::npos);
  EXPECT_EQ(Cli({"options", "ReportFontName"}).out, "ReportFontName=Times New Roman\n");
}

TEST_F(InitTest, AnEmptyLibraryIsFilledButSetOptionsStay) {
  ASSERT_EQ(Cli({"init"}).exit, 0);
  ASSERT_EQ(Cli({"options", "FooterText=Ours"}).exit, 0);
  const std::filesystem::path none = Home() / "none";
  std::filesystem::create_directories(none);
  std::ofstream(none / "empty.toml") << "# nothing\n";
  ASSERT_EQ(Cli({"library", "import", none.string()}).exit, 0);
  ASSERT_EQ(Json({"types"}).size(), 0U);
  const tests::CliRun run = Cli({"init"});
  EXPECT_EQ(run.exit, 0) << run.err;
  EXPECT_EQ(Json({"types"}).size(), 4U);
  EXPECT_EQ(Cli({"options", "FooterText"}).out, "FooterText=Ours\n");
}

TEST_F(InitTest, SampleVisitIsAddedOnceAndComplete) {
  const tests::CliRun run = Cli({"init", "--sample"});
  EXPECT_EQ(run.exit, 0) << run.err;
  EXPECT_THAT(run.out, HasSubstr("inspection 1000\n"));
  const json inspections = Json({"list"});
  ASSERT_EQ(inspections.size(), 1U) << "the first, empty inspection was taken";
  EXPECT_NE(inspections[0]["client"], "");

  tests::Shell visits(Home() / "My Documents/Inspection_Data.cdb");
  EXPECT_EQ(
      visits.Ask("SELECT sum(InspectResult > '') >= 100, sum(Comments > '') >= 60, sum(instr(Materials, "
                 "'Other:') > 0) >= 1, sum(instr(Comments, '***') > 0) >= 8 FROM Step"),
      "1|1|1|1");
  EXPECT_EQ(visits.Ask("SELECT Comments FROM Step WHERE instr(Comments, '^')"), "")
      << "a gap that nobody filled";
  EXPECT_EQ(visits.Ask("SELECT CategoryTitle FROM Category WHERE NOT CompleteFlag AND NOT NotPresentFlag"),
            "");
  EXPECT_EQ(visits.Ask("SELECT StepTitle FROM Step JOIN Category USING (CategoryID) WHERE NOT NotPresentFlag "
                       "AND ifnull(InspectResult, '') = ''"),
            "");
  EXPECT_NE(Cli({"owner", "name"}).out, "name=\n");
  EXPECT_EQ(Cli({"report", "1000", "--layout", "4 Column", "--out", m_Folder / "visit.rtf"}).exit, 0);
  EXPECT_THAT(tests::ContentOf(m_Folder / "visit.rtf"), HasSubstr("describes the condition of the visible"));

  int photographs = 0;
  for (const auto& [name, content] : Files()) {
    if (!name.ends_with(".jpg") || name.find("Storage Card") == std::string::npos) continue;
    // A JPEG's frame header (FF C0 to FF C2) has height and width, two bytes each, behind length and
    // precision.
    std::size_t at = std::string::npos;
    for (const char kind : {'\xC0', '\xC1', '\xC2'})
      at = std::min(at, content.find({'\xFF', kind, '\0', '\x11'}));
    ASSERT_NE(at, std::string::npos) << name;
    const auto number = [&](std::size_t offset) {
      return static_cast<unsigned char>(content[at + offset]) << 8 |
             static_cast<unsigned char>(content[at + offset + 1]);
    };
    EXPECT_GE(number(5), 768) << name;
    EXPECT_GE(number(7), 1024) << name;
    ++photographs;
  }
  EXPECT_GE(photographs, 12);

  EXPECT_EQ(Cli({"--yes", "delete", "1000"}).exit, 0);
  const tests::CliRun again = Cli({"init", "--sample"});
  EXPECT_EQ(again.exit, 0);
  EXPECT_THAT(again.out, HasSubstr("was added before"));
  EXPECT_EQ(Json({"list"})[0]["client"], "") << "deleted stays deleted";
}

// Somebody who works with the device wants to see the sample: it comes as one more inspection.
TEST_F(InitTest, SampleVisitLeavesTheWorkOfOthersAlone) {
  ASSERT_EQ(Cli({"init"}).exit, 0);
  ASSERT_EQ(Cli({"set", "1000", "client=A real client"}).exit, 0);
  ASSERT_EQ(Cli({"owner", "name=A real inspector"}).exit, 0);
  ASSERT_EQ(Cli({"options", "InspectorEntry=A real inspector; 7"}).exit, 0);
  const tests::CliRun run = Cli({"init", "--sample"});
  EXPECT_THAT(run.out, HasSubstr("inspection 1001\n")) << run.err;
  EXPECT_EQ(Json({"list"})[0]["client"], "A real client");
  EXPECT_EQ(Json({"list"})[0]["type"], "");
  EXPECT_EQ(Cli({"owner", "name"}).out, "name=A real inspector\n");
  EXPECT_EQ(Cli({"options", "InspectorEntry"}).out, "InspectorEntry=A real inspector; 7\n");
}

// What ./run asks for, also on a device that was left half-way or only looked at.
TEST_F(InitTest, SampleVisitIfUnusedIsForNobodysDevice) {
  ASSERT_EQ(Cli({"list"}).exit, 1) << "leaves a registry and no databases";
  ASSERT_EQ(Cli({"init"}).exit, 0);
  ASSERT_EQ(Cli({"set", "1000", "notes=Ask about the roof."}).exit, 0);
  EXPECT_EQ(Cli({"init", "--sample-if-unused"}).out, "");
  ASSERT_EQ(Cli({"set", "1000", "notes="}).exit, 0);
  EXPECT_THAT(Cli({"init", "--sample-if-unused"}).out, HasSubstr("inspection 1000\n"));
  ASSERT_EQ(Cli({"--yes", "delete", "1000"}).exit, 0);
  EXPECT_EQ(Cli({"init", "--sample-if-unused"}).out, "");
  EXPECT_EQ(Json({"list"})[0]["client"], "") << "deleted stays deleted";
}

// A library that the visit does not fit: nothing of the sample's may end up on the reports.
TEST_F(InitTest, SampleVisitThatDoesNotFitLeavesNothing) {
  const std::string ours = m_Folder / "ours";
  ASSERT_EQ(Cli({"init"}).exit, 0);
  std::filesystem::create_directories(ours);
  std::ofstream(ours + "/types.toml")
      << "[[InspectionType]]\nID = 1\nInspectionType = \"Full House Inspection\"\n";
  ASSERT_EQ(Cli({"library", "import", ours}).exit, 0);
  const tests::CliRun run = Cli({"init", "--sample-if-unused"});
  EXPECT_EQ(run.exit, 0);
  EXPECT_NE(run.err, "");
  EXPECT_EQ(Cli({"init", "--sample"}).exit, 1);
  EXPECT_EQ(Cli({"owner", "name"}).out, "name=\n");
  EXPECT_EQ(Cli({"options", "InspectorEntry"}).out, "InspectorEntry=\n");
  EXPECT_EQ(Json({"list"})[0]["client"], "");
}

TEST_F(InitTest, LibraryGoesOutAndComesBackTheSame) {
  ASSERT_EQ(Cli({"init"}).exit, 0);
  const std::string out = m_Folder / "out";
  EXPECT_EQ(Cli({"library", "export", out}).exit, 0);
  EXPECT_EQ(Cli({"library", "import", out}).exit, 0);
  EXPECT_EQ(Json({"types"}).size(), 4U);
  EXPECT_EQ(Cli({"library", "import", m_Folder / "none"}).exit, 1);
  EXPECT_EQ(Json({"types"}).size(), 4U);
}

}  // namespace
}  // namespace inspector::cli
