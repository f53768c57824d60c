#include "inspection/InspectorDoc.h"

#include "device/Format.h"
#include "editing/CategoryOpening.h"
#include "support/VisitFixture.h"

namespace inspector::inspection {
namespace {

class InspectorDocTest : public VisitTest {
protected:
  // The inspection as it is in the file, whatever the document holds.
  Text StoredHeader(std::int32_t key) {
    return FromUtf8(InVisits(
        "SELECT DocType, InspectionTypeID, GeneralInformation FROM Inspection WHERE InspectionID = " +
        std::to_string(key)));
  }
  Text HeldHeader() {
    const data::InspectionTable& row = Document().Inspection();
    return device::Format(u"%s|%d|%s", row.m_DocType, row.m_InspectionTypeID, row.m_GeneralInformation);
  }
  bool ChangeTo(TextView type) {
    Document().ChangeDocType(type);
    return Document().FinishDocTypeChange();
  }
  bool Delete(Answer answer = Answer::Yes, const Text& question = u"Warning") {
    Prompts().Queue(question, answer);
    return Document().DeleteSelectedInspection(1);
  }
  bool DeleteAll(Answer answer = Answer::Yes) {
    Prompts().Queue(u"Would you like to delete all inspections.", answer);
    return Document().DeleteAllInspections();
  }
  void ExpectRows(const Text& counts) { EXPECT_EQ(m_Device.RowCounts(), counts); }
};

TEST_F(InspectorDocTest, EmptyDatabaseGetsOneEmptyInspectionWithoutAType) {
  for (int n = 0; n < 2; ++n) {
    ExpectRows(u"Inspection 1, Category 0, Step 0, Field 0");
    EXPECT_EQ(Document().Inspection().m_InspectionID, 1000);
    EXPECT_EQ(HeldHeader(), u"|-1|");
    m_Device.Open();
  }
}

TEST_F(InspectorDocTest, NewInspectionAsksAndBecomesCurrent) {
  m_Device.Visit(u"House");
  Document().SetCurrentCategory(3);
  for (const auto& [answer, key] : {std::pair(Answer::No, std::optional<int>()), {Answer::Yes, 1002}}) {
    Prompts().Queue(u"Are you sure you want to create a new inspection?", answer);
    EXPECT_EQ(Document().NewInspection(), key);
    EXPECT_EQ(Prompts().Messages().back().title, u"Warning");
  }
  EXPECT_EQ(Document().Inspection().m_InspectionID, 1002);
  EXPECT_EQ(Document().Categories().RecordCount(), 0);
  EXPECT_EQ(HeldHeader(), u"|-1|");
}

TEST_F(InspectorDocTest, MovingOnResetsTheCategoryAndAMissingOneIsSaid) {
  m_Device.Visit(u"House");
  m_Device.RunInVisits("INSERT INTO Inspection (InspectionID, ClientName) VALUES (1001, 'Twin')");
  EXPECT_TRUE(Document().SetCurrentCategory(2));
  EXPECT_EQ(Document().Categories().m_CategoryTitle, u"Safety") << "ordered by number as text: 15, 20, 30";
  EXPECT_TRUE(Document().SetCurrentInspection(1));
  EXPECT_EQ(Document().Categories().m_CategoryTitle, u"Attic");
  EXPECT_FALSE(Document().SetCurrentCategory(5));
  EXPECT_THAT(Prompts().Transcript(), ElementsAre(u"Alert: No Category records in current selection."));
  EXPECT_FALSE(Document().SelectInspection(4711));
  EXPECT_TRUE(Document().Reopen() && Document().SelectInspection(1001));
  EXPECT_EQ(Document().Inspection().m_ClientName, u"") << "the first of two rows with this key";
}

// The type's comments start with the general information that is there already.
TEST_F(InspectorDocTest, WorkerMakesTheCategoriesOfTheType) {
  Document().CreateInspection([](data::InspectionTable& row) { row.m_GeneralInformation = u"Rainy day."; });
  EXPECT_TRUE(ChangeTo(u"House"));
  EXPECT_FALSE(Document().IsChangingDocType());

  const Text header = u"House|1|Rainy day.  Seen from the ground.  Built in 1968.";
  EXPECT_EQ(HeldHeader(), header);
  EXPECT_EQ(StoredHeader(1001), header) << "the type must not be lost with the battery";
  EXPECT_THAT(m_Device.Outline(1001),
              ElementsAre(u"15 Attic (Incomplete)", u"20 Roof (Incomplete)", u"30 Safety (Incomplete)",
                          u"9 Cellar (Incomplete)", u"99 Checklist (Incomplete)"));

  EXPECT_EQ(Document().Categories().RecordCount(), 5) << "the document shows the new categories";
  EXPECT_EQ(InVisits("SELECT CategoryID, CategoryTemplateID, CommentText, Type FROM Category WHERE "
                     "CategoryTemplateID IN (1, 4)"),
            "1000|1|Walked on.|0\n1003|4||1")
      << "keys go in the order of the type, Roof first";
}

TEST_F(InspectorDocTest, ReplacingATypeDeletesWhatWasFound) {
  const auto other = m_Device.Visit(u"House", {u"Roof"});
  const auto key = m_Device.Visit(u"House", {u"Roof", u"Checklist"});
  ExpectRows(u"Inspection 3, Category 10, Step 6, Field 2");
  EXPECT_TRUE(ChangeTo(u"Condo"));
  EXPECT_THAT(m_Device.Outline(key), ElementsAre(u"70 Kitchen (Incomplete)"));
  EXPECT_EQ(m_Device.Outline(other).size(), 8U) << "the other inspection stays as it was";
  ExpectRows(u"Inspection 3, Category 6, Step 3, Field 0");
  EXPECT_THAT(Prompts().ProgressWindows(), IsEmpty()) << "deleting shows no progress here";
}

// The person goes on while the worker runs: what was typed and the type both end up stored, whatever came
// first.
TEST_F(InspectorDocTest, WhatIsDoneMeanwhileDoesNotLoseTheType) {
  const auto key = m_Device.Visit(u"");
  Document().ChangeDocType(u"House");
  Document().Inspection().m_ClientName = u"Ada";
  Document().Inspection().m_GeneralInformation = u"Typed since. ";
  EXPECT_TRUE(Document().SaveHeader());
  EXPECT_EQ(StoredHeader(key), u"House|1|Typed since. Seen from the ground.  Built in 1968.");
  EXPECT_FALSE(Document().FinishDocTypeChange()) << "nothing is taken over twice";

  Document().ChangeDocType(u"Condo");
  EXPECT_TRUE(Document().SetCurrentInspection(0));
  EXPECT_TRUE(Document().SelectInspection(key));
  EXPECT_TRUE(HeldHeader().starts_with(u"Condo|2|")) << "another inspection was looked at";
  EXPECT_EQ(Document().Inspection().m_ClientName, u"Ada");

  Document().SetCurrentCategory(0);
  EXPECT_TRUE(ChangeTo(u"House"));
  EXPECT_EQ(Document().Categories().m_CategoryTitle, u"Attic") << "not the deleted category of the old type";
  EXPECT_TRUE(editing::OpenCategory(Data(), Document().Categories()));

  Document().ChangeDocType(u"Condo");
  EXPECT_TRUE(Delete());
  ExpectRows(u"Inspection 1, Category 0, Step 0, Field 0");
}

TEST_F(InspectorDocTest, WhatAnotherProgramDeletedIsReportedAndNothingIsWritten) {
  const auto key = m_Device.Visit(u"House");
  data::CategoryTable gone(Data());
  gone.OpenSQL(u"SELECT * FROM Category");
  ASSERT_TRUE(gone.GetRecord(0));
  m_Device.RunInVisits("DELETE FROM Category");
  EXPECT_FALSE(editing::OpenCategory(Data(), gone));
  m_Device.RunInVisits("DELETE FROM Inspection");
  EXPECT_FALSE(ChangeTo(u"Condo"));
  ExpectRows(u"Inspection 0, Category 0, Step 0, Field 0");
  EXPECT_EQ(Prompts().Messages().size(), 2U);
  EXPECT_EQ(Document().Inspection().m_InspectionID, key) << "what is on the screen stays there";
  Document().Reopen();
  EXPECT_FALSE(ChangeTo(u"Condo")) << "there is no inspection";
}

TEST_F(InspectorDocTest, TypesAreLookedUpByNameTheLastOfSeveralGivesTheKeyAndNoneLeavesIt) {
  m_Device.RunInLibrary(
      "INSERT INTO InspectionType (ID, InspectionType) VALUES (3, 'House'), (4, 'Barn \"old\"')");
  const auto key = m_Device.Visit(u"");
  EXPECT_TRUE(ChangeTo(u"House"));
  EXPECT_EQ(StoredHeader(key), u"House|3|") << "the comments are those of type 3, which has none";
  EXPECT_EQ(m_Device.Outline(key).size(), 5U) << "the categories are looked up by name";
  EXPECT_TRUE(ChangeTo(u"Barn \"old\""));
  EXPECT_EQ(StoredHeader(key), u"Barn \"old\"|4|");
  EXPECT_TRUE(ChangeTo(u"Castle"));
  EXPECT_EQ(StoredHeader(key), u"Castle|4|");
  EXPECT_THAT(m_Device.Outline(key), IsEmpty());
}

// A step that cannot be written, a comment that cannot be read: nothing of the change may stay.
TEST_F(InspectorDocTest, FailedChangeLeavesTheInspectionAsItWas) {
  const auto key = m_Device.Visit(u"Condo", {u"Kitchen"});
  const auto before = m_Device.Outline(key);
  for (const auto& [kind, breaks, repairs] :
       {std::tuple{data::DatabaseKind::Inspection,
                   NoRoomFor("INSERT ON Category WHEN new.CategoryTitle = 'Safety'"), kRoomAgain},
        {data::DatabaseKind::Template, "ALTER TABLE CategoryComment RENAME TO Gone",
         "ALTER TABLE Gone RENAME TO CategoryComment"}}) {
    m_Device.Run(kind, breaks);
    EXPECT_FALSE(ChangeTo(u"House")) << breaks;
    EXPECT_EQ(m_Device.Outline(key), before) << breaks;
    EXPECT_EQ(HeldHeader(), u"Condo|2|") << breaks;
    EXPECT_EQ(StoredHeader(key), u"Condo|2|") << breaks;
    m_Device.Run(kind, repairs);
  }
  ASSERT_EQ(Prompts().Messages().size(), 1U) << "the worker's fault is shown, by this thread";
  EXPECT_TRUE(Prompts().Messages()[0].text.ends_with(u"no room"));
  EXPECT_TRUE(ChangeTo(u"House"));
  EXPECT_EQ(StoredHeader(key), u"House|1|Seen from the ground.  Built in 1968.");
}

TEST_F(InspectorDocTest, ASecondChangeAndTheEndOfTheDocumentWaitForTheFirst) {
  const auto key = m_Device.Visit(u"");
  for (const TextView type : {u"House", u"Condo", u"House", u"Condo"}) Document().ChangeDocType(type);
  EXPECT_TRUE(Document().FinishDocTypeChange());
  EXPECT_THAT(m_Device.Outline(key), ElementsAre(u"70 Kitchen (Incomplete)"));
  EXPECT_EQ(StoredHeader(key),
            u"Condo|2|Seen from the ground.  Built in 1968.  Seen from the ground.  Built in 1968.");
  Document().ChangeDocType(u"House");
  m_Device.Open();
  EXPECT_EQ(m_Device.Outline(key).size(), 5U);
}

TEST_F(InspectorDocTest, ScreenReadsAndWritesBesideTheWorker) {
  const auto key = m_Device.Visit(u"");
  for (int round = 0; round < 10; ++round) {
    Document().ChangeDocType(round % 2 ? u"Condo" : u"House");
    const auto other = Document().CreateInspection({}, u"Condo");
    EXPECT_TRUE(other.has_value());
    EXPECT_EQ(m_Device.Outline(other.value_or(0)).size(), 1U);
    EXPECT_EQ(Document().Inspection().m_DocType, u"Condo");
    EXPECT_TRUE(Document().SelectInspection(key));
    EXPECT_EQ(m_Device.Outline(key).size(), round % 2 ? 1U : 5U);
  }
}

TEST_F(InspectorDocTest, DeletingNeedsOneSelectedInspectionAndAYes) {
  const auto key = m_Device.Visit(u"House", {u"Roof", u"Checklist"});
  m_Device.RunInVisits(
      "UPDATE Inspection SET ClientName = 'Halvorsen', DwellingAddress = '418 Juniper Lane', CityStateZip = "
      "'Alder Creek', InspectionNum = '7' WHERE DocType = 'House'");
  ASSERT_TRUE(Document().SelectInspection(key));
  const Text counts = m_Device.RowCounts();
  EXPECT_FALSE(Document().DeleteSelectedInspection(2));
  const Text question =
      u"Are you sure you want to delete this inspection?\n\nClient Name: Halvorsen\nDwelling Address: 418 "
      u"Juniper Lane\nCity State Zip: Alder Creek\nDoc #: 7";
  EXPECT_FALSE(Delete(Answer::No, question));
  ExpectRows(counts);
  EXPECT_TRUE(Delete(Answer::Yes, question));
  EXPECT_THAT(Prompts().Transcript(), ElementsAre(u"Alert: Only one inspection can be deleted at a time.",
                                                  u"Warning: " + question, u"Warning: " + question));
  ExpectRows(u"Inspection 1, Category 0, Step 0, Field 0");
  EXPECT_EQ(Prompts().ProgressWindows().back()->Told(),
            u"Deleting Inspection...|Deleting Steps...|Deleting Categories...|0|6|5");

  EXPECT_TRUE(Delete());
  ExpectRows(u"Inspection 0, Category 0, Step 0, Field 0");
  EXPECT_EQ(Document().Categories().RecordCount(), 0) << "no categories of an inspection that is gone";
}

TEST_F(InspectorDocTest, DeleteAllLeavesOneFreshInspectionOrWhatCancelKept) {
  for (const auto* const type : {u"House", u"Condo"}) m_Device.Visit(type);
  EXPECT_FALSE(DeleteAll(Answer::No));
  ExpectRows(u"Inspection 3, Category 6, Step 0, Field 0");
  Prompts().CancelAtStep(1);
  EXPECT_TRUE(DeleteAll());
  EXPECT_EQ(Prompts().Last(), "Alert: Cancelled. 1 of 3 inspections were deleted.");
  ExpectRows(u"Inspection 2, Category 5, Step 0, Field 0");
  Prompts().CancelAtStep(2);
  EXPECT_TRUE(DeleteAll());
  EXPECT_EQ(Prompts().Last(), "Alert: Done deleting all inspections.");
  ASSERT_EQ(Prompts().ProgressWindows().size(), 2U) << "one for all of them";
  EXPECT_THAT(Prompts().ProgressWindows()[1]->statuses, ElementsAre(u"1 of 2", u"2 of 2"));
  ExpectRows(u"Inspection 1, Category 0, Step 0, Field 0");
  EXPECT_EQ(Document().Inspection().m_InspectionID, 1003) << "keys are never used again";
  EXPECT_EQ(HeldHeader(), u"|-1|");
}

TEST_F(InspectorDocTest, FailedDeleteDeletesNothing) {
  m_Device.Visit(u"House");
  const Text counts = m_Device.RowCounts();
  m_Device.RunInVisits(NoRoomFor("DELETE ON Inspection WHEN old.InspectionID = 1000"));
  EXPECT_FALSE(DeleteAll());
  ExpectRows(counts);
  EXPECT_EQ(Document().Categories().RecordCount(), 5) << "what could not be deleted stays current";
  EXPECT_TRUE(Document().SelectInspection(1001));
}

TEST(DefaultCommentTest, AddsTheSentenceBehindTheBracket) {
  const std::tuple<Text, Text, Text> kCases[] = {{u"", u"[*Label]One.", u"One."},
                                                 {u"One.", u"[*Label]Two.", u"One.  Two."},
                                                 {u"One", u"[*Label]Two.", u"OneTwo."},
                                                 {u"One.", u"[Label]Two.", u"One."},
                                                 {u"One.", u"Two [*Label].", u"One."},
                                                 {u"One.", u" [*Label]Two.", u"One."},
                                                 {u"One.", u"[*Label]", u"One.  "},
                                                 {u"", u"[*Label] with ] in it", u" with ] in it"},
                                                 {u"", u"[*]", u""}};
  for (const auto& [before, comment, after] : kCases) {
    Text text = before;
    AppendDefaultComment(text, comment);
    EXPECT_EQ(text, after) << ToUtf8(comment);
  }
}

}  // namespace
}  // namespace inspector::inspection
