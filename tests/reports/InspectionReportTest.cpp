// Making a report: what is asked, what is told, and what is left on the disk whichever way it ends.
#include "reports/MakeReport.h"

#include "ReportFixture.h"

namespace inspector::reports {
namespace {

using tests::ContentOf;
using tests::ReportDevice;

class InspectionReportTest : public testing::Test {
protected:
  // Three categories with two steps each.
  void SetUp() override {
    device.RunInVisits(
        "INSERT INTO Inspection (InspectionID, InspectionNum) VALUES (1001, 'H/104: a.');"
        "INSERT INTO Category (CategoryID, InspectionID, CategoryNumber, CategoryTitle) VALUES (1, 1001, "
        "'10', 'Roof'), (2, 1001, '10', 'Attic'), (3, 1001, '10', 'Cellar');"
        "INSERT INTO Step (CategoryID, StepNumber, InspectResult, Comments) SELECT CategoryID, '1', "
        "'Marginal', CategoryTitle || ' one.' FROM Category;"
        "INSERT INTO Step (CategoryID, StepNumber, InspectResult, Comments) SELECT CategoryID, '2', '', "
        "CategoryTitle || ' two.' FROM Category");
  }

  ReportOutcome Write(std::vector<Text> deselected = {}) {
    return MakeReport(device.GetWorkspace(), Request(u"3 Column", std::move(deselected)));
  }

  ReportRequest Request(const Text& layout, std::vector<Text> deselected = {}) const {
    return {m_InspectionID, u"inspection", {.layout = layout, .deselected = std::move(deselected)}, m_Target};
  }

  // Nothing but the databases and `report` in the target's folder.
  void ExpectOnlyThere(const std::string& report) {
    for (const auto& entry : std::filesystem::directory_iterator(m_Target.parent_path())) {
      EXPECT_EQ(entry.path(), m_Target) << "left over";
    }
    if (report.empty()) {
      EXPECT_FALSE(std::filesystem::exists(m_Target));
    } else {
      EXPECT_EQ(ContentOf(m_Target), report);
    }
  }

