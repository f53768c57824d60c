// From registry and files to two open databases, or to a clear refusal.
#include "data/StartUp.h"

#include <sys/stat.h>

#include "StoreTest.h"
#include "data/FreshDatabase.h"

namespace inspector::tests {
namespace {

using data::kDefaultInspectionPath;
using data::kDefaultTemplatePath;
using data::kOptionsKey;
using data::kStartUpKey;
using data::OptionsSaved;
using device::DatabasePaths;

class StartUpTest : public StoreTest {
protected:
  void SetUp() override { CreateFresh(); }
  Text Registered(TextView key, const char16_t* value) {
    return m_Registry.Read(Text(key), value).value_or(u"none");
  }
  void ExpectReady() { EXPECT_EQ(Start().result, StartUpResult::Ready) << m_Prompts.Last(); }
  void ExpectRefused(const std::string& says) {
    EXPECT_EQ(Start().result, StartUpResult::Refused);
    EXPECT_THAT(m_Prompts.Last(), HasSubstr(says));
  }
};

TEST_F(StartUpTest, AMissingFileIsAskedForUntilBothAreThere) {
  const auto moved = m_Folder.Put("elsewhere/Mine.cdb");
  std::filesystem::rename(InspectionFile(), moved);
  const Text typed = FromUtf8(moved.string());
  m_Prompts.QueueDatabasePaths(DatabasePaths{Text(kDefaultTemplatePath), u"\\elsewhere\\missing.cdb"});
  m_Prompts.QueueDatabasePaths(DatabasePaths{u"\\my documents\\template_data.cdb", typed});
  ExpectReady();
  ASSERT_EQ(m_Prompts.DatabaseQuestions().size(), 2u);
  EXPECT_EQ(m_Prompts.DatabaseQuestions()[0].inspectionPath, kDefaultInspectionPath);
  EXPECT_EQ(m_Prompts.DatabaseQuestions()[1].inspectionPath, u"\\elsewhere\\missing.cdb");
  EXPECT_EQ(Registered(kStartUpKey, u"InspectionPath"), typed);
  EXPECT_EQ(Start().workspace->PathsInUse().inspectionPath, typed) << "without asking again";

  std::filesystem::remove(moved);
  m_Prompts.QueueDatabasePaths(std::nullopt);
  ExpectRefused("");
  EXPECT_EQ(Registered(kStartUpKey, u"InspectionPath"), typed);
  EXPECT_TRUE(m_Prompts.Messages().empty());
}

TEST_F(StartUpTest, ARegistryThatCannotBeReadEndsTheStart) {
  for (const auto& [content, says] :
       {std::pair{"no [ toml", "registry.toml"},
        {"'HKEY_USERS\\.Default\\Software\\Pellory\\Inspector' = 1", "is no table"}}) {
    m_Folder.Put("registry.toml", content);
    ExpectRefused(says);
    EXPECT_EQ(ContentOf(m_Folder / "registry.toml"), content);
  }
}

TEST_F(StartUpTest, ASecondInspectorIsRefusedWhileTheFirstWorks) {
  std::filesystem::create_symlink("My Documents/Template_Data.cdb", m_Folder / "other.cdb");
  data::StartUp first = Start();
  ASSERT_EQ(first.result, StartUpResult::Ready);
  ExpectRefused("Another Inspector is working with the database");
  m_Registry.Write(Text(kStartUpKey), u"TemplatePath", u"\\other.cdb");  // the same file under another name
  ExpectRefused("Another Inspector is working with the database");
  first.workspace.reset();
  ExpectReady();  // through the link

  m_Registry.Write(Text(kStartUpKey), u"InspectionPath", u"\\My Documents\\Template_Data.cdb");
  m_Prompts.QueueDatabasePaths(std::nullopt);
  ExpectRefused("Both paths lead to the database");
}

// What stands behind it would be read, and written, one place off.
TEST_F(StartUpTest, ATableWithAGapIsRefused) {
  InVisits("ALTER TABLE Step DROP COLUMN Reserve8");
  ExpectRefused("lacks the column Step.Reserve8");
}

TEST_F(StartUpTest, ExchangedFilesAreToldAndNotMadeAnew) {
  const std::filesystem::path aside = m_Folder / "aside";
  std::filesystem::rename(TemplateFile(), aside);
  std::filesystem::rename(InspectionFile(), TemplateFile());
  std::filesystem::rename(aside, InspectionFile());
  ExpectRefused(
      "Template_Data.cdb: this file holds inspections, and no templates. The two paths are exchanged");
}

TEST_F(StartUpTest, AFileThatCannotBeUsedIsNamedAndLeftAsItIs) {
  const std::string good = [&] {
    Shell other(InspectionFile());
    other.Run(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 900) INSERT INTO Step "
        "(StepID, Comments) SELECT i, hex(randomblob(40)) FROM n");
    return ContentOf(InspectionFile());
  }();
  const auto with = [&](std::size_t at, const std::string& bytes) {
    return std::string(good).replace(at, bytes.size(), bytes);
  };
  const std::tuple<const char*, std::string, const char*> kCases[] = {
      {"a document", "Dear client, enclosed you find our report. " + std::string(200, '.'), "is no database"},
      {"a few bytes", "SQLite format 3", "is damaged or is no database"},
      {"nothing", "", "is empty"},
      {"a newer format", with(18, "\x03\x03"), "written in a newer file format"},
      {"a newer schema", with(47, "\x05"), "written in a newer file format"},
      {"cut short", good.substr(0, good.size() / 2), "has been cut short"},
      {"a damaged header", with(16, "\x01"), "is damaged or is no database"},
      {"a damaged list of tables", with(100, std::string(300, 'x')), "is damaged or is no database"},
      {"damaged rows", with(good.size() / 2, std::string(20'000, 'x')), "is damaged or is no database"}};
  for (const auto& [what, content, says] : kCases) {
    SCOPED_TRACE(what);
    m_Folder.Put("My Documents/Inspection_Data.cdb", content);
    m_Prompts.Forget();
    ExpectRefused(says);
    EXPECT_EQ(m_Prompts.Messages().size(), 1u);
    EXPECT_THAT(m_Prompts.Last(), ::testing::ContainsRegex("^Error: .*Inspection_Data.cdb"));
    EXPECT_TRUE(ContentOf(InspectionFile()) == content);
    for (const char* const beside : {"-wal", "-shm", "-journal"})
      EXPECT_FALSE(std::filesystem::exists(InspectionFile().string() + beside)) << beside;
  }
}

TEST_F(StartUpTest, AFileThatIsProtectedLockedOrNoneIsNamed) {
  chmod(InspectionFile().c_str(), 0444);
  ExpectRefused("is read-only");
  chmod(InspectionFile().c_str(), 0644);
  {
    Shell other(InspectionFile());
    other.Run("BEGIN EXCLUSIVE");
    ExpectRefused("Another program has locked the database");
  }
  std::filesystem::remove(InspectionFile());
  std::filesystem::create_directory(InspectionFile());
  m_Prompts.QueueDatabasePaths(std::nullopt);
  ExpectRefused("is not a file");
}

TEST_F(StartUpTest, WhatIsMissingFromACurrentFileIsSaid) {
  InVisits("DROP TABLE Field; ALTER TABLE Step DROP COLUMN PictureBefore; DROP TABLE MERGE_Step");
  ExpectReady();
  EXPECT_THAT(m_Prompts.Last(), HasSubstr("missing column in table: Step column: 16; missing table: Field"));
  EXPECT_EQ(m_Faults.Count(), 1);
}

TEST_F(StartUpTest, ProgramsBesideDoNotKeepItFromStarting) {
  Shell writer(TemplateFile());
  writer.Run("PRAGMA journal_mode = WAL; BEGIN IMMEDIATE; UPDATE Options SET StepSpacing = 1");
  Shell reader(InspectionFile());
  reader.Run("BEGIN; SELECT count(*) FROM Step");
  ExpectReady();
  reader.Run("COMMIT");
  EXPECT_TRUE(m_Prompts.Messages().empty());
}

TEST_F(StartUpTest, AJournalThatAKilledProgramLeftIsPlayedBack) {
  // The state after a kill: pages 1 and up already written, the file not yet grown, the journal beside it.
  const std::string before = ContentOf(InspectionFile());
  Shell other(InspectionFile());
  other.Run("PRAGMA cache_size = 1; PRAGMA journal_mode = delete; BEGIN");
  for (int i = 0; i < 40; ++i) other.Run("INSERT INTO Step (Comments) VALUES (hex(randomblob(4000)))");
  const auto copy = m_Folder / "copy.cdb";
  std::filesystem::copy_file(InspectionFile(), copy);
  std::filesystem::copy_file(InspectionFile().string() + "-journal", copy.string() + "-journal");
  other.Run("ROLLBACK");
  EXPECT_EQ(data::ExamineDatabaseFile(copy), u"");
  data::Connection connection(copy, m_Faults);
  EXPECT_EQ(connection.Open(), u"");
  connection.Close();
  EXPECT_EQ(Shell(copy).Ask("SELECT count(*) FROM Step; PRAGMA integrity_check"), "0\nok");
  EXPECT_EQ(ContentOf(copy).size(), before.size());
}

TEST_F(StartUpTest, AFreshDatabaseNeverReplacesAFile) {
  const auto create = [this](const char* file) {
    return ToUtf8(data::CreateFreshDatabase(m_Folder / file, data::DatabaseKind::Template, m_Faults));
  };
  m_Folder.Put("office/T.cdb", "mine");
  EXPECT_THAT(create("office/T.cdb"), HasSubstr("File exists"));
  EXPECT_NE(create("office/T.cdb/T.cdb"), "");
  EXPECT_EQ(ContentOf(m_Folder / "office/T.cdb"), "mine");
  EXPECT_EQ(m_Files.ListEntries(m_Folder / "office"), std::vector<Text>{u"T.cdb"});
}

TEST_F(StartUpTest, OptionsOutOfRangeAreRepairedInMemory) {
  using Widths = std::array<double, 5>;
  // ReportFontSize, StepSpacing and ColumnWidth1 to 5 as stored, the first type, and what is read.
  const std::tuple<std::string, std::string, int, int, Widths> kCases[] = {
      {"14, 0, 0, 0, 0, 0, 0", "VALUES (1, '4 cOLUMN')", 12, 2, {0.6, 1.28, 1.12, 1.0, 1.75}},
      {"10, 1, NULL, NULL, 0, 0, 0", "VALUES (1, '3 Column')", 10, 1, {0.73, 1.23, 4.19, 0, 0}},
      {"12, 2, 0, 0, 0, 0, 0.5", "VALUES (1, '4 Column')", 12, 2, {0, 0, 0, 0, 0.5}},
      {"NULL, 3, 0, 0, 0, 0, 0", "SELECT 1, 2 WHERE 0", 12, 2, {0.73, 1.23, 4.19, 0, 0}}};
  for (const auto& [values, type, fontSize, spacing, widths] : kCases) {
    SCOPED_TRACE(values);
    InLibrary("DELETE FROM Options; DELETE FROM InspectionType; INSERT INTO InspectionType (ID, Layout) " +
              type +
              "; INSERT INTO Options (DataVersion, ReportFontSize, StepSpacing, ColumnWidth1, ColumnWidth2, "
              "ColumnWidth3, ColumnWidth4, ColumnWidth5) VALUES ('5.0', " +
              values + ")");
    const std::string stored = InLibrary("SELECT * FROM Options");
    const data::StartUp start = Start();
    ASSERT_EQ(start.result, StartUpResult::Ready);
    const data::OptionsTable& options = start.workspace->Options();
    EXPECT_EQ(std::tie(options.m_ReportFontSize, options.m_StepSpacing), std::tie(fontSize, spacing));
    EXPECT_EQ(options.m_ColumnWidth, widths);
    EXPECT_EQ(InLibrary("SELECT * FROM Options"), stored);
  }
}

TEST_F(StartUpTest, SavedOptionsQuitWhenAPathChangedEvenInCaseOnly) {
  const data::StartUp start = Start();
  ASSERT_EQ(start.result, StartUpResult::Ready);
  data::Workspace& workspace = *start.workspace;
  EXPECT_EQ(workspace.PathsInUse().templatePath, kDefaultTemplatePath);
  EXPECT_EQ(Registered(kOptionsKey, u"TemplatePath"), u"none");
  EXPECT_EQ(InVisits("PRAGMA journal_mode"), "wal");
  InLibrary("DELETE FROM Options");
  workspace.ForgetOptions();
  for (const auto* const footer : {u"first", u"second"}) {
    workspace.Options().m_FooterText = footer;
    EXPECT_EQ(SaveOptions(workspace, workspace.PathsInUse()), OptionsSaved::Done);
  }
  EXPECT_EQ(InLibrary("SELECT FooterText FROM Options"), "second") << "one row, however often it is saved";
  EXPECT_EQ(Registered(kOptionsKey, u"TemplatePath"), kDefaultTemplatePath);
  EXPECT_TRUE(m_Prompts.Messages().empty());

  const DatabasePaths changed{u"\\my documents\\Template_Data.cdb", Text(kDefaultInspectionPath)};
  EXPECT_EQ(SaveOptions(workspace, changed), OptionsSaved::MustQuit);
  EXPECT_THAT(m_Prompts.Last(), HasSubstr("The path(s) for the data files have been changed and you are "
                                          "required to quit before proceeding.\n\nInspector will now quit."));
  EXPECT_EQ(m_Prompts.Messages().back().icon, device::Icon::Exclamation);
  EXPECT_EQ(Registered(kOptionsKey, u"TemplatePath"), changed.templatePath);
  EXPECT_EQ(Registered(kStartUpKey, u"TemplatePath"), kDefaultTemplatePath);  // start-up has a key of its own
  EXPECT_EQ(Registered(kStartUpKey, u"InspectionPath"), kDefaultInspectionPath);

  Shell other(TemplateFile());
  other.Run("BEGIN IMMEDIATE");
  EXPECT_EQ(SaveOptions(workspace, workspace.PathsInUse()), OptionsSaved::Failed);
  EXPECT_EQ(Registered(kOptionsKey, u"TemplatePath"), changed.templatePath);
}

}  // namespace
}  // namespace inspector::tests
