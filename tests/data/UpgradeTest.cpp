// Tables of older structure brought up to date, and what must not happen to them on the way.
#include "data/Upgrade.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "StoreTest.h"
#include "data/OptionsTable.h"
#include "data/StepTable.h"
#include "data/UniqueIDTable.h"

namespace inspector::tests {
namespace {

using data::StartUpResult;

constexpr const char16_t* kUpdateRequired = u"Update Required";

class UpgradeTest : public StoreTest {
protected:
  // Files as an earlier release left them: no counters, no fields, few columns, a version of its own.
  void CreateOld() {
    CreateFresh();
    Shell(TemplateFile())
        .Run(
            "DROP TABLE ExpandedText; DROP TABLE Options;CREATE TABLE Options (A bit, B bit, C bit, D bit, E "
            "varchar(255), F varchar(255), G varchar(255), H varchar(255), DataVersion varchar(20));INSERT "
            "INTO Options VALUES (1, 0, 0, 0, 'fine', 'defs', 'foot', 'Ann; 12', '4.1');INSERT INTO UniqueID "
            "VALUES ('Comments', 25010), ('InspectionCategory', 400)");
    Shell(InspectionFile())
        .Run(
            "DROP TABLE Field; DROP TABLE UniqueID; DROP TABLE Step;CREATE TABLE Step (A INTEGER, B "
            "VARCHAR(255), C Text, D integer, E text, F text, G text, H text, I text, J text, K integer, L "
            "BIT, Major Text);INSERT INTO Step VALUES (7, '1', 'Flue', 3, 'Repair', 'Loose.', '', "
            "'Condition', '', '', 9, 0, 'Heating')");
  }
  std::string Schema(const std::filesystem::path& file, const std::string& table) {
    return Shell(file).Ask("SELECT group_concat(name || ' ' || lower(type), ',') FROM pragma_table_info('" +
                           table + "')");
  }
  std::string Copy(const std::filesystem::path& file, const char* ending = ".before-5.0") {
    const std::filesystem::path copy = file.string() + ending;
    return std::filesystem::exists(copy) ? ContentOf(copy) : "";
  }
  void ExpectUpgraded() {
    EXPECT_EQ(Shell(TemplateFile()).Ask("SELECT DataVersion, E, H, ReportFontSize FROM Options"),
              "5.0|fine|Ann; 12|12");
    EXPECT_EQ(Schema(InspectionFile(), "Field"),
              "ID integer,CategoryID integer,AssignedValue text,SequenceNumber integer,FieldType "
              "integer,FieldLabel varchar(80)");
    EXPECT_TRUE(
        Schema(InspectionFile(), "Step")
            .ends_with(
                ",Major text,StepInfoExists bit,SummaryComment text,BitmapPath text,PictureBefore bit"));
    EXPECT_EQ(Shell(InspectionFile()).Ask("SELECT * FROM UniqueID"),
              "Comments|25010\nInspectionCategory|400");
    EXPECT_TRUE(Schema(TemplateFile(), "Options").find(",String25 varchar (255),") != std::string::npos);
  }
};

TEST_F(UpgradeTest, OldFilesAreBroughtUpToDateAfterAskingAndCopiesAreKept) {
  CreateOld();
  const std::string templates = ContentOf(TemplateFile());
  const std::string inspections = ContentOf(InspectionFile());
  m_Prompts.Queue(kUpdateRequired, device::Answer::Ok);
  {
    const data::StartUp start = Start();
    ASSERT_EQ(start.result, StartUpResult::Ready);
    ASSERT_EQ(m_Prompts.Messages().size(), 1u);
    EXPECT_EQ(m_Prompts.Messages()[0].text,
              u"Warning! The Structure you are using needs to be updated in order to work with this version "
              u"of Inspector.  Tap OK to automatically update your data files. \r\r Do you wish to proceed?");
    ASSERT_EQ(m_Prompts.ProgressWindows().size(), 1u);
    EXPECT_EQ(m_Prompts.ProgressWindows()[0]->high, 22);
    EXPECT_EQ(m_Prompts.ProgressWindows()[0]->steps, 22);
    data::StepTable step(start.workspace->GetDatabases());
    ASSERT_TRUE(step.OpenSQL(u"SELECT * FROM Step WHERE MajorSystem = \"Heating\"") && step.GetRecord(0));
    EXPECT_EQ(step.m_StepTitle, u"Flue");
    EXPECT_EQ(step.m_PictureBefore, 0);
  }
  EXPECT_TRUE(Copy(TemplateFile()) == templates);
  EXPECT_TRUE(Copy(InspectionFile()) == inspections);
  ExpectUpgraded();
  EXPECT_EQ(Start().result, StartUpResult::Ready);  // and is not asked again
  EXPECT_EQ(m_Prompts.Messages().size(), 1u);
}

TEST_F(UpgradeTest, ARefusedUpdateLeavesBothFilesAsTheyWere) {
  CreateOld();
  const std::string templates = ContentOf(TemplateFile());
  const std::string inspections = ContentOf(InspectionFile());
  m_Prompts.Queue(kUpdateRequired, device::Answer::Cancel);
  EXPECT_EQ(Start().result, StartUpResult::Refused);
  EXPECT_TRUE(ContentOf(TemplateFile()) == templates && ContentOf(InspectionFile()) == inspections);
  EXPECT_EQ(Copy(TemplateFile()), "");

  // Nor is anything altered when no copy can be kept.
  m_Prompts.Queue(kUpdateRequired, device::Answer::Ok);
  m_Files.FailCommit(1);
  EXPECT_EQ(Start().result, StartUpResult::Refused);
  EXPECT_TRUE(device::Contains(m_Prompts.Messages().back().text, u"No copy of the database could be kept"));
  EXPECT_TRUE(ContentOf(TemplateFile()) == templates && ContentOf(InspectionFile()) == inspections);
}

TEST_F(UpgradeTest, KilledAfterAnyTableItRunsAgainToTheSameEnd) {
  CreateOld();
  const std::string templates = ContentOf(TemplateFile());
  for (const int tables : {0, 3, 4, 20, 21}) {
    SCOPED_TRACE(tables);
    const pid_t child = fork();
    if (child == 0) {
      m_Prompts.Queue(kUpdateRequired, device::Answer::Ok);
      m_Prompts.AtStatus([left = tables]() mutable {
        if (left-- == 0) raise(SIGKILL);  // as this table is about to be checked
      });
      Start();
      _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
  }
  EXPECT_TRUE(Copy(TemplateFile()) == templates);  // the first copy is never replaced
  m_Prompts.Queue(kUpdateRequired, device::Answer::Ok);
  EXPECT_EQ(Start().result, StartUpResult::Ready);
  ExpectUpgraded();
}

TEST_F(UpgradeTest, OnlyVersion5IsCurrentInAnyCase) {
  CreateFresh();
  for (const char* version : {"''", "NULL", "'5.0 '", "'6.0'"}) {
    Shell(TemplateFile()).Run(std::string("UPDATE Options SET DataVersion = ") + version);
    m_Prompts.Queue(kUpdateRequired, device::Answer::Cancel);
    EXPECT_EQ(Start().result, StartUpResult::Refused) << version;
  }
  Shell(TemplateFile()).Run("DELETE FROM Options");
  m_Prompts.Queue(kUpdateRequired, device::Answer::Ok);
  EXPECT_EQ(Start().result, StartUpResult::Ready);
  EXPECT_EQ(Shell(TemplateFile()).Ask("SELECT DataVersion, StepSpacing FROM Options"), "5.0|2");
}

TEST_F(UpgradeTest, ATableMadeByTheProgramHasGeneratedNamesAndPassesTheCheck) {
  CreateGenerated();
  EXPECT_EQ(Schema(InspectionFile(), "Category"),
            "Number0 integer,String1 varchar (255),String2 varchar (255),String3 varchar (255),String4 "
            "varchar (255),YesNo5 bit,YesNo6 bit,Number7 integer,Number8 integer,Type integer");
  EXPECT_TRUE(Schema(InspectionFile(), "Inspection").find("DateTime6 datetime") != std::string::npos);
  EXPECT_TRUE(Schema(TemplateFile(), "Options").find("ColumnWidth1 float") != std::string::npos);
  for (const data::TableLayout& layout : data::AllLayouts()) {
    EXPECT_EQ(Table(layout.name, layout.database)->CheckStructure(m_Prompts),
              TableRecordset::StructureResult::Sound)
        << device::ToUtf8(layout.name);
  }
}

// A table class with any columns.
class OddTable : public TableRecordset {
public:
  OddTable(Databases& databases, const std::vector<data::ColumnLayout>& columns)
      : TableRecordset(databases, data::TableLayout{u"Odd", data::DatabaseKind::Template, columns, {}},
                       std::vector<data::BoundMember>(columns.size(), &m_Number)) {}
  std::int32_t m_Number = 0;
};

class OddTableTest : public UpgradeTest {
protected:
  void SetUp() override {
    CreateFresh();
    OpenBoth();
  }
  TableRecordset::StructureResult Check(const std::vector<data::ColumnLayout>& columns) {
    return OddTable(Data(), columns).CheckStructure(m_Prompts);
  }
  void Run(const char* sql) {
    EXPECT_TRUE(Data().Template().ExecuteNative(sql));
    Data().Template().SchemaChanged();
  }

  const data::ColumnLayout m_NumberColumn{u"", data::ValueType::Integer};
};

TEST_F(OddTableTest, WhatCannotBeRepairedIsSaidAndEndsTheProgram) {
  const data::ColumnLayout& number = m_NumberColumn;
  const data::ColumnLayout broken{u"", static_cast<data::ValueType>(77)};
  const data::ColumnLayout icon{u"ReportIcon", data::ValueType::Binary, u"Long Varbinary"};
  const Text ends = u"Inspector is unable to recover from this error and will be terminated.";
  const struct {
    const char* before;
    std::vector<data::ColumnLayout> columns;
    Text expected;
  } kCases[] = {
      {"DROP TABLE IF EXISTS Odd",
       {number, broken},
       u"Invalid column type in table: Odd column: 1\n " + ends},
      {"CREATE TABLE Odd (A integer, B integer, C integer)",
       {number, broken},
       u"Invalid column type in table: Odd column: 4\n" + ends},
      {"DROP TABLE Odd; CREATE TABLE Odd (A integer)",
       {number, broken},
       u"Invalid column type in table: Odd column: 1\n" + ends},
      {"DROP TABLE Odd; CREATE TABLE Odd (A integer, B varchar(9))",
       {number, number},
       u"Column type mismatch in table: Odd column: 1\n" + ends},
      {"DROP TABLE Odd; CREATE TABLE Odd (A varchar(9))",
       {icon},
       u"There was an error found in the Template data file.  This file was transferred from a PC "
       u"incorrectly. \nTo correct this error, retransfer the data file from the PC being sure to check the "
       u"'ReportIcon' field under the 'Options' table."},
  };
  for (const auto& each : kCases) {
    SCOPED_TRACE(device::ToUtf8(each.expected));
    Run(each.before);
    m_Prompts.Forget();
    EXPECT_EQ(Check(each.columns), TableRecordset::StructureResult::Fatal);
    ASSERT_EQ(m_Prompts.Messages().size(), 1u);
    EXPECT_TRUE(m_Prompts.Messages()[0].text.starts_with(each.expected));
    EXPECT_EQ(m_Prompts.Messages()[0].icon, device::Icon::Hand);
  }
  Shell other(TemplateFile());
  Run("DROP TABLE Odd");
  other.Run("BEGIN IMMEDIATE");
  m_Prompts.Forget();
  EXPECT_EQ(Check({number}), TableRecordset::StructureResult::Fatal);
  EXPECT_TRUE(m_Prompts.Messages().front().text.starts_with(
      u"Error creating table: Odd \nInspector is unable to recover from this error and will be terminated."));
}

TEST_F(OddTableTest, MissingColumnsAreAddedFromWhereTheyStandAndMoreAreLeftAlone) {
  Run("CREATE TABLE Odd (A integer)");
  EXPECT_EQ(Check({m_NumberColumn, m_NumberColumn}), TableRecordset::StructureResult::Sound);
  EXPECT_EQ(Schema(TemplateFile(), "Odd"), "A integer,Number1 integer");
  EXPECT_EQ(Check({m_NumberColumn}), TableRecordset::StructureResult::Sound);
}

TEST_F(UpgradeTest, AFaultInTheOptionsTableEndsTheStart) {
  CreateFresh();
  Shell(TemplateFile())
      .Run(
          "DROP TABLE Options; CREATE TABLE Options (A bit, B bit, C bit, D bit, E text, F text, G text, H "
          "text, DataVersion text, I text, J float, K float, L float, M float, N float, O integer, "
          "ReportIcon varchar(255)); INSERT INTO Options (DataVersion) VALUES ('5.0')");
  EXPECT_EQ(Start().result, StartUpResult::Terminated);
  EXPECT_TRUE(device::Contains(m_Prompts.Messages().back().text, u"'ReportIcon' field"));
}

TEST_F(UpgradeTest, AShortOptionsTableIsExtendedWithoutAskingButNotWithoutACopy) {
  CreateFresh();
  Shell(TemplateFile()).Run("ALTER TABLE Options DROP COLUMN DefaultPictCardPath");
  const std::string before = ContentOf(TemplateFile());
  EXPECT_EQ(Start().result, StartUpResult::Ready);
  EXPECT_TRUE(Copy(TemplateFile()) == before);
  EXPECT_TRUE(Schema(TemplateFile(), "Options").ends_with(",DefaultPictCardPath text"));
  EXPECT_EQ(Start().result, StartUpResult::Ready);
  EXPECT_EQ(Copy(TemplateFile(), ".before-5.0-2"), "");
}

TEST_F(UpgradeTest, KeysAreCountedDifferentlyInTheTwoDatabases) {
  using data::DatabaseKind;
  CreateFresh();
  OpenBoth();
  Shell(TemplateFile())
      .Run("INSERT INTO UniqueID VALUES ('Negative', -5), ('Zero', 0), ('Last', 2147483647)");
  Shell(InspectionFile()).Run("INSERT INTO UniqueID VALUES ('Negative', -5)");
  data::UniqueIDTable inspection(Data(), DatabaseKind::Inspection);
  data::UniqueIDTable library(Data(), DatabaseKind::Template);
  EXPECT_EQ(inspection.NextID(u"Inspection"), 1000);
  EXPECT_EQ(data::NextInspectionID(Data(), u"Inspection"), 1001);
  EXPECT_EQ(inspection.NextID(u"InspectionCategory"), 1000);
  EXPECT_EQ(inspection.NextID(u"UniqueID"), 1000);
  EXPECT_EQ(inspection.NextID(u"Negative"), -4);
  EXPECT_EQ(library.NextID(u"Comments"), 25000);
  EXPECT_EQ(library.NextID(u"Comments"), 25001);
  EXPECT_EQ(library.NextID(u"Negative"), 25000);
  EXPECT_EQ(library.NextID(u"Zero"), 1);
  EXPECT_EQ(library.NextID(u"Last"), std::numeric_limits<std::int32_t>::min());

  data::KeyRange keys = inspection.TakeIDs(u"InspectionCategory", 3);
  EXPECT_EQ(inspection.NextID(u"InspectionCategory"), 1004);
  for (const int key : {1001, 1002, 1003}) EXPECT_EQ(keys.Next(), key);
  inspection.TakeIDs(u"Field", 0);
  EXPECT_EQ(Shell(InspectionFile()).Ask("SELECT * FROM UniqueID"),
            "Negative|-4\nInspection|1001\nInspectionCategory|1004\nUniqueID|1000");
  Shell(InspectionFile()).Run("ALTER TABLE UniqueID RENAME COLUMN TableName TO Renamed");
  EXPECT_EQ(inspection.NextID(u"Inspection"), 1002);  // by its place, as every column
  Shell(InspectionFile()).Run("DROP TABLE UniqueID");
  const int faults = m_Faults.Count();
  EXPECT_EQ(inspection.NextID(u"Inspection"), 1000);
  EXPECT_GT(m_Faults.Count(), faults);
}

}  // namespace
}  // namespace inspector::tests
