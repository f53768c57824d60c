// Pages in a folder that is not empty, or cannot be made.
#include "reports/HtmlReport.h"

#include "ReportFixture.h"

namespace inspector::reports {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using tests::ContentOf;

class HtmlReportTest : public testing::Test {
protected:
  void SetUp() override {
    device.RunInVisits(
        "INSERT INTO Inspection (InspectionID, InspectionNum) VALUES (1001, 'H-1');"
        "INSERT INTO Category (CategoryID, InspectionID, CategoryTitle) VALUES (1, 1001, 'Roof');"
        "INSERT INTO Step (CategoryID, StepNumber, Comments) VALUES (1, '1', 'Torn. "
        "***Path=\\\\roof.jpg***')");
    device.folder.Put("roof.jpg", "the roof");
  }
  ReportResult Write(std::optional<std::filesystem::path> folder, bool pictures = true) {
    return MakeReport(device.GetWorkspace(), {1001, u"html", {.pictures = pictures}, std::move(folder)})
        .result;
  }
  void Name(const std::string& documentNumber) {
    device.RunInVisits("UPDATE Inspection SET InspectionNum = '" + documentNumber + "'");
  }
  Text LastMessage() const {
    return device.prompts.Messages().empty() ? Text() : device.prompts.Messages().back().text;
  }

  tests::ReportDevice device;
  std::filesystem::path m_Folder = device.folder / "pages";
};

TEST_F(HtmlReportTest, PicturesNeverReplaceWhatIsThere) {
  device.folder.Put("pages/picture1.jpg", "somebody's own");
  ASSERT_EQ(Write(m_Folder), ReportResult::Written);
  EXPECT_EQ(ContentOf(m_Folder / "picture1.jpg"), "somebody's own");
  EXPECT_EQ(ContentOf(m_Folder / "picture2.jpg"), "the roof");
  const std::string first = ContentOf(m_Folder / "inspection.htm");
  EXPECT_THAT(first, HasSubstr("SRC=\"picture2.jpg\""));
  ASSERT_EQ(Write(m_Folder), ReportResult::Written);
  EXPECT_EQ(ContentOf(m_Folder / "inspection.htm"), first) << "what is there already is used again";

  // Pages that could not be replaced still show their own picture.
  device.folder.Put("roof.jpg", "the roof, mended");
  std::filesystem::remove(m_Folder / "toc.htm");
  std::filesystem::create_directory(m_Folder / "toc.htm");
  EXPECT_EQ(Write(m_Folder), ReportResult::Failed);
  EXPECT_TRUE(device::Contains(LastMessage(), u"toc.htm could not be written"));
  EXPECT_EQ(ContentOf(m_Folder / "inspection.htm"), first);
  EXPECT_EQ(ContentOf(m_Folder / "picture2.jpg"), "the roof");
  EXPECT_FALSE(std::filesystem::exists(m_Folder / "picture3.jpg"));

  // What only the pages before have shown goes with them.
  std::filesystem::remove(m_Folder / "toc.htm");
  ASSERT_EQ(Write(m_Folder), ReportResult::Written);
  EXPECT_EQ(ContentOf(m_Folder / "picture3.jpg"), "the roof, mended");
  EXPECT_FALSE(std::filesystem::exists(m_Folder / "picture2.jpg"));
  ASSERT_EQ(Write(m_Folder, false), ReportResult::Written);
  EXPECT_FALSE(std::filesystem::exists(m_Folder / "picture3.jpg"));
  EXPECT_EQ(ContentOf(m_Folder / "picture1.jpg"), "somebody's own");
}

TEST_F(HtmlReportTest, CancelledAtAnyMomentItLeavesThePagesBefore) {
  ASSERT_EQ(Write(m_Folder), ReportResult::Written);
  const auto before = tests::FilesBelow(m_Folder);
  device.folder.Put("roof.jpg", "the roof, mended");
  for (int step = 0; step <= 1; ++step) {
    device.prompts.CancelAtStep(step);
    EXPECT_EQ(Write(m_Folder), ReportResult::Cancelled) << step;
    EXPECT_EQ(tests::FilesBelow(m_Folder), before) << step;
  }
  device.prompts.CancelAtStep(0);
  EXPECT_EQ(Write(device.folder / "other"), ReportResult::Cancelled);
  EXPECT_FALSE(std::filesystem::exists(device.folder / "other"));
}

TEST_F(HtmlReportTest, APageThatIsTooLargeIsAskedAbout) {
  device.RunInVisits("UPDATE Step SET Comments = printf('%.*c', 100096, 'x')");
  device.prompts.Queue(u"Caution", device::Answer::No);
  EXPECT_EQ(Write(m_Folder), ReportResult::Failed);
  EXPECT_FALSE(std::filesystem::exists(m_Folder));
  EXPECT_TRUE(device::Contains(LastMessage(), u"The page inspection.htm has 10"));
  device.prompts.Queue(u"Caution", device::Answer::Yes);
  EXPECT_EQ(Write(m_Folder), ReportResult::Written);
  EXPECT_EQ(std::filesystem::file_size(m_Folder / "inspection.htm"), 100'096u);
  EXPECT_THAT(ContentOf(m_Folder / "index.htm"), HasSubstr("</frameset></html>"));
}

TEST_F(HtmlReportTest, AFolderThatCannotBeMadeIsNamedWithTheNumberOfTheError) {
  const Text suggested = u"\\Program Files\\Brindlecove\\Inspection";
  for (const std::string name : {"a/b", "a\\b", "C:x", "..", "x..y"}) {
    Name(name);
    EXPECT_EQ(Write(std::nullopt), ReportResult::Failed) << name;
    EXPECT_EQ(LastMessage(),
              u"Unable to create the " + suggested + device::FromUtf8(name) + u" directory. Error#123");
  }
  EXPECT_FALSE(std::filesystem::exists(device.Home() / "Program Files" / "Brindlecove"));
  Name("H-1");
  EXPECT_EQ(Write(std::nullopt), ReportResult::Written) << "also where the device has no folder of programs";
  EXPECT_EQ(Write(std::nullopt), ReportResult::Written) << "into the folder that is there";

  const auto missing = device.folder / "no" / "such";
  EXPECT_EQ(Write(missing), ReportResult::Failed);
  EXPECT_EQ(LastMessage(),
            u"Unable to create the " + device::FromUtf8(missing.native()) + u" directory. Error#3");
  const auto tooLong = device.folder / std::string(300, 'n');
  EXPECT_EQ(Write(tooLong), ReportResult::Failed);
  EXPECT_TRUE(LastMessage().ends_with(u"Error#123"));
}

}  // namespace
}  // namespace inspector::reports
