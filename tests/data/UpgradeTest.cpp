// Tables of older structure brought up to date, and what must not happen to them on the way.
#include "data/Upgrade.h"

#include <csignal>

#include "StoreTest.h"
#include "data/StepTable.h"
#include "data/UniqueIDTable.h"

namespace inspector::tests {
namespace {

constexpr const char16_t* kUpdateRequired = u"Update Required";

class UpgradeTest : public StoreTest {
protected:
  // Files as an earlier release left them: no counters, no fields, few columns, a version of its own.
  void CreateOld() {
    CreateFresh();
    InLibrary(
        "DROP TABLE ExpandedText; DROP TABLE Options; CREATE TABLE Options (A bit, B bit, C bit, D bit, E "
        "varchar(255), F varchar(255), G varchar(255), H varchar(255), DataVersion varchar(20)); INSERT INTO "
        "Options VALUES (1, 0, 0, 0, 'fine', 'defs', 'foot', 'Ann; 12', '4.1'); INSERT INTO UniqueID VALUES "
        "('Comments', 25010), ('InspectionCategory', 400)");
    InVisits(
        "DROP TABLE Field; DROP TABLE UniqueID; DROP TABLE Step; CREATE TABLE Step (A INTEGER, B "
        "VARCHAR(255), C Text, D integer, E text, F text, G text, H text, I text, J text, K integer, L BIT, "
        "Major Text); INSERT INTO Step VALUES (7, '1', 'Flue', 3, 'Repair', 'Loose.', '', 'Condition', '', "
        "'', 9, 0, 'Heating')");
    m_Before = {ContentOf(TemplateFile()), ContentOf(InspectionFile())};
  }
  StartUpResult StartAndAnswer(Answer answer) {
    m_Prompts.Queue(kUpdateRequired, answer);
    return Start().result;
  }
  // Both files, or their copies, are as CreateOld left them.
  bool AreAsBefore(const std::string& ending) {
    return ContentOf(TemplateFile().string() + ending) == m_Before.first &&
           ContentOf(InspectionFile().string() + ending) == m_Before.second;
  }
  static std::string Schema(const std::filesystem::path& file, const std::string& table) {
    return Shell(file).Ask("SELECT group_concat(name || ' ' || lower(type)) FROM pragma_table_info('" +
                           table + "')");
  }
  void ExpectUpgraded() {
    EXPECT_TRUE(AreAsBefore(".before-5.0"));
    EXPECT_EQ(InLibrary("SELECT DataVersion, E, H, ReportFontSize FROM Options"), "5.0|fine|Ann; 12|12");
    EXPECT_EQ(Schema(InspectionFile(), "Field"),
              "ID integer,CategoryID integer,AssignedValue text,SequenceNumber integer,FieldType "
              "integer,FieldLabel varchar(80)");
    EXPECT_THAT(
        Schema(InspectionFile(), "Step"),
        EndsWith(",Major text,StepInfoExists bit,SummaryComment text,BitmapPath text,PictureBefore bit"));
    EXPECT_EQ(InVisits("SELECT * FROM UniqueID"), "Comments|25010\nInspectionCategory|400");
    EXPECT_THAT(Schema(TemplateFile(), "Options"), HasSubstr(",String25 varchar (255),"));
  }

