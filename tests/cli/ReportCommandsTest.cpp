// What the commands for reports take, refuse and say.
#include "CommandLineFixture.h"

namespace inspector::cli {
namespace {

class ReportCommandsTest : public CommandLineTest {
protected:
  void SetUp() override {
    CommandLineTest::SetUp();
    Out("new --type House number=7/8");
    Cli("--yes defaults 1001");
  }
  std::string Report() const { return ContentOf(m_Target); }

  const std::string m_Target = m_Device.Root() / "report.rtf";
  const std::string m_Into = " --out " + m_Target + " ";
};

TEST_F(ReportCommandsTest, ReportGoesWhereItIsToldAndReplacesOnlyWhatItMay) {
  const std::filesystem::path target = m_Device.Root() / "My Documents/Inspection_7_8.rtf";
  EXPECT_EQ(Out("report 1001 --layout '4 Column'"), target.string() + "\n");
  const std::string content = ContentOf(target);
  EXPECT_THAT(content, StartsWith("{\\rtf1"));
  ExpectRefused(1, "report 1001 --layout '3 Column'", "already exists");
  EXPECT_EQ(ContentOf(target), content);
  EXPECT_EQ(Cli("report 1001 --layout '3 Column' --yes").exit, 0);
  EXPECT_NE(ContentOf(target), content);
  for (const auto& [place, says] : {std::pair{target.string() + "/below", "Inspection_7_8.rtf"},
                                    {m_Device.Root().string(), "Give the file a name in that folder"}})
    ExpectRefused(1, "report 1001 --layout '4 Column' --out '" + place + "'", says);
}

TEST_F(ReportCommandsTest, ReportIsOfTheKindThatIsAskedFor) {
  EXPECT_EQ(Out("report 1001" + m_Into + "--kind summary"), m_Target + "\n");
  EXPECT_THAT(Report(), HasSubstr("SUMMARY REPORT"));
  ExpectRefused(2, "report 1001" + m_Into + "--layout '5 Column'");
  ExpectRefused(2, "report 1001" + m_Into + "--kind poem");
  ExpectRefused(1, "report 4711" + m_Into + "--layout '4 Column'");
}

TEST_F(ReportCommandsTest, ReportSkipsCategoriesByTitleOrKey) {
  InVisits("UPDATE Step SET Comments = 'Seen.'");
  const std::string cellar = InVisits("SELECT CategoryID FROM Category WHERE CategoryTitle = 'Cellar'");
  const auto holds = [&](const std::string& skipped) {
    Out("report 1001 --layout '1 Column'" + m_Into + skipped);
    const std::string report = Report();
    return std::pair(report.find("Gutters") != report.npos, report.find("Sump") != report.npos);
  };
  EXPECT_EQ(holds(""), std::pair(true, true));
  EXPECT_EQ(holds("--skip Attic " + cellar), std::pair(true, false));
  EXPECT_EQ(holds("--skip Roof --skip " + cellar), std::pair(false, false));
  ExpectRefused(1, "report 1001 --layout '1 Column'" + m_Into + "--skip roof", "no category \"roof\"");
}

TEST_F(ReportCommandsTest, WhatMakesNoDifferenceIsSaidAndWhatIsUnknownRefused) {
  const std::tuple<const char*, int, const char*> kCases[] = {
      {"--kind summary --rating Nix", 1, "nor the visit has a rating \"Nix\". It must be \""},
      {"--kind summary --rating ''", 1, "nor the visit has a rating \"\""},
      {"--rating Nix", 0, "--rating makes no difference to the inspection report."},
      {"--kind major-systems --layout '1 Column'", 0,
       "--layout makes no difference to the major systems report."},
      {"--kind major-systems --skip Roof", 0, "--skip makes no difference"}};
  for (const auto& [options, exit, says] : kCases) {
    m_Device.Put("report.rtf", "an older report");
    const CliRun run = Cli("report 1001" + m_Into + options);
    EXPECT_EQ(run.exit, exit) << says;
    EXPECT_THAT(run.err, HasSubstr(says));
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
    EXPECT_EQ(Report() == "an older report", exit != 0) << says;
  }
}

TEST_F(ReportCommandsTest, NamesOfFilesAreTakenByTheirBytes) {
  const std::string name = m_Device.Root() / "\xC9t\xE9.txt";  // as older systems wrote it
  EXPECT_EQ(Out("text 1001 --out " + name), name + "\n");
  EXPECT_TRUE(std::filesystem::exists(name));
  ExpectRefused(2, "text 1001 --out \\\xC9t\xE9.txt", "another encoding");
}

TEST_F(ReportCommandsTest, NoReportReplacesWhatAnybodyMayNeed) {
  InVisits("UPDATE Step SET Comments = '***Path=\\evidence***'");
  for (const char* const name :
       {"evidence", "other.webp", "registry.toml", "inspector.log", "page-records/7.toml",
        "My Documents/Inspection_Data.cdb.before-5.0", "My Documents/Template_Data.cdb.before-import-2",
        "My Documents/Inspection_Data.cdb", "My Documents/Old.cdb"}) {
    const std::filesystem::path file = m_Device.Root() / name;
    if (!std::filesystem::exists(file)) m_Device.Put(name, std::string("SQLite format 3\0 needed", 24));
    const std::string before = ContentOf(file);
    ExpectRefused(1, "text 1001 --out '" + file.string() + "'", "Choose another name.");
    EXPECT_TRUE(ContentOf(file) == before) << name;
  }
  ExpectRefused(1, "text 1001 --out '\\HousePhotoH-1.JPG'", "has the name of a picture");
  for (const char* const leadsTo : {"My Documents/Inspection_Data.cdb-wal", "Pictures/new.jpg"}) {
    const std::filesystem::path link = m_Device.Root() / "link.txt";
    std::filesystem::create_symlink(m_Device.Root() / leadsTo, link);
    ExpectRefused(1, "text 1001 --out '" + link.string() + "'", "Choose another name.");
    std::filesystem::remove(link);
  }
}

TEST_F(ReportCommandsTest, PagesOfAnotherInspectionAreKeptUnlessYesIsSaid) {
  const std::string folder = m_Device.Root() / "pages";
  for (int n = 0; n < 2; ++n) EXPECT_EQ(Out("html 1001 --out " + folder), folder + "\n");
  ExpectRefused(1, "html 1000 --out " + folder, "already holds the pages of another inspection");
  EXPECT_THAT(ContentOf(folder + "/inspection.htm"), HasSubstr("Roof"));
  EXPECT_EQ(Cli("--yes html 1000 --out " + folder).exit, 0);
}

}  // namespace
}  // namespace inspector::cli
