#include "exchange/InspectionMerge.h"

#include "ExchangeFixture.h"
#include "exchange/InspectionImport.h"
#include "exchange/TitleIndex.h"
#include "inspection/UndoLog.h"

namespace inspector::exchange {
namespace {

TEST(TitleIndexTest, FirstIsThatOfTheLowestNumberAndThenOfTheLowestRow) {
  TitleIndex index;
  EXPECT_EQ(index.First(u"Roof"), std::nullopt);
  index.Add(u"Roof", u"9", 0);
  index.Add(u"Roof", u"20", 2);
  index.Add(u"Roof", u"20", 1);
  index.Add(u"roof", u"1", 3);
  EXPECT_EQ(index.First(u"Roof"), 1) << "numbers order as texts";
  EXPECT_EQ(index.First(u"Roof "), std::nullopt);
  index.Renumber(u"Roof", 1, u"20", u"95");
  EXPECT_EQ(index.First(u"Roof"), 2);
  index.Renumber(u"Roof", 2, u"20", u"\U0001F3E0");  // behind U+FFFD, though its first unit is lower
  index.Renumber(u"Roof", 1, u"95", u"\uFFFD");
  index.Renumber(u"Roof", 0, u"9", u"\U0001F3E0");
  EXPECT_EQ(index.First(u"Roof"), 1);
}

class InspectionMergeTest : public ExchangeTest {
protected:
  void SetUp() override {
    ExchangeTest::SetUp();
    m_Device.RunInVisits("INSERT INTO Inspection (InspectionID, ClientName) VALUES (72, 'Target')");
    Document().Reopen();
  }
  // "Title number complete" is a category, "  Title number result comments" a step of the one before; "-" is
  // empty.
  void Fill(const std::string& prefix, std::int32_t inspection, const std::vector<std::string>& rows) {
    std::string statements = "BEGIN;";
    for (const std::string& row : rows) {
      std::vector<std::string> words(4);
      std::istringstream in(row);
      for (std::string& word : words) in >> word;
      for (std::string& word : words) word = word == "-" ? "''" : "'" + word + "'";
      const std::string titleAndNumber = words[0] + ", " + words[1] + ", ";
      if (row[0] == ' ')
        statements += "INSERT INTO " + prefix +
                      "Step (StepTitle, StepNumber, InspectResult, Comments, StepID, CategoryID, "
                      "PictureBefore) VALUES (" +
                      titleAndNumber + words[2] + ", " + words[3] + ", " + std::to_string(m_NextStep++) +
                      ", " + std::to_string(m_NextCategory - 1) + ", 1);";
      else
        statements += "INSERT INTO " + prefix +
                      "Category (CategoryTitle, CategoryNumber, CompleteFlag, Remarks, CategoryID, "
                      "InspectionID) VALUES (" +
                      titleAndNumber + (words[2] == "'complete'" ? "1" : "0") + ", '" + prefix + "', " +
                      std::to_string(m_NextCategory++) + ", " + std::to_string(inspection) + ");";
    }
    m_Device.RunInVisits(statements + "COMMIT");
  }
  void Stage(const std::vector<std::string>& rows) {
    m_Device.RunInVisits(
        "INSERT INTO MERGE_Inspection (InspectionID, ClientName, DwellingAddress, InspectionNum) VALUES (5, "
        "'Ana', "
        "'Elm', '7')");
    Fill("MERGE_", 5, rows);
  }
  // One line for each category and step of the target, in the order in which they were stored.
  std::string Target() {
    return InVisits(
        "SELECT printf('%s %s %d %s', CategoryTitle, CategoryNumber, CompleteFlag, Remarks) || (SELECT "
        "ifnull(group_concat(printf(' / %s %s %s %s', StepTitle, StepNumber, InspectResult, Comments), ''), "
        "'') FROM "
        "(SELECT * FROM Step WHERE Step.CategoryID = Category.CategoryID ORDER BY rowid)) FROM Category "
        "WHERE "
        "InspectionID = 72 ORDER BY rowid");
  }
  std::string Staged() {
    return InVisits("SELECT count(*) FROM MERGE_Inspection") +
           InVisits("SELECT count(*) FROM MERGE_Category") + InVisits("SELECT count(*) FROM MERGE_Step");
  }
  std::string Everything() {
    std::string rows;
    for (const char* table :
         {"Inspection", "Category", "Step", "MERGE_Inspection", "MERGE_Category", "MERGE_Step"})
      rows += InVisits(std::string("SELECT rowid, * FROM ") + table + " ORDER BY rowid") + "\n";
    return rows;
  }
  MergeOutcome Merge() { return MergeInspection(Document(), 72, 5); }

