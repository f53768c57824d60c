#include "CommandLineFixture.h"
#include "cli/Command.h"

namespace inspector::cli {
namespace {

using WordsTest = CommandLineTest;

TEST_F(WordsTest, WrongUsageIsTwoAndSaysWhy) {
  for (const std::string typed :
       {"", "walk", "list extra", "list --walk", "--walk list", "delete", "delete one", "categories 0x3E8",
        "categories +1000", "--home", "--home ''", "options Walk=1", "owner colour=red", "library burn /"})
    ExpectRefused(2, typed);
}

TEST_F(WordsTest, HelpAndPagesHoldEveryCommand) {
  const std::string help = RunTyped("--help").out;
  const std::string man = RunTyped("man").out;
  const std::string completion = RunTyped("completion").out;
  const auto escaped = [](const std::string& name) {
    return ToUtf8(device::ReplaceAll(FromUtf8(name), u"-", u"\\-"));
  };
  EXPECT_THAT(man, StartsWith(".TH INSPECTOR\\-CLI 1\n"));
  for (const Command& command : AllCommands()) {
    const CliRun own = RunTyped(command.name + " --help");
    EXPECT_EQ(own.exit, 0) << command.name;
    EXPECT_THAT(help, HasSubstr(command.name));
    EXPECT_THAT(own.out, HasSubstr(command.summary));
    EXPECT_THAT(completion, HasSubstr("    " + command.name + ":*) COMPREPLY="));
    EXPECT_THAT(man, HasSubstr("\n.B " + escaped(command.name)));
    for (const Argument& argument : command.arguments) EXPECT_THAT(own.out, HasSubstr(argument.name));
    for (const CommandOption& option : command.options) {
      EXPECT_THAT(own.out, HasSubstr(option.name));
      EXPECT_THAT(completion, HasSubstr(" " + option.name));
      EXPECT_THAT(man, HasSubstr("\n" + escaped(option.name)));
    }
  }
  EXPECT_EQ(RunTyped("--version").exit, 0);
}

TEST_F(WordsTest, HomeMayStandAnywhereAndComesFromTheEnvironment) {
  const std::string home = m_Device.Root();
  const std::string listed = Out("list");
  EXPECT_EQ(RunTyped("list --home " + home).out, listed);
  EXPECT_EQ(RunTyped("--home=" + home + " list").out, listed);
  // A folder may be called like a command.
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(m_Device.Root());
  std::filesystem::create_directory_symlink(home, "new");
  EXPECT_EQ(RunTyped("--home new list").out, listed);
  std::filesystem::current_path(before);

  setenv("INSPECTOR_HOME", home.c_str(), 1);
  EXPECT_EQ(RunTyped("list").out, listed);
  unsetenv("INSPECTOR_HOME");
  setenv("XDG_DATA_HOME", (m_Device.Root() / "xdg").c_str(), 1);
  std::filesystem::create_directories(m_Device.Root() / "xdg");
  std::filesystem::create_directory_symlink(home, m_Device.Root() / "xdg/inspector");
  EXPECT_EQ(RunTyped("list").out, listed);
  unsetenv("XDG_DATA_HOME");
}

TEST_F(WordsTest, NothingFailsWithoutAWord) {
  Out("new --type House");
  Out("steps 1000");
  Between([this] { m_Device.RunInLibrary("DROP TABLE RatingChoices; DROP TABLE CategoryStep"); });
  for (const std::string typed : {"rate 1000 Good", "steps 1001", "defaults 1001 --yes"}) {
    const CliRun run = Cli(typed);
    EXPECT_EQ(run.exit, 1) << typed;
    EXPECT_THAT(run.err, HasSubstr("RatingChoices")) << typed;
  }
  // Nor does one whose fault was passed over end as if nothing had been.
  Between([this] {
    m_Device.RunInLibrary("DROP TABLE InspectionType; CREATE VIEW InspectionType AS SELECT * FROM Gone");
  });
  const CliRun run = Cli("types");
  EXPECT_EQ(run.exit, 1);
  EXPECT_EQ(run.out, "ID  NAME  LAYOUT\n");
  EXPECT_THAT(run.err, HasSubstr("Template_Data.cdb"));
}

TEST_F(WordsTest, CheckLooksAtBothDatabases) {
  const std::string templates = (m_Device.Root() / "My Documents/Template_Data.cdb").string() + ": sound\n";
  const std::string inspections = m_Device.Root() / "My Documents/Inspection_Data.cdb";
  EXPECT_EQ(Out("check"), templates + inspections + ": sound\n");
  std::filesystem::resize_file(inspections, 8192);
  const CliRun cut = Cli("check");
  EXPECT_EQ(cut.exit, 1);
  EXPECT_THAT(cut.out, AllOf(HasSubstr(templates), HasSubstr(inspections + " is damaged: it has been cut")));
}

// An older structure is neither asked about nor upgraded, and what is wrong is named one by one.
TEST_F(WordsTest, CheckNamesWhatIsWrongAndChangesNothing) {
  Out("new --type House");
  Out("steps 1000");
  Between([this] {
    m_Device.RunInLibrary(
        "UPDATE Options SET DataVersion = '4.1'; ALTER TABLE Pickers RENAME TO Moved; CREATE VIEW Pickers AS "
        "SELECT * FROM Moved");
    m_Device.RunInVisits(
        "INSERT INTO Inspection (InspectionID) VALUES (1001), (NULL), (NULL); INSERT INTO Step (StepID) "
        "VALUES (1000), (2000); UPDATE UniqueID SET NextID = 'many' WHERE TableName = 'Inspection'; DELETE "
        "FROM UniqueID WHERE TableName = 'InspectionCategory'");
  });
  const std::string folder = m_Device.Root() / "My Documents/";
  const auto before = FilesBelow(folder);
  const CliRun run = Cli("check --yes");
  EXPECT_EQ(run.exit, 1);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out,
            folder +
                "Template_Data.cdb: faulty\n"
                "  a view in place of the table: Pickers\n"
                "  DataVersion is 4.1, not 5.0\n" +
                folder +
                "Inspection_Data.cdb: faulty\n"
                "  repeated key in table: Inspection, InspectionID 1001 stands in 2 rows\n"
                "  repeated key in table: Step, StepID 1000 stands in 2 rows\n"
                "  no whole number in table: UniqueID, the counter of Inspection holds many\n"
                "  missing counter in table: UniqueID, InspectionCategory; the highest CategoryID is 1004\n"
                "  counter too low in table: UniqueID, Step is at 1002; the highest StepID is 2000\n"
                "  note: in table Step, rows that belong to no category and are shown nowhere: 2\n");
  EXPECT_EQ(FilesBelow(folder), before);
}

TEST_F(WordsTest, CheckNotesOrphansAndTellsALockFromAFault) {
  Out("new --type House");
  const std::string file = m_Device.Root() / "My Documents/Inspection_Data.cdb: ";
  Between([&] { m_Device.RunInVisits("INSERT INTO Step (StepID, CategoryID) VALUES (1, 7), (2, NULL)"); });
  EXPECT_THAT(Out("check"),
              HasSubstr(file + "sound\n  note: in table Step, rows that belong to no category"));
  Shell other = m_Device.Visits();
  other.Run("PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE");
  const CliRun run = Cli("check");
  EXPECT_EQ(run.exit, 1);
  EXPECT_THAT(run.out, HasSubstr(file + "not checked\n"));
}

// Counters as an older program or damage may leave them: nothing is stored under the key of another row, and
// the way out that the message names leads out.
TEST_F(WordsTest, KeysInUseAreRefusedUntilTheCountersAreRepaired) {
  Out("new --type House");
  Out("steps 1000");
  Out("new --type House");
  const std::string counter = "UPDATE UniqueID SET NextID = ";
  const std::pair<std::string, const char*> kDamages[] = {
      {counter + "999 WHERE TableName = 'Inspection'", "new"},
      {"DELETE FROM UniqueID WHERE TableName = 'InspectionCategory'", "new --type House"},
      {"DELETE FROM UniqueID WHERE TableName = 'Step'", "steps 1001"},
      {counter + "NULL WHERE TableName = 'Inspection'; INSERT INTO Category (CategoryID, InspectionID) "
                 "VALUES (4000, 1)",
       "new"},
      {counter + "'many' WHERE TableName = 'Step'; UPDATE Step SET StepID = 1 WHERE StepID = 1000",
       "steps 1005"},
      {counter + "2147483647 WHERE TableName = 'Inspection'; INSERT INTO Inspection (InspectionID) VALUES "
                 "(-2147483648)",
       "new"}};
  for (const auto& [damage, typed] : kDamages) {
    SCOPED_TRACE(damage);
    Between([&, &damage = damage] { m_Device.RunInVisits(damage); });
    const Text counts = RowCounts();
    ExpectRefused(1, typed,
                  "Nothing was added, and nothing was lost. Choose \"Repair counters\" in \"Tools\", or run "
                  "\"inspector-cli check --repair\", and do it again.");
    EXPECT_EQ(RowCounts(), counts);
    EXPECT_THAT(Out("check --repair"), HasSubstr("Inspection_Data.cdb: sound\n  set the counter of "));
    Out(typed);
  }
}

}  // namespace
}  // namespace inspector::cli
