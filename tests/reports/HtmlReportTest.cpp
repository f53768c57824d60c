// Pages in a folder that is not empty, or cannot be made.
#include "reports/HtmlReport.h"

#include "ReportFixture.h"
#include "reports/PageRecord.h"

namespace inspector::reports {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using tests::ContentOf;

const std::string kJpeg = "\xFF\xD8\xFF";
const std::string kRoof = kJpeg + "the roof";
const std::string kMended = kJpeg + "the roof, mended";

class HtmlReportTest : public testing::Test {
protected:
  void SetUp() override {
    device.RunInVisits(
        "INSERT INTO Inspection (InspectionID, InspectionNum) VALUES (1001, 'H-1'), (1002, 'H-1');"
        "INSERT INTO Category (CategoryID, InspectionID, CategoryTitle) VALUES (1, 1001, 'Roof');"
        "INSERT INTO Step (CategoryID, StepNumber) VALUES (1, '1')");
    device.folder.Put("shots/roof.jpg", kRoof);
    Comment("***Path=\\shots\\roof.jpg***");
  }
  // As with a folder that a person has named on the command line.
  ReportResult Write(std::optional<std::filesystem::path> folder, bool pictures = true) {
    return Make(1001, std::move(folder), true, pictures);
  }
  ReportResult Make(std::int32_t inspection, std::optional<std::filesystem::path> folder, bool mayReplace,
                    bool pictures = true) {
    const ReportOutcome outcome = MakeReport(
        device.GetWorkspace(), {inspection, u"html", {.pictures = pictures}, std::move(folder), mayReplace});
    m_Notes = outcome.notes;
    return outcome.result;
  }
  void Comment(const std::string& words) { device.RunInVisits("UPDATE Step SET Comments = '" + words + "'"); }
  void Name(const std::string& documentNumber) {
    device.RunInVisits("UPDATE Inspection SET InspectionNum = '" + documentNumber + "'");
  }
  Text LastMessage() const {
    return device.prompts.Messages().empty() ? Text() : device.prompts.Messages().back().text;
  }
  std::map<std::string, std::string> Files() const { return tests::FilesBelow(m_Folder); }
  std::string Page() const { return ContentOf(m_Folder / "inspection.htm"); }
  bool IsThere(const std::string& name) const { return std::filesystem::exists(m_Folder / name); }

