#include "LibraryDevice.h"
#include "data/OptionsTable.h"

namespace inspector::tests {
namespace {

using ImportTest = LibraryTest;

TEST_F(ImportTest, ReadsFilesInPathOrderAndRowsInTheirLines) {
  m_Folder.Put("in/b.toml", "[[RatingType]]\nID = 4\n");
  m_Folder.Put(
      "in/a/2.toml",
      "[[RatingType]]\nID = 2\n\n[[StepTemplate]]\nID = 7\nInCategory = [1]\n\n[[RatingType]]\nID = 3\n");
  m_Folder.Put("in/a/10.TOML",
               "[[StepTemplate]]\nID = 8\nInCategory = [20, -1, 20]\n\n[[CategoryStep]]\nCategoryID = "
               "5\nStepID = 6\n\n"
               "[[StepTemplate]]\nID = 9\nInCategory = [20]\n\n[[RatingType]]\nID = 1\n");
  m_Folder.Put("in/a/.2.toml.swp.toml", "[[");
  m_Folder.Put("in/readme.md", "[[");
  ASSERT_EQ(Import(m_Folder / "in"), "");
  EXPECT_EQ(Ask("SELECT * FROM RatingType"), "1||\n2||\n3||\n4||");
  EXPECT_EQ(Ask("SELECT * FROM CategoryStep"), "20|8\n-1|8\n20|8\n5|6\n20|9\n1|7");
}

TEST_F(ImportTest, GivesKeysLeftOutTheirNeutralValueAndLinksTheirText) {
  ASSERT_EQ(ImportText("[[Comments]]\nID = 40\nForStep = [-12]\nForCategory = [3]\nForMaterial = [4]\n"
                       "ForType = [5]\nNulls = [\"Rating\"]\n[[Options]]\nColumnWidth1 = 2\n"
                       "ReportIcon = \"\"\"00fF\n a1\"\"\"\n"),
            "");
  EXPECT_EQ(Ask("SELECT * FROM Comments"), "40|0||NULL|||0");
  EXPECT_EQ(Ask("SELECT * FROM StepComment UNION ALL SELECT * FROM CategoryComment UNION ALL SELECT * FROM "
                "MaterialComment UNION ALL SELECT * FROM InspectionTypeComment"),
            "-12|40|-12-40\n3|40|3-40\n4|40|4-40\n5|40|5-40");
  EXPECT_EQ(m_Workspace->Options().m_ReportIcon, (data::ByteArray{0x00, 0xFF, 0xA1}));
  EXPECT_EQ(m_Workspace->Options().m_ColumnWidth[0], 2);
}

TEST_F(ImportTest, ReadsWhatPlainEditorsWrite) {
  ASSERT_EQ(ImportText(
                "\xEF\xBB\xBF# Words\r\n[[Pickers]]\r\nPickerName = \"\xC3\x89tat\"\r\n\r\nPickers2 = 1\r\n"),
            "library.toml, line 5: [[Pickers]] has no key Pickers2. Nothing was changed.");
  ASSERT_EQ(ImportText("\xEF\xBB\xBF[[Pickers]]\r\nPickerName = \"\xC3\x89tat\"\r\n"), "");
  EXPECT_EQ(Ask("SELECT PickerName FROM Pickers"), "\xC3\x89tat");
}

TEST_F(ImportTest, ReadsTheExampleOfTheGuide) {
  const std::string guide = ContentOf(INSPECTOR_SOURCE_DIR "/docs/library-format.md");
  const std::size_t begin = guide.find("```toml\n") + 8;
  ASSERT_EQ(ImportText(guide.substr(begin, guide.find("```\n", begin) - begin)), "");
  EXPECT_EQ(Ask("SELECT count(*) FROM MaterialComment"), "1");
}

TEST_F(ImportTest, ReplacesTheLibraryButNotWhatBelongsToTheDevice) {
  RunInLibrary(
      "UPDATE Options SET UserName = 'u', Pswrd = 'p', Port = 9, FooterText = 'old', FinePrint = 'old'");
  RunInLibrary("INSERT INTO UniqueID VALUES ('Comments', 25003)");
  ASSERT_EQ(ImportText("[[Options]]\nFooterText = \"new\"\nFinePrint = \"\"\n[[Pickers]]\nID = 1\n"), "");
  const data::OptionsTable& options = m_Workspace->Options();
  EXPECT_EQ(options.m_UserName + options.m_Pswrd + options.m_FooterText + options.m_FinePrint, u"upnew");
  EXPECT_EQ(options.m_Port, 9);
  EXPECT_EQ(options.m_DataVersion, u"5.0");
  EXPECT_EQ(Ask("SELECT * FROM UniqueID"), "Comments|25003");

  ASSERT_EQ(ImportText("[[UniqueID]]\nTableName = \"X\"\nNextID = 5\n"), "");
  EXPECT_EQ(Ask("SELECT * FROM Pickers"), "");
  EXPECT_EQ(Ask("SELECT TableName, FooterText FROM UniqueID, Options"), "X|new");

  // The copy is a database with the library as it was.
  ASSERT_NE(m_Copy, "");
  EXPECT_EQ(Shell(m_Copy).Ask("SELECT count(*) FROM Pickers"), "1");
}

TEST_F(ImportTest, NamesFileLineAndKeyAndChangesNothing) {
  const std::string whole = "the key ID of [[Comments]] takes a whole number";
  const std::string list = "the key ForStep of [[Comments]] takes a list of IDs";
  const std::pair<std::string, std::string> kCases[] = {
      {"ID = 1", "1: a library has no table ID."},
      {"\n[[comments]]\nID = 1", "2: a library has no table comments; it is written [[Comments]]."},
      {"[Options]\nPort = 1", "1: a row of Options begins with [[Options]], in double brackets."},
      {"[[Comments]]\nID = 1\nRaiting = \"\"", "3: [[Comments]] has no key Raiting."},
      {"[[Comments]]\nrating = \"\"", "2: [[Comments]] has no key rating; it is written Rating."},
      {"[[Pickers]]\nForStep = [1]", "2: [[Pickers]] has no key ForStep."},
      {"[[Comments]]\nID = 1\n\nID = 2", "4: "},
      {"[[Comments]]\nID = \"1\"", "2: " + whole},
      {"[[Comments]]\nID = 2147483648", "2: " + whole},
      {"[[Comments]]\nRating = 1", "2: the key Rating of [[Comments]] takes a text"},
      {"[[Comments]]\nVoidFlag = 1", "2: the key VoidFlag of [[Comments]] takes true or false."},
      {"[[Options]]\nColumnWidth2 = \"1\"", "2: the key ColumnWidth2 of [[Options]] takes a number."},
      {"[[Options]]\nReportIcon = \"abc\"",
       "2: the key ReportIcon of [[Options]] takes a text of hexadecimal"},
      {"[[Options]]\nUserName = \"x\"", "2: the key UserName belongs to the device"},
      {"[[Options]]\nNulls = [\"Pswrd\"]", "2: the key Pswrd belongs to the device"},
      {"[[Comments]]\nForStep = [1]", "2: the key ForStep needs an ID on the same row."},
      {"[[Comments]]\nID = 1\nForStep = [1,\n\"2\"]", "4: " + list},
      {"[[Comments]]\nNulls = \"ID\"", "2: the key Nulls takes a list"},
      {"[[Comments]]\nNulls = [\"Id\"]", "2: [[Comments]] has no key Id; it is written ID."},
      {"[[Comments]]\nRating = \"\"\nNulls = [\"Rating\"]", "3: the key Rating has a value already"},
      {"[[Comments]]\nRating = \"open\n\"", "2: "},
      {"[[Comments]]\nRating = \"\xE9\"", "2: "}};
  RunInLibrary("INSERT INTO Pickers VALUES ('Color', 'red', 1)");
  const Library before = Everything();
  for (const auto& [content, problem] : kCases) {
    const std::string said = ImportText(content);
    EXPECT_THAT(said, StartsWith("library.toml, line " + problem)) << content;
    EXPECT_THAT(said, EndsWith(" Nothing was changed.")) << content;
    EXPECT_EQ(m_Copy, "");
  }
  EXPECT_TRUE(Everything() == before);
}

TEST_F(ImportTest, RefusesFoldersThatAreNoLibrary) {
  const auto said = [this](const char* name) { return Import(m_Folder / name); };
  EXPECT_THAT(said("missing"), HasSubstr("holds no .toml files"));
  m_Folder.Put("empty/notes.txt");
  EXPECT_THAT(said("empty"), HasSubstr("holds no .toml files"));
  EXPECT_THAT(said("empty/notes.txt"), HasSubstr("cannot be read"));

  m_Folder.Put("twice/a.toml", "[[Options]]\n[[Options]]\n");
  m_Folder.Put("twice/b.toml", "\n[[Options]]\n");
  EXPECT_THAT(said("twice"), StartsWith("b.toml, line 2: [[Options]] stands in a.toml already"));

  m_Folder.Put("loop/a.toml");
  std::filesystem::create_directory_symlink(m_Folder / "loop", m_Folder / "loop/back");
  EXPECT_THAT(said("loop"), HasSubstr("lies too deep"));

  m_Folder.Put("large/video.toml");
  std::filesystem::resize_file(m_Folder / "large/video.toml", 100u << 20);
  EXPECT_THAT(said("large"), StartsWith("video.toml is too large"));

  m_Folder.Put("broken/a.toml", "[[Pickers]]\n");
  m_Files.FailRead(1);
  EXPECT_THAT(said("broken"), StartsWith("a.toml cannot be read"));
}

TEST_F(ImportTest, IsWholeOrNotAtAll) {
  RunInLibrary("INSERT INTO Pickers VALUES ('Color', 'red', 1)");
  const Library before = Everything();
  const std::string content = "[[Comments]]\nID = 1\n[[VoidComments]]\nMaterialID = 1\n";

  m_Files.FailWrite(1);  // no room for the copy
  EXPECT_NE(ImportText(content), "");
  EXPECT_TRUE(Everything() == before);

  RunInLibrary("CREATE TRIGGER full BEFORE INSERT ON VoidComments BEGIN SELECT RAISE(ABORT, 'full'); END");
  EXPECT_THAT(ImportText(content), HasSubstr("cannot be stored"));
  EXPECT_EQ(m_Copy, "");
  EXPECT_TRUE(Everything() == before);
  EXPECT_FALSE(Connection().IsInTransaction());
  EXPECT_EQ(m_Faults.Count(), 1);

  RunInLibrary("DROP TRIGGER full");
  EXPECT_EQ(ImportText(content), "");
  EXPECT_NE(m_Copy, "");
}

}  // namespace
}  // namespace inspector::tests
