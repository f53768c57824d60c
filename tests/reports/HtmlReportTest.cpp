// Pages in a folder that is not empty, or cannot be made.
#include "reports/HtmlReport.h"

#include "reports/MakeReport.h"
#include "reports/PageRecord.h"
#include "support/StartedMachine.h"

namespace inspector::reports {
namespace {

// A head without a frame, pixels and an end.
std::string Photograph(const std::string& pixels) {
  return std::string("\xFF\xD8\xFF\xDA\0\2", 6) + pixels + "\xFF\xD9";
}
const std::string kRoof = Photograph("the roof");
const std::string kMended = Photograph("the roof, mended");

class HtmlReportTest : public ::testing::Test, protected StartedMachine {
protected:
  using Folder = std::optional<std::filesystem::path>;

  void SetUp() override {
    RunInVisits(
        "INSERT INTO Inspection (InspectionID, InspectionNum) VALUES (1001, 'H-1'), (1002, 'H-1');"
        "INSERT INTO Category (CategoryID, InspectionID, CategoryTitle) VALUES (1, 1001, 'Roof');"
        "INSERT INTO Step (CategoryID, StepNumber) VALUES (1, '1')");
    m_Folder.Put("shots/roof.jpg", kRoof);
    Comment("***Path=\\shots\\roof.jpg***");
  }
  // As with a folder that a person has named on the command line.
  ReportResult Write(const Folder& folder, bool pictures = true) {
    return Make(1001, folder, true, pictures);
  }
  ReportResult Make(std::int32_t inspection, const Folder& folder, bool mayReplace, bool pictures = true) {
    const ReportOutcome outcome =
        MakeReport(*m_Workspace, {inspection, u"html", {.pictures = pictures}, folder, mayReplace});
    m_Notes = outcome.notes;
    return outcome.result;
  }
  void ExpectFails(const Folder& folder, const std::string& says, bool pictures = true) {
    EXPECT_EQ(Write(folder, pictures), ReportResult::Failed) << says;
    EXPECT_THAT(m_Prompts.Last(), HasSubstr(says));
  }
  void Comment(const std::string& words) { RunInVisits("UPDATE Step SET Comments = '" + words + "'"); }
  std::map<std::string, std::string> Files() const { return FilesBelow(m_Pages); }
  std::string Page() const { return ContentOf(m_Pages / "inspection.htm"); }
  bool IsThere(const std::string& name) const { return std::filesystem::exists(m_Pages / name); }

