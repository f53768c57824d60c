// Every statement of the program, on tables with full names and on tables that the program made itself.
#include <algorithm>

#include "StoreTest.h"
#include "device/Format.h"

namespace inspector::tests {
namespace {

using device::Format;
using Ids = std::vector<int>;

class SqlDialectTest : public StoreTest, public ::testing::WithParamInterface<const char*> {
protected:
  // True is 1, or -1 as other programs write it.
  void SetUp() override {
    if (GetParam() == std::string("Fresh")) {
      CreateFresh();
      OpenBoth();
    } else {
      CreateGenerated();
    }
    if (HasFatalFailure()) return;
    Insert(u"Inspection", "0,11", "(1, 'InspectionNum'), (2, 'Inspection')");
    Insert(u"Category", "0,1,2,7,8,9",
           "(12, 'Roof', '10', 1, 10, 0), (11, 'Attic', '02', 1, 20, 0), (13, 'Gutters', '10', 1, 10, 0), "
           "(16, 'Deck', '4-B', 1, 30, 0), (14, 'Grounds', NULL, 2, 0, 0), (15, 'Attic', '2 b', 2, 0, 0), "
           "(17, '', 'Type', 2, 0, 1)");
    Insert(u"Step", "0,1,3,4,5,6,12",
           "(102, '2', 11, 'Repair', 'Loose.', '', 'Roof'), (101, '1', 11, NULL, NULL, 'Wood;', NULL), (103, "
           "'1', 11, '', NULL, NULL, ''), (104, '3', 11, ' ', ' ', '', ''), (105, '0', 12, 'Repair', "
           "'InspectResult', '', '')");
    Insert(u"Field", "0,1,3", "(710, 11, 2), (711, 11, 1)");
    Insert(u"MERGE_Inspection", "0", "(3)");
    Insert(u"MERGE_Category", "0,2,7,8", "(72, '2', 3, 0), (71, '1', 3, 0)");
    Insert(u"MERGE_Step", "0,3", "(170, 71)");
    Insert(u"InspectionCategory", "0,7,8", "(81, 1, 10)");
    Insert(u"InspectionType", "0,1", "(1, '7\" wide'), (2, 'InspectionType')");
    Insert(u"CategoryTemplate", "0,1", "(10, ''), (20, ''), (30, 'one'), (30, 'two')");
    Insert(u"InspectionTypeCategory", "0,1", "(1, 20), (1, 10), (2, 30)");
    Insert(u"Comments", "0,2,4", "(300, 'b', 'G2'), (301, 'a', 'G1'), (302, 'a', NULL), (303, 'B', '')");
    Insert(u"StepComment", "0,1", "(200, 302), (200, 300), (200, 301), (-200, 303)");
    Insert(u"InspectionTypeComment", "0,1", "(1, 302), (1, 301), (1, 303)");
    Insert(u"MaterialTemplate", "0,1,3,5", "(400, 200, 2, -1), (401, 200, 1, 0), (402, 200, 1, 0)");
    Insert(u"RatingType", "0,1", "(1, 'Condition'), (2, '7\" pipe')");
    Insert(u"RatingChoices", "0,1,2,3,4,6,8",
           "(500, 1, 'Good', -1, 0, 0, 0), (501, 1, 'Repair', 0, -1, 1, 0), (502, 1, 'RatingType', 0, 0, 0, "
           "-1), (503, 2, 'Leaks', NULL, 0, 0, 0)");
    Insert(u"Pickers", "0,1,2", "('PickerName', 'z', 600), ('PickerName', 'a', 601), ('Colour', 'red', 602)");
    Insert(u"UniqueID", "0,1", "('TableName', 41)");
  }
  // Adds rows in SQL's words, their columns told by ordinal: "0,3", "(1, 'Roof'), (2, NULL)".
  void Insert(TextView table, const std::string& ordinals, const std::string& rows) {
    data::Connection& connection = Data().Get(data::FindLayout(table)->database);
    std::string names;
    for (const Text& ordinal : device::Split(FromUtf8(ordinals), u',')) {
      const auto at = static_cast<std::size_t>(device::LeadingInteger(ordinal));
      names += (names.empty() ? "" : ", ") + data::QuotedName(connection.ColumnsOf(table)->at(at).name);
    }
    const std::string sql = "INSERT INTO " + data::QuotedName(table) + " (" + names + ") VALUES " + rows;
    EXPECT_TRUE(connection.ExecuteNative(sql)) << sql;
  }
  // The first integer column of each row that the statement finds.
  Ids Find(TextView sql) {
    const std::size_t column = sql.find(u".*");
    const std::size_t begin = column == TextView::npos ? sql.find(u"FROM ") + 5 : 7;
    const auto rows = Table(sql.substr(begin, sql.find_first_of(u" .", begin) - begin));
    EXPECT_TRUE(rows->OpenSQL(sql));
    EXPECT_FALSE(rows->Failed()) << ToUtf8(sql);
    const auto key = std::ranges::find(rows->Columns(), data::ValueType::Integer, &data::ColumnDef::type);
    Ids found;
    for (int n = 0; n < rows->RecordCount() && rows->GetRecord(n); ++n)
      found.push_back(*std::get<std::int32_t*>(key->member));
    return found;
  }
};

INSTANTIATE_TEST_SUITE_P(Names, SqlDialectTest, ::testing::Values("Fresh", "Generated"),
                         [](const auto& each) { return std::string(each.param); });

constexpr const char16_t* kStepsOfVisit =
    u"SELECT Step.* FROM (Step INNER JOIN Category ON Step.CategoryID = Category.CategoryID) INNER JOIN "
    u"Inspection ON Category.InspectionID = Inspection.InspectionID WHERE (((Step.Comments)>\"\") AND "
    u"((Inspection.InspectionID)= %d)%s) ORDER BY StepNumber;";
constexpr const char16_t* kAllSteps =
    u"SELECT Step.* FROM (Category INNER JOIN Inspection ON Category.InspectionID = Inspection.InspectionID) "
    u"INNER JOIN Step ON Category.CategoryID = Step.CategoryID WHERE (((Inspection.InspectionID)= %d))%s;";
const Text kRatings =
    u"SELECT RatingChoices.* FROM RatingType INNER JOIN RatingChoices ON RatingType.ID = "
    u"RatingChoices.RatingTypeID WHERE (((RatingType.RatingType)";
constexpr const char16_t* kTypeCategories =
    u"SELECT CategoryTemplate.* FROM InspectionType INNER JOIN (CategoryTemplate INNER JOIN "
    u"InspectionTypeCategory ON CategoryTemplate.ID = InspectionTypeCategory.CategoryID) ON "
    u"InspectionType.ID = InspectionTypeCategory.InspectionTypeID WHERE "
    u"(((InspectionType.InspectionType)=\"%s\"));";
const Text kByNumber = u"SELECT * FROM Category WHERE ((InspectionID = %d) AND (CategoryNumber = %s))";
const Text kByTemplate = u"SELECT * FROM %s WHERE ((InspectionID = %d) AND (CategoryTemplateID = %d))";
TEST_P(SqlDialectTest, RowsAreFoundInTheirOrder) {
  const std::pair<Text, Ids> kCases[] = {
      {u"SELECT * FROM Inspection WHERE InspectionNum = 'InspectionNum'", {1}},
      {u"SELECT * FROM Category WHERE InspectionID = 1 ORDER BY CategoryNumber, CategoryTitle",
       {11, 13, 12, 16}},
      {u"SELECT * FROM Category WHERE CategoryNumber = 2", {11}},
      {u"SELECT * FROM Category WHERE CategoryNumber = 10", {12, 13}},
      {Format(kByNumber, 1, u"02"), {11}},
      {Format(kByNumber, 1, u"4-B"), {16}},
      // A word that looks like the mark of a value must not be taken for one.
      {Format(kByNumber, 1, u"\"10\""), {12, 13}},
      {Format(kByNumber, 1, u"?s"), {}},
      {Format(kByNumber, 2, u"Type"), {17}},
      {Format(kByNumber, 2, u""), {14}},
      {Format(kByTemplate, u"Category", 1, 10), {12, 13}},
      {Format(kByTemplate, u"InspectionCategory", 1, 10), {81}},
      {Format(kByTemplate, u"MERGE_InspectionCategory", 3, 0), {72, 71}},
      {u"SELECT * FROM Step WHERE CategoryID = 11 Order By StepNumber", {101, 103, 102, 104}},
      {u"SELECT * FROM MERGE_Step WHERE CategoryID = 71 Order By StepNumber", {170}},
      {u"SELECT Step.* FROM Step INNER JOIN Category ON Step.CategoryID = Category.CategoryID WHERE (( "
       u"((Step.InspectResult)<\" \") )AND ((Category.CategoryID)=11)) ORDER BY StepNumber;",
       {101, 103}},
      {u"SELECT Step.* FROM Step INNER JOIN Category ON Step.CategoryID = Category.CategoryID WHERE "
       u"((((Step.Comments)>\" \") OR ((Step.Materials)>\" \") OR ((Step.InspectResult)>\" \") )AND "
       u"((Category.CategoryID)=11)) ORDER BY StepNumber;",
       {101, 102}},
      {Format(kStepsOfVisit, 1, u""), {105, 102, 104}},
      {Format(kStepsOfVisit, 1, u" AND ((Step.InspectResult)= \"Repair\")"), {105, 102}},
      {Format(kStepsOfVisit, 1, u" AND ((Step.InspectResult)= \"InspectResult\")"), {}},
      {Format(kAllSteps, 1, u""), {102, 101, 103, 104, 105}},
      {Format(kAllSteps, 1, u" ORDER BY Step.MajorSystem, Step.StepNumber"), {105, 101, 103, 104, 102}},
      {u"SELECT * FROM Field WHERE Field.CategoryID = 11 Order By Field.SequenceNumber", {711, 710}},
      {Format(kTypeCategories, u"7\" wide"), {20, 10}},
      {Format(kTypeCategories, u"InspectionType"), {30, 30}},
      {Format(kTypeCategories, u"CategoryTemplate"), {}},
      {u"SELECT Comments.* FROM Comments INNER JOIN StepComment ON Comments.ID = StepComment.CommentID WHERE "
       u"(((StepComment.StepID)=200))ORDER BY GroupName, Comments;",
       {302, 301, 300}},
      {u"SELECT Comments.* FROM InspectionType INNER JOIN (Comments INNER JOIN InspectionTypeComment ON "
       u"Comments.ID = InspectionTypeComment.CommentID) ON InspectionType.ID = "
       u"InspectionTypeComment.InspectionTypeID WHERE (((InspectionType.id)=1));",
       {302, 301, 303}},
      {u"SELECT * FROM StepComment WHERE StepID = -200", {-200}},
      {u"SELECT * FROM MaterialTemplate WHERE StepID = 200 ORDER BY MaterialOrder", {401, 402, 400}},
      {u"SELECT * FROM MaterialTemplate WHERE (StepID = 200) AND (DefaultMaterial = TRUE);", {400}},
      {Format(kRatings + u"=\"%s\"))", u"Condition"), {500, 501, 502}},
      {Format(kRatings + u"=\"%s\"))", u"7\" pipe"), {503}},
      {Format(kRatings + u"=\"%s\"))", u"RatingType"), {}},
      {kRatings + u" = \"Condition\") AND ((RatingChoices.ChoiceName) = \"RatingType\"));", {502}},
      {kRatings + u" = \"Condition\") AND ((RatingChoices.ChoiceName) = \"condition\"));", {}},
      {kRatings + u" = \"Condition\") AND ((RatingChoices.DefaultFlag) = TRUE));", {500}},
      {u"SELECT * FROM RatingChoices WHERE RatingChoices.BoldFlag = TRUE;", {501}},
      {u"SELECT * FROM RatingChoices WHERE RatingChoices.DefaultFlag = FALSE;", {501, 502, 503}},
      {u"SELECT * FROM Pickers ORDER BY PickerName", {602, 600, 601}},
      {u"SELECT Pickers.* FROM Pickers WHERE PickerName = \"PickerName\" ORDER BY PickerChoice;", {601, 600}},
      {u"SELECT * FROM UniqueID WHERE TableName = \"TableName\"", {41}}};
  for (const auto& [sql, expected] : kCases) EXPECT_EQ(Find(sql), expected) << ToUtf8(sql);
}

TEST_P(SqlDialectTest, ADeletionTakesTheRowsMeantAndNoOthers) {
  const std::pair<TextView, Ids> kCases[] = {{u"Pickers WHERE PickerName = \"Pickers\"", {600, 601, 602}},
                                             {u"Pickers WHERE PickerName = \"PickerName\"", {602}},
                                             {u"Step WHERE CategoryID = 11", {105}},
                                             {u"Category WHERE InspectionID = 2", {12, 11, 13, 16}},
                                             {u"MERGE_InspectionCategory WHERE InspectionID = 3", {}}};
  for (const auto& [rows, left] : kCases) {
    EXPECT_EQ(Find(Format(u"DELETE FROM %s", rows)), Ids{});
    const TextView table = rows.substr(0, rows.find(u' '));
    EXPECT_EQ(Find(Format(u"SELECT * FROM %s", table)), left) << ToUtf8(rows);
  }
}

TEST_P(SqlDialectTest, WhatIsNotUnderstoodFailsAloudAndReadsAsEmpty) {
  const Text deep = u"SELECT * FROM Step WHERE " + Text(5000, u'(') + u"StepID = 1" + Text(5000, u')');
  const Text kCases[] = {u"SELECT * FROM Inspection WHERE InspectionNum = 'O'Hara'",
                         u"SELECT * FROM Step WHERE Colour = 1",
                         u"SELECT * FROM Step WHERE Inspection.InspectionID = 1",
                         u"SELECT * FROM Step WHERE StepID = 1 2",
                         u"SELECT * FROM Step WHERE",
                         u"UPDATE Step SET StepID = 1",
                         u"",
                         deep};
  int count = m_Faults.Count();
  for (const Text& sql : kCases) {
    const auto steps = Table(u"Step");
    EXPECT_TRUE(steps->OpenSQL(sql) && steps->Failed()) << ToUtf8(sql.substr(0, 80));
    EXPECT_EQ(steps->RecordCount(), 0);
    EXPECT_EQ(m_Faults.Count(), ++count);
  }
  // A value in double quotes that reached the engine would be a column there, never a text.
  EXPECT_FALSE(Data().Template().ExecuteNative("SELECT * FROM Other WHERE A = \"leak\""));
  EXPECT_FALSE(Data().Template().ExecuteNative("DELETE FROM Pickers WHERE \"leak\" = \"leak\""));
}

}  // namespace
}  // namespace inspector::tests
