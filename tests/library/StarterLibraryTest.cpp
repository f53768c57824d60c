// The library that is shipped: rules that no row may break, as queries for the rows that do.
#include <algorithm>

#include "LibraryDevice.h"
#include "device/CodePage.h"

namespace inspector::tests {
namespace {

// Imported once; no test changes it.
class StarterLibraryTest : public testing::Test {
protected:
  static void SetUpTestSuite() {
    s_Device = std::make_unique<LibraryDevice>();
    s_Problem = s_Device->Import(StarterLibrary());
  }
  static void TearDownTestSuite() { s_Device.reset(); }
  void SetUp() override { ASSERT_EQ(s_Problem, ""); }

  static std::string Ask(const std::string& sql) { return s_Device->Ask(sql); }
  static void ExpectNone(const std::string& sql) { EXPECT_EQ(Ask(sql), "") << sql; }

  static inline std::unique_ptr<LibraryDevice> s_Device;
  static inline std::string s_Problem = "not imported";
};

TEST_F(StarterLibraryTest, IsLargeEnoughToStartABusinessWith) {
  EXPECT_EQ(Ask("SELECT (SELECT count(*) FROM StepTemplate) >= 120, (SELECT count(*) FROM MaterialTemplate) "
                ">= 250, (SELECT count(*) FROM Comments) >= 500, (SELECT count(*) FROM ExpandedText) >= 40"),
            "1|1|1|1");
  EXPECT_EQ(Ask("SELECT Layout FROM InspectionType ORDER BY ID"),
            "4 Column\n3 Column\n2 Column\n2 Column French");
  EXPECT_EQ(Ask("SELECT count(*) FROM CategoryTemplate WHERE FormType = 1"), "2");
  EXPECT_EQ(Ask("SELECT FinePrint > '', DefinitionOfTerms > '', FooterText > '', SummaryDisclaimer > '', "
                "ColumnWidth1 + ColumnWidth2 + ColumnWidth3 + ColumnWidth4 + ColumnWidth5 FROM Options"),
            "1|1|1|1|0.0");
  // Zero stands for the widths of the first type, four columns here.
  EXPECT_EQ(s_Device->m_Workspace->Options().m_ColumnWidth[3], 1.0);
}

TEST_F(StarterLibraryTest, EveryLinkLeadsToARowAndNothingIsOutOfReach) {
  const std::map<TextView, std::string> kTargets = {{u"InspectionTypeID", "InspectionType"},
                                                    {u"CategoryID", "CategoryTemplate"},
                                                    {u"StepID", "StepTemplate"},
                                                    {u"CommentID", "Comments"},
                                                    {u"MaterialID", "MaterialTemplate"},
                                                    {u"RatingTypeID", "RatingType"}};
  for (const data::TableLayout& layout : data::AllLayouts()) {
    for (const data::ColumnLayout& column : layout.columns) {
      if (!kTargets.contains(column.name) || layout.database != data::DatabaseKind::Template) continue;
      const std::string name = ToUtf8(column.name);
      ExpectNone("SELECT " + name + " FROM " + ToUtf8(layout.name) + " WHERE ifnull(" + name +
                 ", 0) NOT IN (SELECT ID FROM " + kTargets.at(column.name) + ")");
    }
  }
  ExpectNone("SELECT ID FROM StepTemplate WHERE ID NOT IN (SELECT StepID FROM CategoryStep)");
  ExpectNone(
      "SELECT ID FROM CategoryTemplate WHERE ID NOT IN (SELECT CategoryID FROM InspectionTypeCategory)");
  ExpectNone(
      "SELECT ID FROM Comments WHERE ID NOT IN (SELECT CommentID FROM StepComment UNION SELECT CommentID "
      "FROM CategoryComment UNION SELECT CommentID FROM MaterialComment UNION SELECT CommentID FROM "
      "InspectionTypeComment)");
  for (const std::string table :
       {"InspectionType", "CategoryTemplate", "StepTemplate", "Comments", "RatingType", "RatingChoices",
        "MaterialTemplate", "Pickers", "FieldTemplate", "ExpandedText"})
    // The device gives its own rows keys from 25000.
    ExpectNone("SELECT ID FROM " + table +
               " GROUP BY ID HAVING count(*) > 1 OR ifnull(ID, 0) NOT BETWEEN 1 AND 24999");
  ExpectNone("SELECT ShortCut FROM ExpandedText GROUP BY ShortCut HAVING count(*) > 1");
  ExpectNone("SELECT * FROM UniqueID");
}

TEST_F(StarterLibraryTest, RowsKeepTheRulesOfTheTablet) {
  const char* kBroken[] = {
      // A type has one default; the rating of a comment is a choice of each step that offers it.
      "SELECT ID FROM RatingType WHERE (SELECT count(*) FROM RatingChoices WHERE RatingTypeID = "
      "RatingType.ID AND DefaultFlag) <> 1",
      "SELECT ID FROM (SELECT Comments.ID, Rating, u.StepID FROM Comments LEFT JOIN (SELECT CommentID, "
      "StepID FROM StepComment UNION SELECT CommentID, StepID FROM MaterialComment JOIN MaterialTemplate m "
      "ON m.ID = MaterialID) u ON u.CommentID = Comments.ID WHERE Rating > '') WHERE NOT EXISTS (SELECT 1 "
      "FROM StepTemplate s JOIN RatingChoices c USING (RatingTypeID) WHERE s.ID = StepID AND ChoiceName = "
      "Rating)",
      // A serious finding stands out at every step, whatever scale it is rated on; "Data" judges nothing.
      "SELECT ID FROM RatingType WHERE RatingType <> 'Data' AND (SELECT max(BoldFlag) + max(RedFlag) + "
      "max(SummaryFlag) + max(CommentPromptFlag) FROM RatingChoices WHERE RatingTypeID = RatingType.ID) <> 4",
      // The tablet looks for "material;" in the step's text, which the end of a longer one would answer.
      "SELECT m.ID, n.ID FROM MaterialTemplate m JOIN MaterialTemplate n USING (StepID) WHERE m.ID <> n.ID "
      "AND substr(n.Material, -length(m.Material)) = m.Material",
      "SELECT m.ID FROM MaterialTemplate m JOIN MaterialTemplate n USING (StepID) WHERE m.Material = "
      "'Other:' AND m.ID <> n.ID AND n.MaterialOrder >= m.MaterialOrder",
      "SELECT ID FROM MaterialTemplate WHERE Material = '' OR Material GLOB '*[;^]*' OR CommentsExist <> (ID "
      "IN (SELECT MaterialID FROM MaterialComment))",
      "SELECT StepID FROM MaterialTemplate GROUP BY StepID HAVING sum(DefaultMaterial) > 1",
      // Default comments hang on types and categories.
      "SELECT ID FROM Comments WHERE Comments LIKE '[*%' AND (instr(Comments, ']') = 0 OR ID IN (SELECT "
      "CommentID FROM StepComment) OR ID NOT IN (SELECT CommentID FROM CategoryComment UNION SELECT "
      "CommentID FROM InspectionTypeComment))",
      "SELECT ID FROM Comments WHERE Comments = '' OR Comments GLOB '[{}\u00ac]*' OR instr(Comments, '***')",
      // A category is a form with fields or has steps, whose numbers sort.
      "SELECT ID FROM CategoryTemplate WHERE CategoryNumber NOT BETWEEN 10 AND 99 OR (ID IN (SELECT "
      "CategoryID FROM CategoryStep)) <> (FormType = 0) OR (ID IN (SELECT CategoryID FROM FieldTemplate)) <> "
      "(FormType = 1)",
      "SELECT StepID FROM (SELECT StepID, StepNumber, CategoryNumber, lag(StepNumber, 1, '') OVER (PARTITION "
      "BY CategoryID ORDER BY l.rowid) AS Last FROM CategoryStep l JOIN StepTemplate s ON s.ID = StepID JOIN "
      "CategoryTemplate c ON c.ID = CategoryID) WHERE length(StepNumber) <> 5 OR Last >= StepNumber OR "
      "StepNumber NOT LIKE CategoryNumber || '.%'",
      "SELECT ID FROM StepTemplate WHERE Keyword > '' AND instr(Keyword, '-') = 0",
      "SELECT ID FROM FieldTemplate WHERE Type = 5 AND Label NOT IN (SELECT PickerName FROM Pickers)"};
  for (const char* const broken : kBroken) ExpectNone(broken);
}

TEST_F(StarterLibraryTest, TextsCanBeShownPrintedAndParsed) {
  const Library all = s_Device->Everything();
  for (const auto& [table, rows] : all) {
    for (const data::RawRow& row : rows) {
      for (const data::RawValue& value : row) {
        const Text* const text = std::get_if<Text>(&value);
        if (!text) continue;
        EXPECT_TRUE(device::FitsCodePage(*text)) << ToUtf8(*text);
        // Line breaks come in pairs; nothing else is below a blank.
        const Text line = device::ReplaceAll(*text, u"\r\n", u"");
        EXPECT_TRUE(std::ranges::all_of(line, [](char16_t c) { return c >= u' '; })) << ToUtf8(line);
      }
    }
  }
  std::set<std::string> kinds;
  for (const data::RawRow& row : all.at(u"Comments")) {
    const std::vector<Text> parts = device::Split(std::get<Text>(row[2]), u'^');
    const auto id = std::get<std::int32_t>(row[0]);
    EXPECT_EQ(parts.size() % 2, 1u) << id << ": a placeholder is open";
    for (std::size_t at = 1; at < parts.size(); at += 2) {
      const std::string name = ToUtf8(parts[at]);
      const std::string kind = name.empty() ? "gap" : name[0] == '(' ? "alternatives" : "picker";
      kinds.insert(kind);
      const bool isKnown =
          kind == "picker" ? Ask("SELECT 1 FROM Pickers WHERE PickerName = '" + name + "'") != ""
                           : kind == "gap" || (name.ends_with(')') && name.find(',') != std::string::npos);
      EXPECT_TRUE(isKnown) << id << ": " << name;
    }
  }
  EXPECT_EQ(kinds.size(), 3u);
}

}  // namespace
}  // namespace inspector::tests
