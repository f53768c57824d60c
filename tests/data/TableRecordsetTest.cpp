// Rows by position, columns by ordinal, and what a write does.
#include "data/TableRecordset.h"

#include "StoreTest.h"
#include "data/CategoryTable.h"
#include "data/InspectionTable.h"
#include "data/OptionsTable.h"
#include "data/StepTable.h"
#include "data/UniqueIDTable.h"

namespace inspector::tests {
namespace {

using data::InspectionTable;
using data::OptionsTable;
using data::StepTable;

using TableRecordsetTest = OpenStoreTest;

// A value that no other column of the table has, where its type allows that.
struct ValueAt {
  int ordinal;
  bool isYesNo;

  void Get(std::int32_t& value) const { value = isYesNo ? -1 : -100 * ordinal - 1; }
  void Get(double& value) const { value = ordinal + 0.125; }
  void Get(Text& value) const { value = u"\u00e9 \"'" + Decimal(ordinal); }
  void Get(data::ByteArray& value) const { value = {0, 255, 7}; }
  void Get(device::CalendarTime& value) const { value = device::MakeCalendarTime(1999, 12, 31, 23, 59, 58); }
};

TEST_F(TableRecordsetTest, EveryColumnOfEveryTableComesBackAtItsOrdinal) {
  const auto forEachColumn = [](TableRecordset& table, const auto& work) {
    for (const data::ColumnDef& column : table.Columns()) {
      SCOPED_TRACE(column.ordinal);
      const ValueAt value{column.ordinal, column.type == data::ValueType::YesNo};
      std::visit([&](auto* member) { work(*member, value); }, column.member);
    }
  };
  for (const data::TableLayout& layout : data::AllLayouts()) {
    SCOPED_TRACE(ToUtf8(layout.name));
    const auto written = Table(layout.name, layout.database);
    EXPECT_EQ(written->Columns().size(), layout.columns.size());
    EXPECT_TRUE(written->Open());
    const int last = written->RecordCount();
    written->PrepareNew();
    forEachColumn(*written, [](auto& member, const ValueAt& value) { value.Get(member); });
    EXPECT_TRUE(written->Write());
    const auto read = Table(layout.name, layout.database);
    EXPECT_TRUE(read->Open() && read->GetRecord(last));
    forEachColumn(*read, [](const auto& member, const ValueAt& value) {
      std::remove_cvref_t<decltype(member)> expected;
      value.Get(expected);
      EXPECT_TRUE(member == expected);
    });
  }
}

TEST_F(TableRecordsetTest, NullReadsAsTheNeutralValueAndIsWrittenBackAsSuch) {
  InVisits("INSERT INTO Inspection (InspectionID) VALUES (NULL)");
  InspectionTable inspection(Data());
  inspection.m_InspectionDate = m_Clock.Now();
  inspection.m_ClientName = u"left over";
  ASSERT_TRUE(inspection.Open() && inspection.GetRecord(0));
  EXPECT_EQ(Decimal(inspection.m_InspectionID) + inspection.m_ClientName, u"0");
  EXPECT_TRUE(inspection.m_InspectionDate.IsZero() && inspection.Write());
  EXPECT_EQ(
      InVisits("SELECT InspectionID, quote(ClientName), Reserve8, quote(InspectionDate) FROM Inspection"),
      "0|''|0|NULL");

  OptionsTable options(Data());
  options.m_ReportIcon = {1, 2, 3};
  ASSERT_TRUE(options.Open() && options.GetRecord(0));
  EXPECT_EQ(options.m_ReportIcon, data::ByteArray(1, 0));
  EXPECT_EQ(options.m_ColumnWidth[0], 0);
}

TEST_F(TableRecordsetTest, AWriteAddsAfterPrepareNewAndUpdatesAfterGetRecord) {
  StepTable step(Data());
  EXPECT_FALSE(step.Write()) << "nothing was read or prepared";
  EXPECT_TRUE(step.Open());
  EXPECT_FALSE(step.GetRecord(0));
  step.PrepareNew();
  for (const int id : {1, 2}) {  // the second repeats the insert
    step.m_StepID = id;
    EXPECT_TRUE(step.Write());
    EXPECT_EQ(step.RecordCount(), id);
  }
  EXPECT_TRUE(step.GetRecord(1));
  for (const auto* const comment : {u"a", u"b"}) {  // the second repeats the update
    step.m_Comments = comment;
    EXPECT_TRUE(step.Write());
  }
  EXPECT_EQ(InVisits("SELECT StepID, Comments FROM Step"), "1|\n2|b");

  step.PrepareNew();
  step.m_StepID = 3;
  EXPECT_TRUE(step.OpenSQL(u"SELECT * FROM Step WHERE StepID = 1"));
  EXPECT_TRUE(step.Write()) << "opening does not change what was prepared";
  EXPECT_EQ(step.RecordCount(), 2);
  EXPECT_TRUE(step.GetRecord(0) && step.DeleteCurrent());
  EXPECT_FALSE(step.DeleteCurrent());
  EXPECT_EQ(step.RecordCount(), 1);
  EXPECT_TRUE(step.GetRecord(0));
  EXPECT_EQ(step.m_StepID, 3);
  EXPECT_FALSE(step.GetRecord(1));
  EXPECT_EQ(step.m_StepID, 0);
  EXPECT_FALSE(step.Write());
  EXPECT_EQ(InVisits("SELECT StepID FROM Step"), "2\n3");

  EXPECT_TRUE(step.Open() && step.GetRecord(0));
  InVisits("DELETE FROM Step");
  EXPECT_FALSE(step.Write()) << "another program has deleted the row";
  EXPECT_EQ(m_Faults.Count(), 1);
}

TEST_F(TableRecordsetTest, PrepareNewKeepsBinaryAndDatesTheRowNow) {
  OptionsTable options(Data());
  options.m_ReportIcon = {1, 2};
  options.m_FooterText = u"x";
  options.m_ColumnWidth[4] = 3;
  options.PrepareNew();
  EXPECT_EQ(options.m_ReportIcon, (data::ByteArray{1, 2}));
  EXPECT_EQ(options.m_FooterText, u"");
  EXPECT_EQ(options.m_ColumnWidth[4], 0);
  InspectionTable inspection(Data());
  inspection.PrepareNew();
  EXPECT_EQ(inspection.m_InspectionDate, m_Clock.Now());
}

TEST_F(TableRecordsetTest, WhatOtherProgramsStoredIsReadAsWhatItMeans) {
  InVisits(
      "INSERT INTO Inspection (InspectionID, InspectionDate, Reserve8, Reserve9, ClientName) VALUES "
      "(7000000001, '2026-05-31 14:05', -1, 2, CAST(x'41FF42' AS TEXT)), (2, 46173.5, 0.5, 'no', 12), (3, "
      "'yesterday', NULL, 0, x'C3A9'), (4, '2026-05-31 14:05:09.500', 0, 0, '')");
  const std::tuple<device::CalendarTime, int, int, Text> kExpected[] = {
      {device::MakeCalendarTime(2026, 5, 31, 14, 5), -1, -1, u"A\uFFFDB"},
      {device::FromVariantTime(46173.5), -1, 0, u"12"},
      {{}, 0, 0, u"\u00e9"},
      {device::MakeCalendarTime(2026, 5, 31, 14, 5, 9), 0, 0, u""}};
  InspectionTable row(Data());
  ASSERT_TRUE(row.Open());
  for (int n = 0; n < 4; ++n) {
    ASSERT_TRUE(row.GetRecord(n));
    EXPECT_TRUE(std::tie(row.m_InspectionDate, row.m_Reserve8, row.m_Reserve9, row.m_ClientName) ==
                kExpected[n])
        << "row " << n;
  }
  // What could not be read is still there after something else was changed, and gives way to a date.
  const std::string storedDate = "SELECT InspectionDate FROM Inspection WHERE InspectionID = 3";
  ASSERT_TRUE(row.GetRecord(2) && row.Write());
  EXPECT_EQ(InVisits(storedDate), "yesterday");
  row.m_InspectionDate = device::MakeCalendarTime(2026, 6, 1);
  ASSERT_TRUE(row.Write());
  EXPECT_EQ(InVisits(storedDate), "2026-06-01T00:00:00");
}

TEST_F(TableRecordsetTest, AColumnDeclaredToIgnoreCaseComparesBinary) {
  InLibrary(
      "DROP TABLE UniqueID; CREATE TABLE UniqueID (TableName varchar(50) COLLATE NOCASE, NextID integer); "
      "INSERT INTO UniqueID VALUES ('comments', 7), ('Comments', 30000)");
  data::UniqueIDTable keys(Data(), data::DatabaseKind::Template);
  EXPECT_EQ(keys.NextID(u"Comments"), 30001);
  EXPECT_EQ(keys.NextID(u"COMMENTS"), 25000);
}

TEST_F(TableRecordsetTest, AMissingTableIsNotAnEmptyOne) {
  InVisits("DROP TABLE Field; DROP TABLE MERGE_Step; DROP TABLE MERGE_Category");
  const auto field = Table(u"Field");
  EXPECT_FALSE(field->Open());
  EXPECT_TRUE(field->Failed());
  EXPECT_EQ(field->RecordCount(), 0);
  EXPECT_EQ(m_Faults.Count(), 0) << "the caller is told, and decides";
  StepTable step(Data());
  EXPECT_TRUE(step.Open() && !step.Failed());
  // A joined table that is missing counts as well.
  EXPECT_FALSE(step.OpenSQL(u"SELECT Step.* FROM Step INNER JOIN Field ON Field.ID = Step.StepID"));

  // Staging tables come into being when they are first used, whichever way.
  StepTable staged(Data(), u"MERGE_Step");
  staged.PrepareNew();
  EXPECT_TRUE(staged.Write());
  data::CategoryTable category(Data(), u"MERGE_InspectionCategory");
  EXPECT_TRUE(category.OpenSQL(u"DELETE FROM MERGE_InspectionCategory WHERE InspectionID = 1"));
  EXPECT_FALSE(category.Failed());
  EXPECT_EQ(InVisits("SELECT count(*) FROM MERGE_Step; SELECT count(*) FROM MERGE_Category"), "1\n0");
}

TEST_F(TableRecordsetTest, RowsOfAnotherTableAreReadAndWrittenThere) {
  InVisits("INSERT INTO Category (CategoryID) SELECT 1; INSERT INTO MERGE_Category (CategoryID) SELECT 9");
  data::CategoryTable category(Data());
  ASSERT_TRUE(category.OpenSQL(u"SELECT * FROM MERGE_Category") && category.GetRecord(0));
  EXPECT_EQ(category.m_CategoryID, 9);
  category.m_CategoryTitle = u"Roof";
  EXPECT_TRUE(category.Write());
  ASSERT_TRUE(category.Open() && category.GetRecord(0));
  EXPECT_EQ(category.m_CategoryID, 1);
  EXPECT_EQ(category.m_CategoryTitle, u"");
  EXPECT_EQ(InVisits("SELECT CategoryTitle FROM MERGE_Category"), "Roof");
}

}  // namespace
}  // namespace inspector::tests
