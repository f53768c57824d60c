// Every statement of the program, on tables with full names and on tables that the program made itself.
#include "StoreTest.h"
#include "device/Format.h"

namespace inspector::tests {
namespace {

using device::Format;
using Ids = std::vector<int>;

class SqlDialectTest : public StoreTest, public ::testing::WithParamInterface<const char*> {
protected:
  void SetUp() override {
    if (GetParam() == std::string("Fresh")) {
      CreateFresh();
      OpenBoth();
    } else {
      CreateGenerated();
    }
    if (HasFatalFailure()) return;
    AddVisits();
    AddLibrary();
  }

  void AddVisits() {
    Add(u"Inspection", {{0, 1}, {11, u"InspectionNum"}});
    Add(u"Inspection", {{0, 2}, {11, u"Inspection"}});
    Add(u"Category", {{0, 12}, {1, u"Roof"}, {2, u"10"}, {7, 1}, {8, 10}});
    Add(u"Category", {{0, 11}, {1, u"Attic"}, {2, u"02"}, {7, 1}, {8, 20}});
    Add(u"Category", {{0, 13}, {1, u"Gutters"}, {2, u"10"}, {7, 1}, {8, 10}});
    Add(u"Category", {{0, 16}, {1, u"Deck"}, {2, u"4-B"}, {7, 1}, {8, 30}});
    Add(u"Category", {{0, 14}, {1, u"Grounds"}, {7, 2}});
    Add(u"Category", {{0, 15}, {1, u"Attic"}, {2, u"2 b"}, {7, 2}});
    Add(u"Category", {{0, 17}, {2, u"Type"}, {7, 2}, {9, 1}});
    Store(u"Category", 14, 2, "NULL");
    Add(u"Step", {{0, 102}, {1, u"2"}, {3, 11}, {4, u"Repair"}, {5, u"Loose."}, {12, u"Roof"}});
    Add(u"Step", {{0, 101}, {1, u"1"}, {3, 11}, {6, u"Wood;"}});
    Add(u"Step", {{0, 103}, {1, u"1"}, {3, 11}});
    Add(u"Step", {{0, 104}, {1, u"3"}, {3, 11}, {4, u" "}, {5, u" "}});
    Add(u"Step", {{0, 105}, {1, u"0"}, {3, 12}, {4, u"Repair"}, {5, u"InspectResult"}});
    for (const int ordinal : {4, 5, 12}) Store(u"Step", 101, ordinal, "NULL");
    for (const int ordinal : {5, 6}) Store(u"Step", 103, ordinal, "NULL");
    Add(u"Field", {{0, 710}, {1, 11}, {3, 2}});
    Add(u"Field", {{0, 711}, {1, 11}, {3, 1}});
    Add(u"MERGE_Inspection", {{0, 3}});
    Add(u"MERGE_Category", {{0, 72}, {2, u"2"}, {7, 3}});
    Add(u"MERGE_Category", {{0, 71}, {2, u"1"}, {7, 3}});
    Add(u"MERGE_Step", {{0, 170}, {3, 71}});
    Add(u"InspectionCategory", {{0, 81}, {7, 1}, {8, 10}});
  }

