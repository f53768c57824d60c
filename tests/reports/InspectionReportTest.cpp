// Making a report: what is asked, what is told, and what is left on the disk whichever way it ends.

#include "reports/MakeReport.h"
#include "support/StartedMachine.h"

namespace inspector::reports {
namespace {

class InspectionReportTest : public ::testing::Test, protected StartedMachine {
protected:
  // Three categories with two steps each.
  void SetUp() override {
    RunInVisits(
        "INSERT INTO Inspection (InspectionID, InspectionNum) VALUES (1001, 'H/104: a.');INSERT INTO "
        "Category (CategoryID, InspectionID, CategoryNumber, CategoryTitle) VALUES (1, 1001, '10', 'Roof'), "
        "(2, 1001, '10', 'Attic'), (3, 1001, '10', 'Cellar');INSERT INTO Step (CategoryID, StepNumber, "
        "InspectResult, Comments) SELECT CategoryID, '1', 'Marginal', CategoryTitle || ' one.' FROM "
        "Category;INSERT INTO Step (CategoryID, StepNumber, InspectResult, Comments) SELECT CategoryID, '2', "
        "'', CategoryTitle || ' two.' FROM Category");
  }

  ReportOutcome Write(std::vector<Text> deselected = {}) {
    return MakeReport(*m_Workspace, Request(u"3 Column", std::move(deselected)));
  }

  ReportRequest Request(const Text& layout, std::vector<Text> deselected = {}) const {
    return {1001, u"inspection", {.layout = layout, .deselected = std::move(deselected)}, m_Target};
  }

  // Nothing but the databases and `report` in the target's folder.
  void ExpectOnlyThere(const std::string& report) {
    std::map<std::string, std::string> expected;
    if (!report.empty()) expected["report.rtf"] = report;
    EXPECT_EQ(FilesBelow(m_Target.parent_path()), expected);
  }

