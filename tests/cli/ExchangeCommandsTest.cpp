// An inspection from one device to another by the command line.
#include "CommandLineFixture.h"

namespace inspector::cli {
namespace {

class ExchangeCommandsTest : public CommandLineTest {
protected:
  void SetUp() override {
    CommandLineTest::SetUp();
    Out("new --type House number=7/8 client=Ana notes=secret");
    Cli("--yes defaults 1001");
    Out("steps " + InVisits("SELECT CategoryID FROM Category WHERE CategoryTitle = 'Checklist'"));
  }

  const std::string m_File = m_Device.Root() / "house.rtf";
};

TEST_F(ExchangeCommandsTest, HouseTravelsAndIsMerged) {
  const CliRun exported = Cli("export 1001 --out " + m_File);
  EXPECT_EQ(exported.out, m_File + "\n");
  EXPECT_EQ(exported.err, "Not in the file: the private notes and 2 fields of forms.\n");
  const CliRun imported = Cli("import " + m_File);
  EXPECT_EQ(imported.exit, 0);
  EXPECT_EQ(imported.out, "1002\n");
  EXPECT_THAT(imported.err,
              AllOf(StartsWith("Alert: Attempting to open as CE/PPC\nAlert: vtBuffer = \n"
                               "Alert: Brindlecove Export File\xC2\xA4\n"),
                    HasSubstr("\nAlert: vtBuffer = \nAlert: CATEGORY\xC2\xA4"),
                    EndsWith("\nAlert: vtBuffer = \nAlert: \nAlert: Brindlecove Export File\xC2\xA4\n")));
  EXPECT_EQ(Json("staged").dump(),
            R"([{"id":1002,"number":"7/8","client":"Ana","address":"","categories":5,"steps":4}])");
  EXPECT_EQ(
      Out("staged"),
      "ID    NUMBER  CLIENT  ADDRESS  CATEGORIES  STEPS\n1002  7/8     Ana              5           4\n");
  EXPECT_EQ(Out("new"), "1003\n");
  const std::string said =
      "Added: 5 categories, 4 steps.\nLeft out: the header of the import (Ana, Doc # 7/8).\n";
  EXPECT_EQ(Out("merge 1003 1002 --dry-run"), said);
  EXPECT_THAT(Outline(1003), IsEmpty());
  EXPECT_EQ(Out("merge 1003 1002"), said);
  const auto steps = [](std::vector<Text> outline) {  // without the fields
    std::erase_if(outline, [](const Text& line) { return line.find(u'=') != Text::npos; });
    return outline;
  };
  EXPECT_EQ(steps(Outline(1003)), steps(Outline(1001)));
  EXPECT_EQ(Out("staged --json"), "[]\n");
  ExpectRefused(1, "merge 1003 1002", "There is no imported inspection 1002");

  Cli("import " + m_File);
  Cli("import " + m_File);
  ExpectRefused(1, "discard 4711 --yes", "There is no imported inspection 4711.");
  ExpectRefused(1, "discard 1004", "Caution: Delete this imported inspection?");
  EXPECT_EQ(Cli("discard 1004 --yes").exit, 0);
  EXPECT_EQ(Json("staged").dump(),
            R"([{"id":1005,"number":"7/8","client":"Ana","address":"","categories":5,"steps":4}])");
  EXPECT_EQ(InVisits("SELECT count(*) FROM MERGE_Step JOIN MERGE_Category USING (CategoryID)"), "4");
  EXPECT_EQ(InVisits("SELECT count(*) FROM MERGE_Step"), "4");
}

TEST_F(ExchangeCommandsTest, FilesGoWhereTheyAreToldAndReplaceOnlyWhatTheyMay) {
  const std::string suggested = m_Device.Root() / "My Documents/Export_7_8.rtf";
  EXPECT_EQ(Cli("export 1001").out, suggested + "\n");
  EXPECT_EQ(Cli("export 1001").err,
            "Save As: " + suggested +
                " already exists. Do you want to replace it? [no; --yes answers yes]\nNothing was "
                "exported.\n");
  EXPECT_EQ(Cli("export 1001 --yes").out, suggested + "\n");
  EXPECT_EQ(Cli("export 1001 --out \\\\Exports\\\\a.rtf").out, m_Device.Root() / "Exports/a.rtf\n");
  ExpectRefused(2, "export 1001 --out ''", "The file after --out has no name.");
  ExpectRefused(1, "export 4711 --out " + m_File, "There is no inspection 4711.");
  ExpectRefused(2, "import ''", "The file to import has no name.");
  ExpectRefused(1, "import " + m_File, "is not there.");
  m_Device.Put("house.rtf", "Brindlecove Export File\xA4\xA7\x1B[2J\xA7");
  ExpectRefused(1, "import " + m_File, "Alert: \x1B[2J\n");  // byte for byte: no terminal
}

TEST_F(ExchangeCommandsTest, ValuesThatCannotArriveNeedAYes) {
  InVisits("UPDATE Step SET Comments = '\xC5\x81'");
  ExpectRefused(1, "export 1001 --out " + m_File, "Write the file as it stands? [no; --yes answers yes]");
  EXPECT_FALSE(std::filesystem::exists(m_File));
  EXPECT_EQ(Cli("export 1001 --yes --out " + m_File).exit, 0);
}

}  // namespace
}  // namespace inspector::cli
