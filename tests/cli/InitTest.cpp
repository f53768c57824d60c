// "init" on a device that has nothing, with the starter library and the sample visit as they are shipped.
#include "CommandLineFixture.h"
#include "device/PictureHeader.h"

namespace inspector::cli {
namespace {

class InitTest : public CliTest {
protected:
  std::filesystem::path Home() const override { return m_Folder / "device"; }
  // Every file of the device but the locks, which say nothing.
  std::map<std::string, std::string> Files() const {
    auto files = FilesBelow(Home());
    std::erase_if(files, [](const auto& file) { return file.first.ends_with(".lock"); });
    return files;
  }
  std::string FirstClient() const { return Json("list")[0]["client"]; }

  TemporaryFolder m_Folder;
};

TEST_F(InitTest, MakesWhatIsMissingAndNeverOverwrites) {
  EXPECT_THAT(Out("init"), HasSubstr("Added the starter library\n"));
  EXPECT_EQ(Json("list").size(), 1U);
  EXPECT_EQ(Json("list")[0]["id"], 1000);
  EXPECT_EQ(Out("new"), "1001\n");
  EXPECT_EQ(Json("types").size(), 4U);
  // The options of the library, not those that a new database begins with.
  EXPECT_EQ(Out("options ReportFontName BlankLineBetweenComments DefaultPictCardPath"),
            "ReportFontName=Arial\nBlankLineBetweenComments=TRUE\nDefaultPictCardPath=\\Storage Card\\\n");
  Out("options 'ReportFontName=Times New Roman'");

  const auto before = Files();
  EXPECT_EQ(Out("init"), "");
  EXPECT_EQ(Files(), before) << "not a byte is touched";

  // One of the two files lost: only that one comes anew, and the library stays as the office has it.
  std::filesystem::remove(Home() / "My Documents/Inspection_Data.cdb");
  EXPECT_THAT(Out("init"), AllOf(HasSubstr("Inspection_Data.cdb"), Not(HasSubstr("library"))));
  EXPECT_EQ(Out("options ReportFontName"), "ReportFontName=Times New Roman\n");
}

TEST_F(InitTest, AnEmptyLibraryIsFilledButSetOptionsStay) {
  Out("init");
  Out("options FooterText=Ours");
  m_Folder.Put("none/empty.toml", "# nothing\n");
  Cli("library import " + (m_Folder / "none").string());
  ASSERT_EQ(Json("types").size(), 0U);
  EXPECT_EQ(Cli("init").exit, 0);
  EXPECT_EQ(Json("types").size(), 4U);
  EXPECT_EQ(Out("options FooterText"), "FooterText=Ours\n");
  EXPECT_EQ(Cli("library import " + (m_Folder / "missing").string()).exit, 1);
  for (const std::string way : {"export ", "import "})
    EXPECT_EQ(Cli("library " + way + (m_Folder / "out").string()).exit, 0) << way;
  EXPECT_EQ(Json("types").size(), 4U);
}

TEST_F(InitTest, SampleVisitIsAddedOnceAndComplete) {
  EXPECT_THAT(Cli("init --sample").out, HasSubstr("inspection 1000\n"));
  ASSERT_EQ(Json("list").size(), 1U) << "the first, empty inspection was taken";
  EXPECT_NE(FirstClient(), "");

  Shell visits(Home() / "My Documents/Inspection_Data.cdb");
  EXPECT_EQ(
      visits.Ask("SELECT sum(InspectResult > '') >= 100, sum(Comments > '') >= 60, sum(instr(Materials, "
                 "'Other:') > 0) >= 1, sum(instr(Comments, '***') > 0) >= 8 FROM Step"),
      "1|1|1|1");
  EXPECT_EQ(
      visits.Ask(
          "SELECT Comments FROM Step WHERE instr(Comments, '^') UNION SELECT CategoryTitle FROM Category "
          "WHERE NOT CompleteFlag AND NOT NotPresentFlag UNION SELECT StepTitle FROM Step JOIN Category "
          "USING (CategoryID) WHERE NOT NotPresentFlag AND ifnull(InspectResult, '') = ''"),
      "")
      << "a gap that nobody filled";
  EXPECT_NE(Out("owner name"), "name=\n");
  Cli("report 1000 --layout '4 Column' --out " + (m_Folder / "visit.rtf").string());
  EXPECT_THAT(ContentOf(m_Folder / "visit.rtf"), HasSubstr("describes the condition of the visible"));

  device::HostFiles host;
  const auto photographs = std::ranges::count_if(Files(), [&](const auto& file) {
    const auto size = device::ReadPictureSize(host, Home() / file.first);
    return file.first.starts_with("Storage Card") && size && std::min(size->width, size->height) >= 768;
  });
  EXPECT_GE(photographs, 12) << "large enough to be looked at";

  Cli("--yes delete 1000");
  EXPECT_THAT(Cli("init --sample").out, HasSubstr("was added before"));
  EXPECT_EQ(FirstClient(), "") << "deleted stays deleted";
}

// Somebody who works with the device wants to see the sample: it comes as one more inspection.
TEST_F(InitTest, SampleVisitLeavesTheWorkOfOthersAlone) {
  Out("init");
  Out("set 1000 'client=A real client'");
  Out("owner 'name=A real inspector'");
  Out("options 'InspectorEntry=A real inspector; 7'");
  EXPECT_THAT(Cli("init --sample").out, HasSubstr("inspection 1001\n"));
  EXPECT_EQ(FirstClient(), "A real client");
  EXPECT_EQ(Json("list")[0]["type"], "");
  EXPECT_EQ(Out("owner name"), "name=A real inspector\n");
  EXPECT_EQ(Out("options InspectorEntry"), "InspectorEntry=A real inspector; 7\n");
}

// What ./run asks for, also on a device that was left half-way or only looked at.
TEST_F(InitTest, SampleVisitIfUnusedIsForNobodysDevice) {
  ExpectRefused(1, "list", "There is no folder");
  EXPECT_FALSE(std::filesystem::exists(Home())) << "a name that was mistyped";
  std::filesystem::create_directory(Home());
  ExpectRefused(1, "list", "\"inspector-cli init\" creates");  // leaves a registry and no databases
  Out("init");
  Out("set 1000 'notes=Ask about the roof.'");
  EXPECT_EQ(Cli("init --sample-if-unused").out, "");
  Out("set 1000 notes=");
  EXPECT_THAT(Cli("init --sample-if-unused").out, HasSubstr("inspection 1000\n"));
  Cli("--yes delete 1000");
  EXPECT_EQ(Cli("init --sample-if-unused").out, "");
  EXPECT_EQ(FirstClient(), "") << "deleted stays deleted";
}

// A library that the visit does not fit: nothing of the sample's may end up on the reports.
TEST_F(InitTest, SampleVisitThatDoesNotFitLeavesNothing) {
  Out("init");
  m_Folder.Put("ours/types.toml", "[[InspectionType]]\nID = 1\nInspectionType = \"Full House Inspection\"\n");
  Cli("library import " + (m_Folder / "ours").string());
  const CliRun run = Cli("init --sample-if-unused");
  EXPECT_EQ(run.exit, 0);
  EXPECT_NE(run.err, "");
  EXPECT_EQ(Cli("init --sample").exit, 1);
  EXPECT_EQ(Out("owner name"), "name=\n");
  EXPECT_EQ(Out("options InspectorEntry"), "InspectorEntry=\n");
  EXPECT_EQ(FirstClient(), "");
}

}  // namespace
}  // namespace inspector::cli