  ReportDevice device;
  const std::int32_t m_InspectionID = 1001;
  std::filesystem::path m_Target = device.folder / "out" / "report.rtf";
};

TEST_F(InspectionReportTest, CancelledAtAnyMomentItLeavesWhatWasThere) {
  ASSERT_EQ(Write().result, ReportResult::Written);
  EXPECT_EQ(device.prompts.ProgressWindows().back()->title, u"Exporting RTF...");
  EXPECT_TRUE(device.prompts.ProgressWindows().back()->cancellable);
  EXPECT_EQ(device.prompts.ProgressWindows().back()->high, 3);
  EXPECT_EQ(device.prompts.ProgressWindows().back()->steps, 3);

  for (const std::string old : {"", "an older report"}) {
    for (int step = 0; step <= 3; ++step) {
      std::filesystem::remove_all(m_Target.parent_path());
      std::filesystem::create_directories(m_Target.parent_path());
      if (!old.empty()) device.folder.Put("out/report.rtf", old);
      device.prompts.CancelAtStep(step);
      EXPECT_EQ(Write().result, ReportResult::Cancelled) << step;
      EXPECT_EQ(device.prompts.ProgressWindows().back()->steps, step);
      EXPECT_FALSE(device.prompts.ProgressWindows().back()->open);
      ExpectOnlyThere(old);
    }
  }
  EXPECT_TRUE(device.prompts.Messages().empty());
}

TEST_F(InspectionReportTest, ADiskThatFailsAtAnyWriteIsTold) {
  device.folder.Put("out/report.rtf", "an older report");
  device.files.FailCommit(1);
  int write = 1;
  for (; Write().result == ReportResult::Failed; ++write) {
    ASSERT_EQ(device.prompts.Messages().size(), 1U) << write;
    const device::Message& message = device.prompts.Messages().front();
    EXPECT_EQ(message.title, u"Error");
    EXPECT_TRUE(device::Contains(message.text, device::FromUtf8(m_Target.native()) +
                                                   u" could not be written: No space left on device."))
        << device::ToUtf8(message.text);
    device.prompts.Forget();
    ExpectOnlyThere("an older report");
    device.files.FailWrite(write);
    ASSERT_LT(write, 5000);
  }
  EXPECT_GT(write, 50);
  EXPECT_NE(ContentOf(m_Target), "an older report");
}

TEST_F(InspectionReportTest, TheNameIsSuggestedAndThePersonMayLeave) {
  ReportRequest request = Request(u"3 column");
  request.target.reset();
  device.prompts.QueueSavePath(std::nullopt);
  EXPECT_EQ(MakeReport(device.GetWorkspace(), request).result, ReportResult::Cancelled);
  ASSERT_EQ(device.prompts.SaveQuestions().size(), 1U);
  const device::SaveQuestion& question = device.prompts.SaveQuestions().front();
  EXPECT_EQ(question.suggestedName, u"Inspection_H_104_ a..rtf");
  EXPECT_EQ(question.folder, u"\\My Documents\\");
  EXPECT_EQ(question.filter, u"Rich Text Format (*.rtf)|*.rtf|");
  EXPECT_EQ(question.defaultExtension, u"rtf");
  EXPECT_TRUE(device.prompts.ProgressWindows().empty());
  EXPECT_TRUE(device.prompts.Messages().empty());

  device.prompts.QueueSavePath(m_Target);
  const ReportOutcome outcome = MakeReport(device.GetWorkspace(), request);
  EXPECT_EQ(outcome.result, ReportResult::Written);
  EXPECT_EQ(outcome.file, m_Target);
  EXPECT_TRUE(std::filesystem::exists(m_Target));
}

TEST_F(InspectionReportTest, WhatDoesNotExistIsNamed) {
  EXPECT_EQ(MakeReport(device.GetWorkspace(), Request(u"5 Column")).result, ReportResult::Failed);
  EXPECT_EQ(MakeReport(device.GetWorkspace(), {77, u"inspection", {.layout = u"4 Column"}, m_Target}).result,
            ReportResult::Failed);
  ASSERT_EQ(device.prompts.Messages().size(), 2U);
  EXPECT_TRUE(device::Contains(device.prompts.Messages()[0].text, u"\"5 Column\""));
  EXPECT_TRUE(device::Contains(device.prompts.Messages()[0].text, u"\"2 Column French\""));
  EXPECT_TRUE(device::Contains(device.prompts.Messages()[1].text, u"77"));
  EXPECT_FALSE(std::filesystem::exists(m_Target.parent_path()));
}

TEST_F(InspectionReportTest, SkippedCategoriesAreNotInIt) {
  device.RunInVisits("UPDATE Category SET NotPresentFlag = -1 WHERE CategoryTitle = 'Attic'");
  ASSERT_EQ(Write({u"Cellar", u"roof"}).result, ReportResult::Written);
  const std::string report = ContentOf(m_Target);
  EXPECT_NE(report.find("Roof two."), std::string::npos);  // deselected by its exact name only
  EXPECT_EQ(report.find("Attic"), std::string::npos);
  EXPECT_EQ(report.find("Cellar"), std::string::npos);
  EXPECT_EQ(device.prompts.ProgressWindows().back()->steps, 3);  // the bar counts them all the same
}

TEST_F(InspectionReportTest, PicturesThatAreNotInItAreNoted) {
  device.RunInVisits(
      "INSERT INTO Step (CategoryID, StepNumber, Comments) VALUES (1, '3', '***Path=\\gone.jpg*** "
      "***Picture-4*** ***Path=\\there.jpg***'), (1, '4', '***Path=\\gone.jpg***')");
  device.folder.Put("there.jpg", "\xFF\xD8\xFF");
  std::filesystem::create_directories(device.Home() / "HousePhotoP.jpg");  // there, but no file
  const ReportOutcome outcome = Write();
  EXPECT_EQ(outcome.result, ReportResult::Written);
  ASSERT_EQ(outcome.notes.size(), 2U);
  EXPECT_TRUE(device::Contains(outcome.notes.at(0), u"\\gone.jpg"));
  EXPECT_TRUE(device::Contains(outcome.notes.at(1), u"***Picture-4***"));
  EXPECT_EQ(device.Faults(), 0);

  ReportRequest request = Request(u"1 Column");
  request.choices.pictures = false;
  EXPECT_TRUE(MakeReport(device.GetWorkspace(), request).notes.empty());
  EXPECT_EQ(ContentOf(m_Target).find("jpegblip"), std::string::npos);
}

// Without the flags of the ratings nothing would be red or bold, as if no finding were serious.
TEST_F(InspectionReportTest, StepsOrRatingsThatCannotBeReadMakeNoReport) {
  device.folder.Put("out/report.rtf", "an older report");
  data::Workspace& workspace = device.GetWorkspace();
  for (const auto& [connection, damage] :
       {std::pair{&workspace.TemplateConnection(), "DROP TABLE RatingChoices"},
        {&workspace.TemplateConnection(), "CREATE VIEW RatingChoices AS SELECT * FROM Gone"},
        {&workspace.InspectionConnection(), "DROP TABLE Step"},
        {&workspace.InspectionConnection(), "CREATE TABLE Step (StepID integer)"}}) {
    ASSERT_TRUE(connection->ExecuteNative(damage));
    connection->SchemaChanged();
    device.prompts.Forget();
    EXPECT_EQ(Write().result, ReportResult::Failed) << damage;
    EXPECT_FALSE(device.prompts.Messages().empty()) << damage;
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