  std::pair<std::string, std::string> m_Before;
};

TEST_F(UpgradeTest, OldFilesAreBroughtUpToDateAfterAskingAndCopiesAreKept) {
  CreateOld();
  m_Prompts.Queue(kUpdateRequired, Answer::Ok);
  {
    const data::StartUp start = Start();
    ASSERT_EQ(start.result, StartUpResult::Ready);
    EXPECT_EQ(m_Prompts.Messages()[0].text,
              u"Warning! The Structure you are using needs to be updated in order to work with this version "
              u"of Inspector.  Tap OK to automatically update your data files. \r\r Do you wish to proceed?");
    ASSERT_EQ(m_Prompts.ProgressWindows().size(), 2u) << "for the copies, and for the tables";
    EXPECT_EQ(m_Prompts.ProgressWindows()[1]->high, 22);
    EXPECT_EQ(m_Prompts.ProgressWindows()[1]->steps, 22);
    data::StepTable step(start.workspace->GetDatabases());
    ASSERT_TRUE(step.OpenSQL(u"SELECT * FROM Step WHERE MajorSystem = \"Heating\"") && step.GetRecord(0));
    EXPECT_EQ(step.m_StepTitle, u"Flue");
    EXPECT_EQ(step.m_PictureBefore, 0);
  }
  ExpectUpgraded();
  EXPECT_EQ(Start().result, StartUpResult::Ready);
  EXPECT_EQ(m_Prompts.Messages().size(), 1u) << "and is not asked again";
}

TEST_F(UpgradeTest, ARefusedUpdateLeavesBothFilesAsTheyWere) {
  CreateOld();
  EXPECT_EQ(StartAndAnswer(Answer::Cancel), StartUpResult::Refused);
  EXPECT_TRUE(AreAsBefore(""));
  EXPECT_FALSE(std::filesystem::exists(TemplateFile().string() + ".before-5.0"));

  // Or cancelled while its copies are made.
  for (const int step : {0, 1, 2}) {
    m_Prompts.CancelAtStep(step);
    EXPECT_EQ(StartAndAnswer(Answer::Ok), StartUpResult::Refused) << step;
    EXPECT_THAT(m_Prompts.Last(), HasSubstr("Cancelled. Nothing was changed."));
    EXPECT_TRUE(AreAsBefore(""));
    for (const std::filesystem::path& file : {TemplateFile(), InspectionFile()})
      EXPECT_FALSE(std::filesystem::exists(file.string() + ".before-5.0")) << step;
  }
  m_Prompts.CancelAtStep(INT_MAX);

  // Nor is anything altered when no copy can be kept.
  m_Files.FailCommit(1);
  EXPECT_EQ(StartAndAnswer(Answer::Ok), StartUpResult::Refused);
  EXPECT_THAT(m_Prompts.Last(), HasSubstr("No copy of the database could be kept"));
  EXPECT_TRUE(AreAsBefore(""));
}

TEST_F(UpgradeTest, KilledAfterAnyTableItRunsAgainToTheSameEnd) {
  CreateOld();
  for (const int status : {0, 1, 3, 4, 20, 21}) {  // of the copies, then of the tables
    SCOPED_TRACE(status);
    RunUntilKilled([this, status] {
      m_Prompts.AtStatus([left = status]() mutable {
        if (left-- == 0) raise(SIGKILL);  // as this one is about to be copied or checked
      });
      StartAndAnswer(Answer::Ok);
    });
  }
  EXPECT_EQ(StartAndAnswer(Answer::Ok), StartUpResult::Ready);
  ExpectUpgraded();  // also that the first copy is never replaced
}

TEST_F(UpgradeTest, OnlyVersion5IsCurrentInAnyCase) {
  CreateFresh();
  for (const char* version : {"''", "NULL", "'5.0 '", "'6.0'"}) {
    InLibrary(std::string("UPDATE Options SET DataVersion = ") + version);
    EXPECT_EQ(StartAndAnswer(Answer::Cancel), StartUpResult::Refused) << version;
  }
  InLibrary("DELETE FROM Options");
  EXPECT_EQ(StartAndAnswer(Answer::Ok), StartUpResult::Ready);
  EXPECT_EQ(InLibrary("SELECT DataVersion, StepSpacing FROM Options"), "5.0|2");
}

TEST_F(UpgradeTest, ATableMadeByTheProgramHasGeneratedNamesAndPassesTheCheck) {
  CreateGenerated();
  EXPECT_EQ(Schema(InspectionFile(), "Category"),
            "Number0 integer,String1 varchar (255),String2 varchar (255),String3 varchar (255),String4 "
            "varchar (255),YesNo5 bit,YesNo6 bit,Number7 integer,Number8 integer,Type integer");
  EXPECT_THAT(Schema(InspectionFile(), "Inspection"), HasSubstr("DateTime6 datetime"));
  EXPECT_THAT(Schema(TemplateFile(), "Options"), HasSubstr("ColumnWidth1 float"));
  for (const data::TableLayout& layout : data::AllLayouts())
    EXPECT_EQ(Table(layout.name, layout.database)->CheckStructure(m_Prompts),
              TableRecordset::StructureResult::Sound)
        << ToUtf8(layout.name);
}

// A table class with any columns.
class OddTable : public TableRecordset {
public:
  OddTable(Databases& databases, const std::vector<data::ColumnLayout>& columns)
      : TableRecordset(databases, data::TableLayout{u"Odd", data::DatabaseKind::Template, columns, {}},
                       std::vector<data::BoundMember>(columns.size(), &m_Number)) {}
  std::int32_t m_Number = 0;
};

class OddTableTest : public OpenStoreTest {
protected:
  TableRecordset::StructureResult Check(const std::vector<data::ColumnLayout>& columns) {
    return OddTable(Data(), columns).CheckStructure(m_Prompts);
  }
  void Run(const char* sql) {
    EXPECT_TRUE(Data().Template().ExecuteNative(sql));
    Data().Template().SchemaChanged();
  }
  void ExpectFatal(const std::vector<data::ColumnLayout>& columns, const std::string& says) {
    m_Prompts.Forget();
    EXPECT_EQ(Check(columns), TableRecordset::StructureResult::Fatal);
    ASSERT_FALSE(m_Prompts.Messages().empty());
    EXPECT_THAT(ToUtf8(m_Prompts.Messages()[0].text), StartsWith(says));
    EXPECT_EQ(m_Prompts.Messages()[0].icon, device::Icon::Hand);
  }