  std::filesystem::path m_Target = m_Folder / "out" / "report.rtf";
};

TEST_F(InspectionReportTest, CancelledAtAnyMomentItLeavesWhatWasThere) {
  ASSERT_EQ(Write().result, ReportResult::Written);
  EXPECT_EQ(m_Prompts.ProgressWindows().back()->Told(), u"Exporting RTF...|0|3|3");
  for (const std::string old : {"", "an older report"}) {
    std::filesystem::remove(m_Target);
    if (!old.empty()) m_Folder.Put("out/report.rtf", old);
    for (int step = 0; step <= 3; ++step) {
      m_Prompts.CancelAtStep(step);
      EXPECT_EQ(Write().result, ReportResult::Cancelled) << step;
      EXPECT_EQ(m_Prompts.ProgressWindows().back()->Told(), u"Exporting RTF...|0|3|" + Decimal(step));
      ExpectOnlyThere(old);
    }
  }
  EXPECT_TRUE(m_Prompts.Messages().empty());
}

TEST_F(InspectionReportTest, ADiskThatFailsAtAnyWriteIsTold) {
  m_Folder.Put("out/report.rtf", "an older report");
  m_Files.FailCommit(1);
  int write = 1;
  for (; Write().result == ReportResult::Failed; ++write) {
    ASSERT_EQ(m_Prompts.Messages().size(), 1U) << write;
    EXPECT_THAT(m_Prompts.Last(), StartsWith("Error: " + m_Target.native() +
                                             " could not be written: No space left on device."));
    m_Prompts.Forget();
    ExpectOnlyThere("an older report");
    m_Files.FailWrite(write);
    ASSERT_LT(write, 5000);
  }
  EXPECT_GT(write, 50);
  EXPECT_NE(ContentOf(m_Target), "an older report");
}

TEST_F(InspectionReportTest, TheNameIsSuggestedAndThePersonMayLeave) {
  ReportRequest request = Request(u"3 column");
  request.target.reset();
  m_Prompts.QueueSavePath(std::nullopt);
  EXPECT_EQ(MakeReport(*m_Workspace, request).result, ReportResult::Cancelled);
  ASSERT_EQ(m_Prompts.SaveQuestions().size(), 1U);
  const auto& [name, folder, filter, extension] = m_Prompts.SaveQuestions().front();
  EXPECT_THAT((std::vector<Text>{name, folder, filter, extension}),
              ElementsAre(u"Inspection_H_104_ a..rtf", u"\\My Documents\\",
                          u"Rich Text Format (*.rtf)|*.rtf|", u"rtf"));
  EXPECT_TRUE(m_Prompts.ProgressWindows().empty() && m_Prompts.Messages().empty());

  m_Prompts.QueueSavePath(m_Target);
  const ReportOutcome outcome = MakeReport(*m_Workspace, request);
  EXPECT_EQ(outcome.result, ReportResult::Written);
  EXPECT_EQ(outcome.file, m_Target);
  EXPECT_TRUE(std::filesystem::exists(m_Target));
}

TEST_F(InspectionReportTest, WhatDoesNotExistIsNamed) {
  EXPECT_EQ(MakeReport(*m_Workspace, Request(u"5 Column")).result, ReportResult::Failed);
  EXPECT_THAT(m_Prompts.Last(), AllOf(HasSubstr("\"5 Column\""), HasSubstr("\"2 Column French\"")));
  ReportRequest request = Request(u"4 Column");
  request.inspectionID = 77;
  EXPECT_EQ(MakeReport(*m_Workspace, request).result, ReportResult::Failed);
  EXPECT_THAT(m_Prompts.Last(), HasSubstr("77"));
  EXPECT_FALSE(std::filesystem::exists(m_Target.parent_path()));
}

// Without the flags of the ratings nothing would be red or bold, as if no finding were serious.
TEST_F(InspectionReportTest, StepsOrRatingsThatCannotBeReadMakeNoReport) {
  m_Folder.Put("out/report.rtf", "an older report");
  for (const auto& [run, damage] :
       {std::pair{&StartedMachine::RunInLibrary, "DROP TABLE RatingChoices"},
        {&StartedMachine::RunInLibrary, "CREATE VIEW RatingChoices AS SELECT * FROM Gone"},
        {&StartedMachine::RunInVisits, "DROP TABLE Step"},
        {&StartedMachine::RunInVisits, "CREATE TABLE Step (StepID integer)"}}) {
    (this->*run)(damage);
    m_Prompts.Forget();
    EXPECT_EQ(Write().result, ReportResult::Failed) << damage;
    EXPECT_FALSE(m_Prompts.Messages().empty()) << damage;
  }
  ExpectOnlyThere("an older report");
}

TEST(ReportFileNameTest, HoldsWhatAFileNameCanHold) {
  const auto nameOf = [](TextView base) { return ReportFileName(u"Inspection_", base, u".rtf"); };
  EXPECT_EQ(nameOf(u"H-104"), u"Inspection_H-104.rtf");
  EXPECT_EQ(nameOf(u""), u"Inspection_.rtf");
  EXPECT_EQ(nameOf(u"a/b\\c:d*e?f\"g<h>i|j\tk\u007fl\u0085m"), u"Inspection_a_b_c_d_e_f_g_h_i_j_k_l_m.rtf");
  EXPECT_EQ(nameOf(u"../.. . "), u"Inspection_.._.. . .rtf");
  EXPECT_EQ(nameOf(u"\u00c9t\u00e9 2026"), u"Inspection_\u00c9t\u00e9 2026.rtf");
  EXPECT_EQ(nameOf(Text(300, u'x')), u"Inspection_" + Text(200, u'x') + u".rtf");
  EXPECT_EQ(nameOf(Text(66, u'\u4e00') + u"ab\U0001F3E0"), u"Inspection_" + Text(66, u'\u4e00') + u"ab.rtf");
}

}  // namespace
}  // namespace inspector::reports