  std::filesystem::path m_Pages = m_Folder / "pages";
  std::vector<Text> m_Notes;
};

TEST_F(HtmlReportTest, OnlyOwnCopiesAreUsedAgainOrRemoved) {
  m_Folder.Put("pages/picture1.jpg", kRoof);  // a person's own, whose bytes happen to be the same
  ASSERT_EQ(Write(m_Pages), ReportResult::Written);
  EXPECT_THAT(Page(), HasSubstr("SRC=\"picture2.jpg\""));
  const auto first = Files();
  ASSERT_EQ(Write(m_Pages), ReportResult::Written);
  EXPECT_EQ(Files(), first) << "the copy that is there is used again";

  // Pages that could not be replaced still show their own picture.
  m_Folder.Put("shots/roof.jpg", kMended);
  std::filesystem::rename(m_Pages / "toc.htm", m_Pages / "kept");
  std::filesystem::create_directory(m_Pages / "toc.htm");
  ExpectFails(m_Pages, "toc.htm could not be written");
  std::filesystem::remove(m_Pages / "toc.htm");
  std::filesystem::rename(m_Pages / "kept", m_Pages / "toc.htm");
  EXPECT_EQ(Files(), first);

  // Another card may have a picture of that name: what cannot be made again stays.
  ASSERT_EQ(Write(m_Pages), ReportResult::Written);
  EXPECT_EQ(ContentOf(m_Pages / "picture3.jpg"), kMended);
  EXPECT_EQ(ContentOf(m_Pages / "picture2.jpg"), kRoof);
  EXPECT_THAT(ToUtf8(m_Notes.back()), HasSubstr("gone or have changed: picture2.jpg."));
  // What can goes with the pages that have shown it.
  ASSERT_EQ(Write(m_Pages, false), ReportResult::Written);
  EXPECT_FALSE(IsThere("picture3.jpg"));
  EXPECT_TRUE(IsThere("picture1.jpg") && IsThere("picture2.jpg"));

  // A copy that a person has changed is none any more; what a killed run left is one.
  ASSERT_EQ(Write(m_Pages), ReportResult::Written);
  m_Folder.Put("pages/picture3.jpg", kMended + "!");
  PageRecord record(m_Machine, m_Pages);
  auto copies = record.Pictures();
  copies["picture9.jpg"] = {kRoof.size(), u"\\shots\\wall.jpg"};
  ASSERT_TRUE(record.Keep(Text(record.Inspection()), copies));
  for (const char* there : {"pages/picture9.jpg", "shots/wall.jpg"}) m_Folder.Put(there, kRoof);
  ASSERT_EQ(Write(m_Pages), ReportResult::Written);
  EXPECT_EQ(ContentOf(m_Pages / "picture3.jpg"), kMended + "!");
  EXPECT_FALSE(IsThere("picture9.jpg"));
  EXPECT_EQ(m_Prompts.Messages().size(), 1u) << "nothing but the failure was told";
}

// It may be all that is left of a photograph.
TEST_F(HtmlReportTest, ACopyWhoseOriginalIsGoneStaysAndIsTold) {
  ASSERT_EQ(Write(m_Pages), ReportResult::Written);
  const auto expectKept = [this](bool pictures) {
    ASSERT_EQ(Write(m_Pages, pictures), ReportResult::Written);
    EXPECT_EQ(ContentOf(m_Pages / "picture1.jpg"), kRoof);
    EXPECT_THAT(ToUtf8(m_Notes.back()), HasSubstr("gone or have changed: picture1.jpg."));
  };
  std::filesystem::rename(m_Folder / "shots/roof.jpg", m_Folder / "shots/away.jpg");
  expectKept(true);
  expectKept(false);
  for (const char* unreadable : {"", "junk"}) {
    m_Folder.Put("shots/roof.jpg", unreadable);
    expectKept(true);
  }
  std::filesystem::remove(m_Folder / "shots/roof.jpg");
  m_Folder.Put("pages/toc.htm", "changed by a person");
  expectKept(true);
  Comment("Nothing to see.");
  expectKept(true);
  Comment("***Path=\\pages\\picture1.jpg***");
  ASSERT_EQ(Write(m_Pages, false), ReportResult::Written);
  EXPECT_TRUE(IsThere("picture1.jpg")) << "a comment names the copy itself";
  Comment("Nothing to see.");
  std::filesystem::rename(m_Folder / "shots/away.jpg", m_Folder / "shots/roof.jpg");
  ASSERT_EQ(Write(m_Pages), ReportResult::Written);
  EXPECT_FALSE(IsThere("picture1.jpg")) << "it can be made again";
}

TEST_F(HtmlReportTest, PagesAreNotMadeAmongThePicturesOfReports) {
  RunInLibrary("DELETE FROM Options; INSERT INTO Options (DefaultPictCardPath) VALUES ('\\card\\')");
  m_Workspace->ForgetOptions();
  m_Folder.Put("card/a.jpg", kRoof);
  std::filesystem::create_directory(m_Folder / "absent");
  std::filesystem::create_symlink(m_Folder / "shots", m_Folder / "link");
  std::filesystem::create_symlink(m_Folder / "card" / "new", m_Folder / "nowhere");
  Comment("***Path=\\shots\\roof.jpg*** ***Path=\\absent\\picture1.jpg***");
  for (const std::filesystem::path& folder :
       {m_Folder / "card", m_Folder / "card" / "below/", m_Folder / "nowhere", m_Folder / "shots",
        m_Folder / "link", m_Folder / "absent", m_Folder.Path(), std::filesystem::path("/")}) {
    for (const bool with : {true, false}) ExpectFails(folder, "Error: " + folder.native(), with);
    EXPECT_FALSE(std::filesystem::exists(folder / "index.htm")) << folder;
  }
}

TEST_F(HtmlReportTest, APictureThatCameIntoTheFolderOfThePagesIsSeen) {
  ASSERT_EQ(Write(m_Pages, false), ReportResult::Written);
  ASSERT_EQ(Write(m_Pages, false), ReportResult::Written);
  m_Folder.Put("pages/mine.jpg", kRoof);
  Comment("***Path=\\pages\\mine.jpg***");
  ExpectFails(m_Pages, "is the folder of a picture of this inspection");
}

TEST_F(HtmlReportTest, APageThatIsALinkIsNotFollowed) {
  ASSERT_EQ(Write(m_Pages), ReportResult::Written);
  std::filesystem::remove(m_Pages / "toc.htm");
  std::filesystem::create_symlink(m_Folder / "elsewhere.htm", m_Pages / "toc.htm");
  ExpectFails(m_Pages, "toc.htm in " + m_Pages.native() + " is a link");
  EXPECT_FALSE(IsThere("../elsewhere.htm"));
}

TEST_F(HtmlReportTest, WhatAFailedRunFindsIsNotItsOwn) {
  ASSERT_EQ(Write(m_Pages), ReportResult::Written);
  m_Folder.Put("pages/toc.htm", "changed by a person");
  m_Folder.Put("shots/roof.jpg", kMended);
  m_Files.FailCommit(3);
  EXPECT_EQ(Make(1001, m_Pages, true), ReportResult::Failed);
  m_Prompts.Queue(u"Caution", Answer::No);
  EXPECT_EQ(Make(1001, m_Pages, false), ReportResult::Failed);
  EXPECT_THAT(m_Prompts.Last(), HasSubstr("changed since they were made"));
}

TEST_F(HtmlReportTest, PagesOfAnotherInspectionAreAskedAbout) {
  ASSERT_EQ(Make(1001, {}, false), ReportResult::Written);
  ASSERT_EQ(Make(1001, {}, false), ReportResult::Written) << "the same inspection reuses its folder";
  m_Pages = m_Folder.Path() / "Program Files" / "Brindlecove" / "InspectionH-1";
  const auto first = Files();
  EXPECT_TRUE(first.contains("picture1.jpg"));
  for (const bool isNamed : {false, true}) {
    m_Prompts.Queue(u"Caution", Answer::No);
    EXPECT_EQ(Make(1002, isNamed ? Folder(m_Pages) : Folder(), isNamed), ReportResult::Failed);
    EXPECT_THAT(m_Prompts.Last(), HasSubstr("the pages of another inspection"));
    EXPECT_TRUE(m_Prompts.Messages().back().isNoFirst);
    EXPECT_EQ(Files(), first);
  }
  m_Prompts.Queue(u"Caution", Answer::Yes);
  EXPECT_EQ(Make(1002, {}, false), ReportResult::Written);
  EXPECT_FALSE(IsThere("picture1.jpg")) << "the first client's";

  // Files that nobody knows: asked about where no person has named the folder for it.
  m_Folder.Put("pages/index.htm", "notes");
  m_Pages = m_Folder / "pages";
  m_Prompts.Queue(u"Caution", Answer::No);
  EXPECT_EQ(Make(1001, m_Pages, false), ReportResult::Failed);
  EXPECT_THAT(m_Prompts.Last(), HasSubstr("files of yours"));
  EXPECT_EQ(ContentOf(m_Pages / "index.htm"), "notes");
  EXPECT_EQ(Make(1001, m_Pages, true), ReportResult::Written);
}

TEST_F(HtmlReportTest, WhatIsNoWholePictureIsLeftOutWithANote) {
  const std::pair<std::string, std::string> files[] = {
      {"zero", ""}, {"one", "a"}, {"script", "<script>alert(1)</script>"}, {"cut", kRoof}, {"gone", kRoof}};
  std::string words = "***Foo*** ***Foo***";
  for (const auto& [name, content] : files) {
    m_Folder.Put("shots/" + name + ".jpg", content);
    words += " ***Path=\\shots\\" + name + ".jpg***";
  }
  RunInVisits("INSERT INTO Step (CategoryID, StepNumber, StepTitle, Comments) VALUES (1, '2', 'Eaves', '" +
              words + "'), (1, '3', 'Ridge', '***Foo***')");
  // Between the look at the pictures and their copies.
  m_Prompts.AtStatus([this] {
    m_Folder.Put("shots/cut.jpg", Photograph("roof"));
    std::filesystem::remove(m_Folder / "shots/gone.jpg");
  });
  ASSERT_EQ(Write(m_Pages), ReportResult::Written);
  EXPECT_THAT(Files(), SizeIs(4)) << "three pages and the roof";
  EXPECT_THAT(Page(), AllOf(HasSubstr("picture1.jpg"), Not(HasSubstr("picture2.jpg"))));
  ASSERT_EQ(m_Notes.size(), 6u);
  EXPECT_EQ(m_Notes[0],
            u"The tag ***Foo*** in 2 Eaves is of no kind that a report knows. Correct it, or take it out.");
  for (std::size_t n = 0; n < std::size(files); ++n)
    EXPECT_TRUE(device::Contains(m_Notes[n + 1], FromUtf8(files[n].first) + u".jpg")) << n;
  EXPECT_EQ(m_Prompts.Messages().size(), 1u) << "an unknown tag is told once in a report";
  Comment("***Path=\\shots\\roof.jpg***");
  m_Folder.Put("shots/roof.jpg", kRoof.substr(0, kRoof.size() - 1));
  ASSERT_EQ(Write(m_Pages), ReportResult::Written);
  EXPECT_THAT(ToUtf8(m_Notes.front()), HasSubstr("roof.jpg is damaged"));
  ASSERT_EQ(Write(m_Pages), ReportResult::Written);
  EXPECT_THAT(ToUtf8(m_Notes.front()), HasSubstr("roof.jpg is damaged")) << "also where its copy is there";
}

TEST_F(HtmlReportTest, ScaledPicturesKeepTheirProportions) {
  m_Folder.Put("shots/a.gif", std::string("GIF89a\x90\x01\x2C\x01", 10));  // 400 by 300
  for (const auto& [scaling, size] : {std::pair{"50", " WIDTH=200 HEIGHT=150 "},
                                      {"100000", " WIDTH=65535 HEIGHT=49151 "},
                                      {"100", "picture1.jpg\" ALT"},
                                      {"0", "picture1.jpg\" ALT"}}) {
    Comment(std::string("***Path=\\shots\\a.gif;Scaling=") + scaling + "***");
    ASSERT_EQ(Write(m_Pages), ReportResult::Written);
    EXPECT_THAT(Page(), HasSubstr(size)) << scaling;
  }
}

// Whichever of the pages fails to appear, the folder is as it was.
TEST_F(HtmlReportTest, PagesAppearTogetherOrAreNamed) {
  std::map<std::string, std::string> before;
  for (const bool isNew : {true, false}) {
    if (!isNew) {
      ASSERT_EQ(Write(m_Pages), ReportResult::Written);
      before = Files();
    }
    Comment("Mended. ***Path=\\shots\\roof.jpg***");
    m_Folder.Put("shots/roof.jpg", isNew ? kRoof : kMended);
    for (int page = 1; page <= 3; ++page) {
      m_Files.FailCommit(1 + page + 1);  // the record and the picture come first
      ExpectFails(m_Pages, "Nothing was left half-written.");
      EXPECT_EQ(isNew, !std::filesystem::exists(m_Pages)) << page;
      EXPECT_EQ(isNew ? before : Files(), before) << page;
    }
  }
  // The disk does not take what is to be put back.
  ASSERT_EQ(Write(m_Pages), ReportResult::Written);
  Comment("Once more. ***Path=\\shots\\roof.jpg***");
  m_Files.FailWrite(4);
  m_Files.FailCommit(2);
  ExpectFails(m_Pages, "these files are the new ones already: inspection.htm.");
  EXPECT_THAT(Page(), HasSubstr("Once more."));
  EXPECT_TRUE(IsThere("picture2.jpg")) << "what the new page shows";
}

TEST_F(HtmlReportTest, CancelledAtAnyMomentItLeavesThePagesBefore) {
  ASSERT_EQ(Write(m_Pages), ReportResult::Written);
  const auto before = Files();
  m_Folder.Put("shots/roof.jpg", kMended);
  for (int step = 0; step <= 1; ++step) {
    m_Prompts.CancelAtStep(step);
    EXPECT_EQ(Write(m_Pages), ReportResult::Cancelled) << step;
    EXPECT_EQ(Files(), before) << step;
  }
  m_Prompts.CancelAtStep(0);
  EXPECT_EQ(Write(m_Folder / "other"), ReportResult::Cancelled);
  EXPECT_FALSE(std::filesystem::exists(m_Folder / "other"));
}

TEST_F(HtmlReportTest, APageThatIsTooLargeIsAskedAbout) {
  Comment("x");
  ASSERT_EQ(Write(m_Pages), ReportResult::Written);
  const std::string most = std::to_string(HtmlReport::kMostPageBytes - Page().size() + 1);
  const auto fill = [this](const std::string& size) {
    RunInVisits("UPDATE Step SET Comments = printf('%.*c', " + size + ", 'x')");
  };
  fill(most);
  ASSERT_EQ(Write(m_Pages), ReportResult::Written) << "as large as a page can be";
  EXPECT_EQ(Page().size(), 100'096u);
  const auto before = Files();

  fill(most + " + 1");
  m_Prompts.Queue(u"Caution", Answer::No);
  ExpectFails(m_Pages, "The page inspection.htm has 100097 bytes");
  EXPECT_EQ(Files(), before);
  m_Prompts.Queue(u"Caution", Answer::Yes);
  EXPECT_EQ(Write(m_Pages), ReportResult::Written);
  EXPECT_EQ(Page().size(), 100'096u);
  EXPECT_THAT(ContentOf(m_Pages / "index.htm"), HasSubstr("</frameset></html>"));
}

TEST_F(HtmlReportTest, AFolderThatCannotBeMadeIsNamedWithTheNumberOfTheError) {
  for (const std::string name : {"a/b", "a\\b", "C:x", "..", "x..y"}) {
    RunInVisits("UPDATE Inspection SET InspectionNum = '" + name + "'");
    ExpectFails({}, "create the \\Program Files\\Brindlecove\\Inspection" + name + " directory. Error#123");
  }
  EXPECT_FALSE(std::filesystem::exists(m_Folder / "Program Files/Brindlecove"));
  RunInVisits("UPDATE Inspection SET InspectionNum = 'H-1'");
  EXPECT_EQ(Write({}), ReportResult::Written) << "also where the device has no folder of programs";
  EXPECT_EQ(Write({}), ReportResult::Written) << "into the folder that is there";

  const auto missing = m_Folder / "no" / "such";
  ExpectFails(missing, "Unable to create the " + missing.native() + " directory. Error#3");
  ExpectFails(m_Folder / std::string(300, 'n'), "Error#123");
  for (const auto& [error, number] :
       {std::pair{std::errc::permission_denied, "Error#5"}, {std::errc::no_space_on_device, "Error#112"}}) {
    m_Files.FailFolder(error);
    ExpectFails(m_Pages, number);
  }
}

}  // namespace
}  // namespace inspector::reports