  tests::ReportDevice device;
  std::filesystem::path m_Folder = device.folder / "pages";
  std::vector<Text> m_Notes;
};

TEST_F(HtmlReportTest, OnlyOwnCopiesAreUsedAgainOrRemoved) {
  device.folder.Put("pages/picture1.jpg", kRoof);  // a person's own, whose bytes happen to be the same
  ASSERT_EQ(Write(m_Folder), ReportResult::Written);
  EXPECT_THAT(Page(), HasSubstr("SRC=\"picture2.jpg\""));
  const auto first = Files();
  ASSERT_EQ(Write(m_Folder), ReportResult::Written);
  EXPECT_EQ(Files(), first) << "the copy that is there is used again";

  // Pages that could not be replaced still show their own picture.
  device.folder.Put("shots/roof.jpg", kMended);
  std::filesystem::rename(m_Folder / "toc.htm", m_Folder / "kept");
  std::filesystem::create_directory(m_Folder / "toc.htm");
  EXPECT_EQ(Write(m_Folder), ReportResult::Failed);
  EXPECT_TRUE(device::Contains(LastMessage(), u"toc.htm could not be written"));
  std::filesystem::remove(m_Folder / "toc.htm");
  std::filesystem::rename(m_Folder / "kept", m_Folder / "toc.htm");
  EXPECT_EQ(Files(), first);

  // What only the pages before have shown goes with them.
  ASSERT_EQ(Write(m_Folder), ReportResult::Written);
  EXPECT_EQ(ContentOf(m_Folder / "picture3.jpg"), kMended);
  EXPECT_FALSE(IsThere("picture2.jpg"));
  device.folder.Put("pages/picture2.jpg", kRoof);
  ASSERT_EQ(Write(m_Folder, false), ReportResult::Written);
  EXPECT_FALSE(IsThere("picture3.jpg"));
  EXPECT_TRUE(IsThere("picture2.jpg")) << "a name that was given back is the person's";
  EXPECT_TRUE(IsThere("picture1.jpg"));

  // A copy that a person has changed is none any more; what a killed run left is one.
  ASSERT_EQ(Write(m_Folder), ReportResult::Written);
  device.folder.Put("pages/picture3.jpg", kMended + "!");
  PageRecord record(device.GetMachine(), m_Folder);
  auto copies = record.Pictures();
  copies["picture9.jpg"] = kRoof.size();
  ASSERT_TRUE(record.Keep(Text(record.Inspection()), copies));
  device.folder.Put("pages/picture9.jpg", kRoof);
  ASSERT_EQ(Write(m_Folder), ReportResult::Written);
  EXPECT_EQ(ContentOf(m_Folder / "picture3.jpg"), kMended + "!");
  EXPECT_FALSE(IsThere("picture9.jpg"));
  EXPECT_TRUE(device.prompts.Messages().size() == 1) << "nothing but the failure was told";
}

TEST_F(HtmlReportTest, PagesAreNotMadeAmongThePicturesOfReports) {
  ASSERT_TRUE(device.GetWorkspace().TemplateConnection().ExecuteNative(
      "DELETE FROM Options; INSERT INTO Options (DefaultPictCardPath) VALUES ('\\card\\')"));
  device.GetWorkspace().ForgetOptions();
  device.folder.Put("card/a.jpg", kRoof);
  std::filesystem::create_directory(device.folder / "absent");
  std::filesystem::create_symlink(device.folder / "shots", device.folder / "link");
  Comment("***Path=\\shots\\roof.jpg*** ***Path=\\absent\\picture1.jpg***");
  for (const std::filesystem::path& folder :
       {device.folder / "card", device.folder / "shots", device.folder / "link", device.folder / "absent",
        device.Home(), std::filesystem::path("/")}) {
    for (const bool pictures : {true, false}) {
      device.prompts.Forget();
      EXPECT_EQ(Write(folder, pictures), ReportResult::Failed) << folder;
      EXPECT_TRUE(LastMessage().starts_with(device::FromUtf8(folder.native()) + u" is ")) << folder;
      EXPECT_FALSE(std::filesystem::exists(folder / "index.htm")) << folder;
    }
  }
}

TEST_F(HtmlReportTest, PagesOfAnotherInspectionAreAskedAbout) {
  ASSERT_EQ(Make(1001, {}, false), ReportResult::Written);
  ASSERT_EQ(Make(1001, {}, false), ReportResult::Written) << "the same inspection reuses its folder";
  m_Folder = device.Home() / "Program Files" / "Brindlecove" / "InspectionH-1";
  const auto first = Files();
  EXPECT_TRUE(first.contains("picture1.jpg"));
  for (const bool isNamed : {false, true}) {
    device.prompts.Queue(u"Caution", device::Answer::No);
    EXPECT_EQ(Make(1002, isNamed ? std::optional(m_Folder) : std::nullopt, isNamed), ReportResult::Failed);
    EXPECT_TRUE(device::Contains(LastMessage(), u"the pages of another inspection"));
    EXPECT_TRUE(device.prompts.Messages().back().isNoFirst);
    EXPECT_EQ(Files(), first);
  }
  device.prompts.Queue(u"Caution", device::Answer::Yes);
  EXPECT_EQ(Make(1002, {}, false), ReportResult::Written);
  EXPECT_FALSE(IsThere("picture1.jpg")) << "the first client's";

  // Files that nobody knows: asked about where no person has named the folder for it.
  device.folder.Put("pages/index.htm", "notes");
  m_Folder = device.folder / "pages";
  device.prompts.Queue(u"Caution", device::Answer::No);
  EXPECT_EQ(Make(1001, m_Folder, false), ReportResult::Failed);
  EXPECT_TRUE(device::Contains(LastMessage(), u"files of yours"));
  EXPECT_EQ(ContentOf(m_Folder / "index.htm"), "notes");
  EXPECT_EQ(Make(1001, m_Folder, true), ReportResult::Written);
}

TEST_F(HtmlReportTest, WhatIsNoWholePictureIsLeftOutWithANote) {
  const std::pair<std::string, std::string> files[] = {
      {"zero", ""}, {"one", "a"}, {"script", "<script>alert(1)</script>"}, {"cut", kRoof}, {"gone", kRoof}};
  std::string words = "***Foo*** ***Foo***";
  for (const auto& [name, content] : files) {
    device.folder.Put("shots/" + name + ".jpg", content);
    words += " ***Path=\\shots\\" + name + ".jpg***";
  }
  device.RunInVisits(
      "INSERT INTO Step (CategoryID, StepNumber, StepTitle, Comments) VALUES (1, '2', 'Eaves', '" + words +
      "'), (1, '3', 'Ridge', '***Foo***')");
  // Between the look at the pictures and their copies.
  device.prompts.AtStatus([this] {
    device.folder.Put("shots/cut.jpg", kJpeg);
    std::filesystem::remove(device.folder / "shots/gone.jpg");
  });
  ASSERT_EQ(Write(m_Folder), ReportResult::Written);
  EXPECT_THAT(Files(), testing::SizeIs(4)) << "three pages and the roof";
  EXPECT_THAT(Page(), testing::AllOf(HasSubstr("picture1.jpg"), Not(HasSubstr("picture2.jpg"))));
  ASSERT_EQ(m_Notes.size(), 6u);
  EXPECT_EQ(m_Notes[0],
            u"The tag ***Foo*** in 2 Eaves is of no kind that a report knows. Correct it, or take it out.");
  for (std::size_t n = 0; n < std::size(files); ++n)
    EXPECT_TRUE(device::Contains(m_Notes[n + 1], device::FromUtf8(files[n].first) + u".jpg")) << n;
  EXPECT_EQ(device.prompts.Messages().size(), 1u) << "an unknown tag is told once in a report";
}

TEST_F(HtmlReportTest, ScaledPicturesKeepTheirProportions) {
  device.folder.Put("shots/a.gif", std::string("GIF89a\x90\x01\x2C\x01", 10));  // 400 by 300
  for (const auto& [scaling, size] :
       {std::pair{"50", " WIDTH=200 HEIGHT=150 "}, std::pair{"100000", " WIDTH=65535 HEIGHT=49151 "},
        std::pair{"100", "picture1.jpg\" ALT"}, std::pair{"0", "picture1.jpg\" ALT"}}) {
    Comment(std::string("***Path=\\shots\\a.gif;Scaling=") + scaling + "***");
    ASSERT_EQ(Write(m_Folder), ReportResult::Written);
    EXPECT_THAT(Page(), HasSubstr(size)) << scaling;
  }
}

// Whichever of the pages fails to appear, the folder is as it was.
TEST_F(HtmlReportTest, PagesAppearTogetherOrAreNamed) {
  for (const bool isNew : {true, false}) {
    device.folder.Put("shots/roof.jpg", kRoof);
    if (!isNew) {
      ASSERT_EQ(Write(m_Folder), ReportResult::Written);
    }
    const auto before = isNew ? std::map<std::string, std::string>() : Files();
    Comment("Mended. ***Path=\\shots\\roof.jpg***");
    device.folder.Put("shots/roof.jpg", kMended);
    for (int page = 1; page <= 3; ++page) {
      device.prompts.Forget();
      device.files.FailCommit(1 + page + 1);  // the record and the picture come first
      EXPECT_EQ(Write(m_Folder), ReportResult::Failed) << page;
      EXPECT_TRUE(LastMessage().ends_with(u"Nothing was left half-written."))
          << device::ToUtf8(LastMessage());
      EXPECT_EQ(isNew, !std::filesystem::exists(m_Folder)) << page;
      if (!isNew) {
        EXPECT_EQ(Files(), before) << page;
      }
    }
  }
  // The disk does not take what is to be put back.
  ASSERT_EQ(Write(m_Folder), ReportResult::Written);
  Comment("Once more. ***Path=\\shots\\roof.jpg***");
  device.files.FailWrite(4);
  device.files.FailCommit(2);
  EXPECT_EQ(Write(m_Folder), ReportResult::Failed);
  EXPECT_TRUE(LastMessage().ends_with(u"these files are the new ones already: inspection.htm."))
      << device::ToUtf8(LastMessage());
  EXPECT_THAT(Page(), HasSubstr("Once more."));
  EXPECT_TRUE(IsThere("picture2.jpg")) << "what the new page shows";
}

TEST_F(HtmlReportTest, CancelledAtAnyMomentItLeavesThePagesBefore) {
  ASSERT_EQ(Write(m_Folder), ReportResult::Written);
  const auto before = Files();
  device.folder.Put("shots/roof.jpg", kMended);
  for (int step = 0; step <= 1; ++step) {
    device.prompts.CancelAtStep(step);
    EXPECT_EQ(Write(m_Folder), ReportResult::Cancelled) << step;
    EXPECT_EQ(Files(), before) << step;
  }
  device.prompts.CancelAtStep(0);
  EXPECT_EQ(Write(device.folder / "other"), ReportResult::Cancelled);
  EXPECT_FALSE(std::filesystem::exists(device.folder / "other"));
}

TEST_F(HtmlReportTest, APageThatIsTooLargeIsAskedAbout) {
  Comment("x");
  ASSERT_EQ(Write(m_Folder), ReportResult::Written);
  const std::string most = std::to_string(HtmlReport::kMostPageBytes - Page().size() + 1);
  const auto fill = [this](const std::string& size) {
    device.RunInVisits("UPDATE Step SET Comments = printf('%.*c', " + size + ", 'x')");
  };
  fill(most);
  ASSERT_EQ(Write(m_Folder), ReportResult::Written) << "as large as a page can be";
  EXPECT_EQ(Page().size(), 100'096u);
  const auto before = Files();

  fill(most + " + 1");
  device.prompts.Queue(u"Caution", device::Answer::No);
  EXPECT_EQ(Write(m_Folder), ReportResult::Failed);
  EXPECT_EQ(Files(), before);
  EXPECT_TRUE(device::Contains(LastMessage(), u"The page inspection.htm has 100097 bytes"));
  device.prompts.Queue(u"Caution", device::Answer::Yes);
  EXPECT_EQ(Write(m_Folder), ReportResult::Written);
  EXPECT_EQ(Page().size(), 100'096u);
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
  for (const auto& [error, number] : {std::pair{std::errc::permission_denied, u"Error#5"},
                                      std::pair{std::errc::no_space_on_device, u"Error#112"}}) {
    device.files.FailFolder(error);
    EXPECT_EQ(Write(m_Folder), ReportResult::Failed);
    EXPECT_TRUE(LastMessage().ends_with(number)) << device::ToUtf8(number);
  }
}

}  // namespace
}  // namespace inspector::reports