  std::int32_t m_NextCategory = 300;
  std::int32_t m_NextStep = 400;
};

TEST_F(InspectionMergeTest, RulesOfCategoriesAndSteps) {
  struct Case {
    const char* about;
    std::vector<std::string> target;
    std::vector<std::string> staged;
    const char* merged;
  };
  const Case kCases[] = {
      {"what is missing is added",
       {},
       {"Roof 20", "  Shingles 1 Poor Bent"},
       "Roof 20 0 MERGE_ / Shingles 1 Poor Bent"},
      {"an open category takes over, an empty step as well; others stay",
       {"Roof 10", "  Shingles 1", "  Gutters 2 Good"},
       {"Roof 20 complete", "  Gutters 8 Poor", "  Shingles 9 Poor Bent"},
       "Roof 20 1 MERGE_ / Shingles 9 Poor Bent / Gutters 2 Good "},
      {"a complete category keeps its own and gets missing steps",
       {"Roof 10 complete", "  Gutters 2 Good"},
       {"Roof 20", "  Shingles 9 Poor"},
       "Roof 10 1  / Gutters 2 Good  / Shingles 9 Poor "},
      {"titles differ by case", {"roof 10"}, {"Roof 20"}, "roof 10 0 \nRoof 20 0 MERGE_"},
      {"one of a title is found by the next",
       {},
       {"Roof 20", "  A 1", "Roof 30 complete", "  A 2 Good", "  A 3 Poor"},
       "Roof 30 1 MERGE_ / A 2 Good "},
      {"of several targets the first in their order, which the merge itself changes",
       {"Roof 50", "Roof 40", "  A 2", "  A 1"},
       {"Roof 60", "  A 5 Good", "Roof 70", "  B 1"},
       "Roof 70 0 MERGE_ / B 1  \nRoof 60 0 MERGE_ / A 2   / A 5 Good "},
      {"a step without findings gives the rest of what it has, and leaves room for the next",
       {"Roof 10", "  A 1"},
       {"Roof 10", "  A 7", "  A 8 Good", "  A 9 Poor"},
       "Roof 10 0 MERGE_ / A 8 Good "},
      {"no title is a title", {"- 10", "  - 1"}, {"- 20", "  - 2 Good"}, " 20 0 MERGE_ /  2 Good "},
  };
  for (const Case& each : kCases) {
    m_Device.RunInVisits(
        "DELETE FROM Step WHERE CategoryID IN (SELECT CategoryID FROM Category WHERE InspectionID = 72);"
        "DELETE FROM Category WHERE InspectionID = 72");
    Fill("", 72, each.target);
    Stage(each.staged);
    EXPECT_EQ(Merge().result, MergeResult::Merged) << each.about;
    EXPECT_EQ(Target(), each.merged) << each.about;
    EXPECT_EQ(Staged(), "000") << each.about;
  }
}

TEST_F(InspectionMergeTest, NewRowsGetTheirOwnKeysAndOthersAreNotTouched) {
  Fill("", 72, {"Cellar 10", "  Sump 1"});
  Stage({"Roof 20", "  A 1 Good", "  B 2", "Cellar 10", "  Sump 1 Yes", "  C 1"});
  m_Device.RunInVisits(
      "INSERT INTO MERGE_Inspection (InspectionID) VALUES (6);"
      "INSERT INTO MERGE_Category (CategoryID, InspectionID) VALUES (390, 6), (391, -777);"
      "INSERT INTO MERGE_Step (StepID, CategoryID) VALUES (490, 390), (491, -777);"
      "REPLACE INTO UniqueID VALUES ('InspectionCategory', 2000), ('Step', 3000)");
  const std::string other =
      InVisits("SELECT * FROM Category JOIN Step USING (CategoryID) WHERE InspectionID = 71");
  const MergeOutcome outcome = Merge();
  EXPECT_EQ(InVisits("SELECT CategoryID, StepID, StepTitle, PictureBefore FROM Category JOIN Step USING "
                     "(CategoryID) WHERE "
                     "InspectionID = 72 ORDER BY StepTitle"),
            "2001|3002|A|1\n2001|3003|B|1\n300|3001|C|1\n300|400|Sump|1");
  EXPECT_EQ(InVisits("SELECT * FROM Category JOIN Step USING (CategoryID) WHERE InspectionID = 71"), other);
  EXPECT_EQ(InVisits("SELECT ClientName FROM Inspection WHERE InspectionID = 72"), "Target");
  EXPECT_EQ(Staged(), "122");
  EXPECT_EQ(Prompts().ProgressWindows().back()->Told(),
            u"Merging Inspections...|Merging Categories...|Merging Categories... 1 of 2|Merging "
            u"Categories... 2 of 2|0|2|2");
  EXPECT_EQ(Joined(Described(outcome.done)),
            u"Added: 1 category, 3 steps.|Filled: 1 step without findings.|Number, remarks and status taken "
            u"over: 1 "
            u"category.|Left out: the header of the import (Ana, Elm, Doc # 7).");
}

TEST_F(InspectionMergeTest, PreviewSaysTheSameAndChangesNothing) {
  Fill("", 72, {"Roof 10 complete", "  A 1 Good", "  B 1", "  C 1 Good", "  E 1 Fair x"});
  Stage({"Roof 20", "  A 1 Poor", "  B 1 Poor", "  B 2 Good", "  C 2", "  D 1", "  E 9 Fair x", "Attic 5",
         "Attic 6"});
  const std::string before = Everything();
  const auto preview = PreviewMerge(Document(), 72, 5);
  ASSERT_TRUE(preview);
  EXPECT_EQ(Joined(Described(*preview)),
            u"Added: 1 category, 1 step.|Filled: 1 step without findings.|"
            u"Number, remarks and status taken over: 1 category.|There already: 1 step.|"
            u"Left out, because these steps have findings already: Roof: A.|"
            u"Left out, because a step of the same name came before: Roof: B.|Put together, because they "
            u"have one title: Attic.|"
            u"Complete, and so keeping number and remarks: Roof.|"
            u"Added without a rating to a category that stays complete: Roof: D.|"
            u"Left out: the header of the import (Ana, Elm, Doc # 7).");
  EXPECT_EQ(Everything(), before);
  EXPECT_EQ(Described(Merge().done), Described(*preview));
  for (const auto& [target, staged, says] :
       {std::tuple{72, 5, "no imported inspection 5"}, {4711, 5, "no inspection 4711 to merge into"}}) {
    EXPECT_EQ(MergeInspection(Document(), target, staged).result, MergeResult::Failed);
    EXPECT_THAT(Prompts().Last(), HasSubstr(says));
  }
}

TEST_F(InspectionMergeTest, NamesWhatTheImportReplaces) {
  Fill("", 72, {"Roof 10", "  A 1", "  B 1", "Attic 5 complete"});
  m_Device.RunInVisits(
      "UPDATE Category SET Remarks = 'mine', CommentText = 'both' WHERE CategoryTitle = 'Roof';"
      "UPDATE Step SET SummaryComment = 'mine', BitmapPath = 'a.jpg', MajorSystem = 'Roof' WHERE StepTitle = "
      "'A';"
      "UPDATE Step SET MaterialNote = 'mine' WHERE StepTitle = 'B'");
  Stage({"Roof 20", "  A 1", "  B 1 Good", "  A 2", "Attic 5", "  Z 1", "  Y 1 Good"});
  m_Device.RunInVisits(
      "UPDATE MERGE_Category SET CommentText = 'both'; UPDATE MERGE_Step SET MajorSystem = 'Roof'");
  const std::vector<Text> told = Described(*PreviewMerge(Document(), 72, 5));
  EXPECT_THAT(told, ::testing::Contains(
                        u"Replaced by what the import has there, also where that is nothing: Roof (remarks); "
                        u"Roof: A (summary comment, picture); Roof: B (material note)."));
  EXPECT_THAT(told,
              ::testing::Contains(u"Added without a rating to a category that stays complete: Attic: Z."));
  EXPECT_THAT(Described(*PreviewMerge(Document(), 72, 5), 1),
              ::testing::Contains(
                  u"Replaced by what the import has there, also where that is nothing: Roof (remarks); "
                  u"and 2 more."));
}

TEST_F(InspectionMergeTest, AllIsMergedOrNothing) {
  Fill("", 72, {"Roof 10", "  A 1"});
  Stage({"Attic 5", "  Z 1", "Roof 20", "  A 1 Poor", "  B 1 Poor"});
  const std::string before = Everything();
  for (const int step : {0, 1, 2}) {
    Prompts().CancelAtStep(step);
    EXPECT_EQ(Merge().result, MergeResult::Cancelled) << step;
    EXPECT_EQ(Prompts().Last(), "Alert: Cancelled. Nothing was merged.");
    EXPECT_EQ(Everything(), before);
  }
  Prompts().CancelAtStep(99);
  for (const char* change : {"INSERT ON Category", "INSERT ON Step WHEN NEW.StepTitle = 'B'",
                             "UPDATE ON Step", "DELETE ON MERGE_Step WHEN OLD.StepTitle = 'A'",
                             "DELETE ON MERGE_Category", "DELETE ON MERGE_Inspection"}) {
    m_Device.RunInVisits(NoRoomFor(change));
    EXPECT_EQ(Merge().result, MergeResult::Failed) << change;
    EXPECT_THAT(Prompts().Last(), HasSubstr("no room"));
    m_Device.RunInVisits(kRoomAgain);
    EXPECT_EQ(Everything(), before) << change;
  }
  EXPECT_EQ(Merge().result, MergeResult::Merged);
}

TEST_F(InspectionMergeTest, MergeIsUndoneWithWhatWasStaged) {
  Fill("", 72, {"Roof 10", "  A 1"});
  Stage({"Roof 20", "  A 1 Poor", "Attic 5", "  Z 1"});
  inspection::UndoLog log(Document());
  Document().SelectInspection(72);
  Document().SelectCategory(300);
  const std::string before = Everything();
  Prompts().CancelAtStep(2);
  Merge();
  EXPECT_EQ(log.Action(), u"");
  Prompts().CancelAtStep(99);
  const MergeOutcome outcome = Merge();
  EXPECT_TRUE(outcome.isOpenOne);
  EXPECT_EQ(Document().Categories().RecordCount(), 2) << "the open document has the new one";
  EXPECT_EQ(Document().Categories().m_CategoryNumber, u"20") << "and what was taken over";
  EXPECT_EQ(Document().Categories().m_CategoryID, 300);
  EXPECT_EQ(log.Action(), u"Merge");
  EXPECT_TRUE(log.Undo());
  EXPECT_EQ(Everything(), before);
  Document().SelectInspection(71);
  EXPECT_FALSE(Merge().isOpenOne);
}

// What an inspection has after it was exported, imported and merged into an empty one.
TEST_F(InspectionMergeTest, RoundTripGivesTheSameButForTheAsymmetries) {
  m_Device.RunInVisits(
      "UPDATE Step SET SummaryComment = 'a \xC2\xA4 b \xC2\xA7 c' WHERE StepID = 92;"
      "INSERT INTO Category VALUES (83, 'Form', '99', '\xC5\x81' || char(13, 10) || 'two lines', '', 0, 0, "
      "71, 5, 1);"
      "INSERT INTO Field (ID, CategoryID, FieldLabel, AssignedValue) VALUES (1, 83, 'Stove', 'off')");
  Prompts().Queue(u"Caution", Answer::Yes);
  ASSERT_EQ(Export().result, ExportResult::Written);
  Prompts().Queue(u"vtBuffer = ", Answer::OkForAll);
  const ImportOutcome imported = ImportInspectionFile(m_Device.GetWorkspace(), m_File);
  ASSERT_THAT(imported.inspections, SizeIs(1));
  EXPECT_EQ(InVisits("SELECT InspectionDate FROM MERGE_Inspection"), "2002-07-03T09:05:00") << "no seconds";
  EXPECT_EQ(MergeInspection(Document(), 72, imported.inspections[0]).result, MergeResult::Merged);
  // Keys and owners are the new rows' own.
  const auto content = [&](int house) {
    return InVisits(
               "SELECT CategoryTitle, CategoryNumber, replace(Remarks, char(13), '\\r'), CommentText, "
               "CompleteFlag, NotPresentFlag, "
               "CategoryTemplateID, Type FROM Category WHERE InspectionID = " +
               std::to_string(house) + " ORDER BY 1") +
           "\n" +
           InVisits(
               "SELECT StepNumber, StepTitle, InspectResult, s.Comments, Materials, RatingType, s.Reserve8, "
               "MaterialNote, "
               "StepTemplateID, Reserve11, MajorSystem, StepInfoExists, SummaryComment, BitmapPath, "
               "PictureBefore FROM "
               "Step s JOIN Category USING (CategoryID) WHERE InspectionID = " +
               std::to_string(house) + " ORDER BY 1");
  };
  std::string expected = content(71);
  const auto replace = [&](const std::string& what, const std::string& with) {
    ASSERT_NE(expected.find(what), std::string::npos) << what;
    expected.replace(expected.find(what), what.size(), with);
  };
  replace("|b.jpg|1", "|b.jpg|0");                    // PictureBefore never arrives
  replace("\xC5\x81", "?");                           // what the code page lacks
  replace("a \xC2\xA4 b \xC2\xA7 c||0", "a | b |0");  // a field ends at one byte, the record at the other
  EXPECT_EQ(content(72), expected);
  EXPECT_EQ(InVisits("SELECT count(*) FROM Field JOIN Category USING (CategoryID) WHERE InspectionID = 72"),
            "0");
}

TEST_F(InspectionMergeTest, StagedInspectionsAreListedWithTheirCounts) {
  Stage({"Roof 20", "  A 1", "  B 1", "Attic 5"});
  m_Device.RunInVisits("INSERT INTO MERGE_Inspection (InspectionID) VALUES (4)");
  const auto staged = ReadStaged(Data());
  ASSERT_TRUE(staged);
  EXPECT_EQ(Joined(*staged,
                   [](const StagedInspection& each) {
                     return Decimal(each.inspectionID) + u" " + each.client + u" " + each.address + u" " +
                            each.documentNumber + u" " + Decimal(each.categories) + u" " +
                            Decimal(each.steps);
                   }),
            u"5 Ana Elm 7 2 2|4    0 0");
}

}  // namespace
}  // namespace inspector::exchange