  void AddLibrary() {
    Add(u"InspectionType", {{0, 1}, {1, u"7\" wide"}});
    Add(u"InspectionType", {{0, 2}, {1, u"InspectionType"}});
    Add(u"CategoryTemplate", {{0, 10}});
    Add(u"CategoryTemplate", {{0, 20}});
    Add(u"CategoryTemplate", {{0, 30}, {1, u"one"}});
    Add(u"CategoryTemplate", {{0, 30}, {1, u"two"}});
    for (const int category : {20, 10}) Add(u"InspectionTypeCategory", {{0, 1}, {1, category}});
    Add(u"InspectionTypeCategory", {{0, 2}, {1, 30}});
    Add(u"StepTemplate", {{0, 200}, {3, 1}});
    Add(u"StepTemplate", {{0, 201}, {3, 2}});
    for (const int step : {201, 200}) Add(u"CategoryStep", {{0, 10}, {1, step}});
    Add(u"Comments", {{0, 300}, {2, u"b"}, {4, u"G2"}});
    Add(u"Comments", {{0, 301}, {2, u"a"}, {4, u"G1"}});
    Add(u"Comments", {{0, 302}, {2, u"a"}});
    Add(u"Comments", {{0, 303}, {2, u"B"}});
    Store(u"Comments", 302, 4, "NULL");
    for (const int comment : {302, 300, 301}) Add(u"StepComment", {{0, 200}, {1, comment}});
    Add(u"StepComment", {{0, -200}, {1, 303}, {2, u"-200-303"}});
    for (const int comment : {301, 300}) Add(u"CategoryComment", {{0, 10}, {1, comment}});
    for (const int comment : {302, 301, 303}) Add(u"InspectionTypeComment", {{0, 1}, {1, comment}});
    Add(u"MaterialTemplate", {{0, 400}, {1, 200}, {3, 2}, {5, -1}});
    Add(u"MaterialTemplate", {{0, 401}, {1, 200}, {3, 1}});
    Add(u"MaterialTemplate", {{0, 402}, {1, 200}, {3, 1}});
    for (const int comment : {303, 301}) Add(u"MaterialComment", {{0, 400}, {1, comment}});
    Add(u"RatingType", {{0, 1}, {1, u"Condition"}});
    Add(u"RatingType", {{0, 2}, {1, u"7\" pipe"}});
    Add(u"RatingChoices", {{0, 500}, {1, 1}, {2, u"Good"}, {3, -1}});
    Add(u"RatingChoices", {{0, 501}, {1, 1}, {2, u"Repair"}, {4, -1}, {6, -1}});
    Add(u"RatingChoices", {{0, 502}, {1, 1}, {2, u"RatingType"}, {8, -1}});
    Add(u"RatingChoices", {{0, 503}, {1, 2}, {2, u"Leaks"}});
    for (const auto& [id, ordinal] : {std::pair(500, 3), {501, 4}, {501, 6}, {502, 8}})
      Store(u"RatingChoices", id, ordinal, "-1");  // true as other programs write it
    Store(u"RatingChoices", 503, 3, "NULL");
    Store(u"MaterialTemplate", 400, 5, "-1");
    Add(u"Pickers", {{0, u"PickerName"}, {1, u"z"}, {2, 600}});
    Add(u"Pickers", {{0, u"PickerName"}, {1, u"a"}, {2, 601}});
    Add(u"Pickers", {{0, u"Colour"}, {1, u"red"}, {2, 602}});
    Add(u"FieldTemplate", {{0, 700}, {3, 2}, {4, 10}});
    Add(u"FieldTemplate", {{0, 701}, {3, 1}, {4, 10}});
    Add(u"UniqueID", {{0, u"TableName"}, {1, 41}});
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
constexpr const char16_t* kChoices =
    u"SELECT RatingChoices.* FROM RatingType INNER JOIN RatingChoices ON RatingType.ID = "
    u"RatingChoices.RatingTypeID WHERE (((RatingType.RatingType)=\"%s\"))";
constexpr const char16_t* kNamedChoice =
    u"SELECT RatingChoices.* FROM RatingType INNER JOIN RatingChoices ON RatingType.ID = "
    u"RatingChoices.RatingTypeID WHERE (((RatingType.RatingType) = \"%s\") AND ((RatingChoices.ChoiceName) = "
    u"\"%s\"));";
constexpr const char16_t* kTypeCategories =
    u"SELECT CategoryTemplate.* FROM InspectionType INNER JOIN (CategoryTemplate INNER JOIN "
    u"InspectionTypeCategory ON CategoryTemplate.ID = InspectionTypeCategory.CategoryID) ON "
    u"InspectionType.ID = InspectionTypeCategory.InspectionTypeID WHERE "
    u"(((InspectionType.InspectionType)=\"%s\"));";
constexpr const char16_t* kByNumber =
    u"SELECT * FROM %s WHERE ((InspectionID = %d) AND (CategoryNumber = %s))";
constexpr const char16_t* kByTemplate =
    u"SELECT * FROM %s WHERE ((InspectionID = %d) AND (CategoryTemplateID = %d))";
constexpr const char16_t* kStepsInOrder = u"SELECT * FROM %s WHERE CategoryID = %d Order By StepNumber";

TEST_P(SqlDialectTest, VisitsAreFoundInTheirOrder) {
  const struct {
    TextView table;
    Text sql;
    Ids expected;
  } kCases[] = {
      {u"Inspection", u"SELECT * FROM Inspection WHERE InspectionNum = 'InspectionNum'", {1}},
      {u"Inspection", u"SELECT * FROM Inspection WHERE InspectionID = 2", {2}},
      {u"MERGE_Inspection", u"SELECT * FROM MERGE_Inspection WHERE InspectionID = 3", {3}},
      {u"Category",
       u"SELECT * FROM Category WHERE InspectionID = 1 ORDER BY CategoryNumber, CategoryTitle",
       {11, 13, 12, 16}},
      {u"Category", u"SELECT * FROM Category WHERE CategoryID = 13", {13}},
      {u"Category", u"SELECT * FROM Category WHERE CategoryNumber = 2", {11}},
      {u"Category", u"SELECT * FROM Category WHERE CategoryNumber = 10", {12, 13}},
      {u"Category", u"SELECT * FROM Category WHERE CategoryNumber = 0", {}},
      {u"Category", Format(kByNumber, u"Category", 1, u"02"), {11}},
      {u"Category", Format(kByNumber, u"Category", 1, u"4-B"), {16}},
      // A word that looks like the mark of a value must not be taken for one.
      {u"Category", Format(kByNumber, u"Category", 1, u"\"10\""), {12, 13}},
      {u"Category", Format(kByNumber, u"Category", 1, u"?s"), {}},
      {u"Category", Format(kByNumber, u"Category", 2, u"Type"), {17}},
      {u"Category", Format(kByNumber, u"Category", 2, u""), {14}},
      {u"Category", Format(kByTemplate, u"Category", 1, 10), {12, 13}},
      {u"InspectionCategory", Format(kByTemplate, u"InspectionCategory", 1, 10), {81}},
      {u"MERGE_InspectionCategory", Format(kByTemplate, u"MERGE_InspectionCategory", 3, 0), {72, 71}},
      {u"MERGE_Category",
       u"SELECT * FROM MERGE_Category WHERE InspectionID = 3 ORDER BY CategoryNumber, CategoryTitle",
       {71, 72}},
      {u"Step", Format(kStepsInOrder, u"Step", 11), {101, 103, 102, 104}},
      {u"MERGE_Step", Format(kStepsInOrder, u"MERGE_Step", 71), {170}},
      {u"MERGE_Step", u"SELECT * FROM MERGE_Step WHERE StepID = 170", {170}},
      {u"Step",
       u"SELECT Step.* FROM Step INNER JOIN Category ON Step.CategoryID = Category.CategoryID WHERE (( "
       u"((Step.InspectResult)<\" \") )AND ((Category.CategoryID)=11)) ORDER BY StepNumber;",
       {101, 103}},
      {u"Step",
       u"SELECT Step.* FROM Step INNER JOIN Category ON Step.CategoryID = Category.CategoryID WHERE "
       u"((((Step.Comments)>\" \") OR ((Step.Materials)>\" \") OR ((Step.InspectResult)>\" \") )AND "
       u"((Category.CategoryID)=11)) ORDER BY StepNumber;",
       {101, 102}},
      {u"Step", Format(kStepsOfVisit, 1, u""), {105, 102, 104}},
      {u"Step", Format(kStepsOfVisit, 1, u" AND ((Step.InspectResult)= \"Repair\")"), {105, 102}},
      {u"Step", Format(kStepsOfVisit, 1, u" AND ((Step.InspectResult)= \"InspectResult\")"), {}},
      {u"Step", Format(kStepsOfVisit, 1, u" AND ((Step.InspectResult)= \"\")"), {}},
      {u"Step", Format(kAllSteps, 1, u""), {102, 101, 103, 104, 105}},
      {u"Step",
       Format(kAllSteps, 1, u" ORDER BY Step.MajorSystem, Step.StepNumber"),
       {105, 101, 103, 104, 102}},
      {u"Field",
       u"SELECT * FROM Field WHERE Field.CategoryID = 11 Order By Field.SequenceNumber",
       {711, 710}},
  };
  for (const auto& each : kCases)
    EXPECT_EQ(Find(each.table, each.sql), each.expected) << device::ToUtf8(each.sql);
}

TEST_P(SqlDialectTest, TheLibraryIsFoundInTheOrderOfItsLinks) {
  const struct {
    TextView table;
    Text sql;
    Ids expected;
  } kCases[] = {
      {u"CategoryTemplate", Format(kTypeCategories, u"7\" wide"), {20, 10}},
      {u"CategoryTemplate", Format(kTypeCategories, u"InspectionType"), {30, 30}},
      {u"CategoryTemplate", Format(kTypeCategories, u"CategoryTemplate"), {}},
      {u"CategoryTemplate", u"SELECT * FROM CategoryTemplate WHERE ID = 30", {30, 30}},
      {u"StepTemplate",
       u"SELECT StepTemplate.* FROM CategoryTemplate INNER JOIN (StepTemplate INNER JOIN CategoryStep ON "
       u"StepTemplate.ID = CategoryStep.StepID) ON CategoryStep.CategoryID = CategoryTemplate.ID WHERE "
       u"(((CategoryTemplate.ID)=10));",
       {201, 200}},
      {u"Comments",
       u"SELECT Comments.* FROM Comments INNER JOIN StepComment ON Comments.ID = StepComment.CommentID WHERE "
       u"(((StepComment.StepID)=200))ORDER BY GroupName, Comments;",
       {302, 301, 300}},
      {u"Comments",
       u"SELECT Comments.* FROM Comments INNER JOIN StepComment  ON Comments.ID = StepComment.CommentID  "
       u"WHERE (((StepComment.StepID)=200))ORDER BY Comments.Comments;",
       {302, 301, 300}},
      {u"Comments",
       u"SELECT Comments.* FROM CategoryTemplate INNER JOIN (Comments INNER JOIN CategoryComment ON "
       u"Comments.ID = CategoryComment.CommentID) ON CategoryTemplate.ID = CategoryComment.CategoryID WHERE "
       u"(((CategoryTemplate.ID)=10));",
       {301, 300}},
      {u"Comments",
       u"SELECT Comments.* FROM InspectionType INNER JOIN (Comments INNER JOIN InspectionTypeComment ON "
       u"Comments.ID = InspectionTypeComment.CommentID) ON InspectionType.ID = "
       u"InspectionTypeComment.InspectionTypeID WHERE (((InspectionType.id)=1));",
       {302, 301, 303}},
      {u"Comments",
       u"SELECT Comments.* FROM MaterialTemplate INNER JOIN (Comments INNER JOIN MaterialComment ON "
       u"Comments.ID = MaterialComment.CommentID) ON MaterialTemplate.ID = MaterialComment.MaterialID WHERE "
       u"(((MaterialTemplate.ID)=400));",
       {303, 301}},
      {u"Comments", u"SELECT * FROM Comments", {300, 301, 302, 303}},
      {u"Comments", u"SELECT * FROM Comments WHERE ID = 301", {301}},
      {u"StepComment", u"SELECT * FROM StepComment WHERE StepID = -200", {-200}},
      {u"MaterialTemplate",
       u"SELECT * FROM MaterialTemplate WHERE StepID = 200 ORDER BY MaterialOrder",
       {401, 402, 400}},
      {u"MaterialTemplate",
       u"SELECT * FROM MaterialTemplate WHERE (StepID = 200) AND (DefaultMaterial = TRUE);",
       {400}},
      {u"RatingType", u"SELECT * FROM RatingType WHERE RatingType.ID = 2", {2}},
      {u"RatingChoices", Format(kChoices, u"Condition"), {500, 501, 502}},
      {u"RatingChoices", Format(kChoices, u"7\" pipe"), {503}},
      {u"RatingChoices", Format(kChoices, u"RatingType"), {}},
      {u"RatingChoices", Format(kNamedChoice, u"Condition", u"RatingType"), {502}},
      {u"RatingChoices", Format(kNamedChoice, u"Condition", u"condition"), {}},
      {u"RatingChoices",
       u"SELECT RatingChoices.* FROM RatingType INNER JOIN RatingChoices ON RatingType.ID = "
       u"RatingChoices.RatingTypeID WHERE (((RatingType.RatingType) = \"Condition\") AND "
       u"((RatingChoices.DefaultFlag) = TRUE));",
       {500}},
      {u"RatingChoices", u"SELECT * FROM RatingChoices WHERE RatingChoices.BoldFlag = TRUE;", {501}},
      {u"RatingChoices", u"SELECT * FROM RatingChoices WHERE RatingChoices.RedFlag = TRUE;", {502}},
      {u"RatingChoices", u"SELECT * FROM RatingChoices WHERE RatingChoices.SummaryFlag = TRUE;", {501}},
      {u"RatingChoices",
       u"SELECT * FROM RatingChoices WHERE RatingChoices.DefaultFlag = FALSE;",
       {501, 502, 503}},
      {u"RatingChoices",
       u"SELECT RatingChoices.* FROM StepTemplate INNER JOIN (RatingType INNER JOIN RatingChoices ON "
       u"RatingType.ID = RatingChoices.RatingTypeID) ON StepTemplate.RatingTypeID = RatingType.ID WHERE "
       u"((StepTemplate.ID=200) AND ((RatingChoices.SummaryFlag)=TRUE)AND "
       u"((RatingChoices.ChoiceName)=\"Repair\"))",
       {501}},
      {u"Pickers", u"SELECT * FROM Pickers ORDER BY PickerName", {602, 600, 601}},
      {u"Pickers",
       u"SELECT Pickers.* FROM Pickers WHERE PickerName = \"PickerName\" ORDER BY PickerChoice;",
       {601, 600}},
      {u"FieldTemplate",
       u"SELECT * FROM FieldTemplate WHERE FieldTemplate.CategoryID = 10 Order By FieldTemplate.Sequence",
       {701, 700}},
      {u"UniqueID", u"SELECT * FROM UniqueID WHERE TableName = \"TableName\"", {41}},
  };
  for (const auto& each : kCases)
    EXPECT_EQ(Find(each.table, each.sql), each.expected) << device::ToUtf8(each.sql);
}

TEST_P(SqlDialectTest, ADeletionTakesTheRowsMeantAndNoOthers) {
  const struct {
    TextView table;
    Text sql;
    Ids left;
  } kCases[] = {
      {u"Pickers", u"DELETE FROM Pickers WHERE PickerName = \"Pickers\"", {600, 601, 602}},
      {u"Pickers", u"DELETE FROM Pickers WHERE PickerName = \"PickerName\"", {602}},
      {u"Step", u"DELETE FROM Step WHERE CategoryID = 11", {105}},
      {u"Category", u"DELETE FROM Category WHERE InspectionID = 2", {12, 11, 13, 16}},
      {u"MERGE_Category", u"DELETE FROM MERGE_InspectionCategory WHERE InspectionID = 3", {}},
  };
  for (const auto& each : kCases) {
    EXPECT_EQ(Find(each.table, each.sql), Ids{});
    EXPECT_EQ(Find(each.table, u"SELECT * FROM " + Text(each.table)), each.left) << device::ToUtf8(each.sql);
  }
}

TEST_P(SqlDialectTest, WhatIsNotUnderstoodFailsAloudAndReadsAsEmpty) {
  const Text deep = u"SELECT * FROM Step WHERE " + Text(5000, u'(') + u"StepID = 1" + Text(5000, u')');
  const Text kCases[] = {
      u"SELECT * FROM Inspection WHERE InspectionNum = 'O'Hara'",
      u"SELECT * FROM Step WHERE Colour = 1",
      u"SELECT * FROM Step WHERE Inspection.InspectionID = 1",
      u"SELECT * FROM Step WHERE StepID = 1 2",
      u"SELECT * FROM Step WHERE",
      u"UPDATE Step SET StepID = 1",
      u"",
      deep,
  };
  int count = m_Faults.Count();
  for (const Text& sql : kCases) {
    const auto steps = Table(u"Step");
    EXPECT_TRUE(steps->OpenSQL(sql));
    EXPECT_TRUE(steps->Failed()) << device::ToUtf8(sql.substr(0, 80));
    EXPECT_EQ(steps->RecordCount(), 0);
    EXPECT_EQ(m_Faults.Count(), ++count);
  }
  // A value in double quotes that reached the engine would be a column there, never a text.
  EXPECT_FALSE(Data().Template().ExecuteNative("SELECT * FROM Other WHERE A = \"leak\""));
  EXPECT_FALSE(Data().Template().ExecuteNative("DELETE FROM Pickers WHERE \"leak\" = \"leak\""));
}

TEST(StoredTypeTest, DeclaredTypesCompareWithoutCase) {
  using data::StoredType;
  const std::pair<const char*, StoredType> kCases[] = {
      {"INTEGER", StoredType::Integer},
      {"Varchar (255)", StoredType::String},
      {"VARCHAR(80)", StoredType::String},
      {"text", StoredType::LongString},
      {"Double", StoredType::Double},
      {"FLOAT", StoredType::Double},
      {"DateTime", StoredType::Date},
      {"BIT", StoredType::Boolean},
      {"long VARBINARY", StoredType::LongBinary},
      {"currency", StoredType::Unknown},
      {"", StoredType::Unknown},
  };
  for (const auto& [declared, type] : kCases) EXPECT_EQ(data::StoredTypeOf(declared), type) << declared;
}

}  // namespace
}  // namespace inspector::tests