  const data::ColumnLayout m_Number{u"", data::ValueType::Integer};
};

TEST_F(OddTableTest, WhatCannotBeRepairedIsSaidAndEndsTheProgram) {
  const data::ColumnLayout broken{u"", static_cast<data::ValueType>(77)};
  const data::ColumnLayout icon{u"ReportIcon", data::ValueType::Binary, u"Long Varbinary"};
  const std::string ends = "Inspector is unable to recover from this error and will be terminated.";
  const std::string invalid = "Invalid column type in table: Odd column: ";
  Run("DROP TABLE IF EXISTS Odd");
  ExpectFatal({m_Number, broken}, invalid + "1\n " + ends);
  Run("CREATE TABLE Odd (A integer, B integer, C integer)");
  ExpectFatal({m_Number, broken}, invalid + "4\n" + ends);
  Run("DROP TABLE Odd; CREATE TABLE Odd (A integer)");
  ExpectFatal({m_Number, broken}, invalid + "1\n" + ends);
  Run("DROP TABLE Odd; CREATE TABLE Odd (A integer, B varchar(9))");
  ExpectFatal({m_Number, m_Number}, "Column type mismatch in table: Odd column: 1\n" + ends);
  Run("DROP TABLE Odd; CREATE TABLE Odd (A varchar(9))");
  ExpectFatal({icon},
              "There was an error found in the Template data file.  This file was transferred from a PC "
              "incorrectly. \nTo correct this error, retransfer the data file from the PC being sure to "
              "check the 'ReportIcon' field under the 'Options' table.");
  Run("DROP TABLE Odd");
  Shell other(TemplateFile());
  other.Run("BEGIN IMMEDIATE");
  ExpectFatal({m_Number}, "Error creating table: Odd \n" + ends);
}

TEST_F(OddTableTest, MissingColumnsAreAddedFromWhereTheyStandAndMoreAreLeftAlone) {
  Run("CREATE TABLE Odd (A integer)");
  EXPECT_EQ(Check({m_Number, m_Number}), TableRecordset::StructureResult::Sound);
  EXPECT_EQ(Check({m_Number}), TableRecordset::StructureResult::Sound);
  EXPECT_EQ(InLibrary("SELECT group_concat(name) FROM pragma_table_info('Odd')"), "A,Number1");
}

TEST_F(UpgradeTest, AFaultInTheOptionsTableEndsTheStart) {
  CreateFresh();
  InLibrary(
      "DROP TABLE Options; CREATE TABLE Options (A bit, B bit, C bit, D bit, E text, F text, G text, H text, "
      "DataVersion text, I text, J float, K float, L float, M float, N float, O integer, ReportIcon "
      "varchar(255)); INSERT INTO Options (DataVersion) VALUES ('5.0')");
  EXPECT_EQ(Start().result, StartUpResult::Terminated);
  EXPECT_THAT(m_Prompts.Last(), HasSubstr("'ReportIcon' field"));
}

TEST_F(UpgradeTest, AShortOptionsTableIsExtendedWithoutAskingButNotWithoutACopy) {
  CreateFresh();
  InLibrary("ALTER TABLE Options DROP COLUMN DefaultPictCardPath");
  const std::string before = ContentOf(TemplateFile());
  for (int n = 0; n < 2; ++n) EXPECT_EQ(Start().result, StartUpResult::Ready);
  EXPECT_TRUE(ContentOf(TemplateFile().string() + ".before-5.0") == before);
  EXPECT_THAT(Schema(TemplateFile(), "Options"), EndsWith(",DefaultPictCardPath text"));
  EXPECT_FALSE(std::filesystem::exists(TemplateFile().string() + ".before-5.0-2")) << "once is enough";
}

using UniqueIDTableTest = OpenStoreTest;

TEST_F(UniqueIDTableTest, KeysAreCountedDifferentlyInTheTwoDatabases) {
  InLibrary("INSERT INTO UniqueID VALUES ('Negative', -5), ('Zero', 0), ('Last', 2147483647)");
  InVisits("INSERT INTO UniqueID VALUES ('Negative', -5)");
  data::UniqueIDTable inspection(Data(), data::DatabaseKind::Inspection);
  data::UniqueIDTable library(Data(), data::DatabaseKind::Template);
  const auto next = [](data::UniqueIDTable& counters, const std::vector<TextView>& names) {
    std::vector<std::int32_t> keys;
    for (const TextView name : names) keys.push_back(counters.NextID(name));
    return keys;
  };
  EXPECT_THAT(next(library, {u"Comments", u"Comments", u"Negative", u"Zero", u"Last"}),
              ElementsAre(25000, 25001, 25000, 1, std::numeric_limits<std::int32_t>::min()));
  EXPECT_THAT(next(inspection, {u"Inspection", u"UniqueID", u"Negative", u"InspectionCategory"}),
              ElementsAre(1000, 1000, -4, 1000));
  EXPECT_EQ(data::NextInspectionID(Data(), u"Inspection"), 1001);
  data::KeyRange keys = inspection.TakeIDs(u"InspectionCategory", 3);
  EXPECT_EQ(inspection.NextID(u"InspectionCategory"), 1004);
  for (const int key : {1001, 1002, 1003}) EXPECT_EQ(keys.Next(), key);
  inspection.TakeIDs(u"Field", 0);
  EXPECT_EQ(InVisits("SELECT * FROM UniqueID"),
            "Negative|-4\nInspection|1001\nUniqueID|1000\nInspectionCategory|1004");
  InVisits("ALTER TABLE UniqueID RENAME COLUMN TableName TO Renamed");
  EXPECT_EQ(inspection.NextID(u"Inspection"), 1002) << "by its place, as every column";
  InVisits("DROP TABLE UniqueID");
  const int faults = m_Faults.Count();
  EXPECT_EQ(inspection.NextID(u"Inspection"), 1000);
  EXPECT_GT(m_Faults.Count(), faults);
}

}  // namespace
}  // namespace inspector::tests
