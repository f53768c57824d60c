#include "LibraryDevice.h"
#include "data/OptionsTable.h"

namespace inspector::tests {
namespace {

TEST(ImportTest, ReadsFilesInPathOrderAndRowsInTheirLines) {
  LibraryDevice device;
  const auto& folder = device.Folder();
  folder.Put("in/b.toml", "[[RatingType]]\nID = 4\n");
  folder.Put(
      "in/a/2.toml",
      "[[RatingType]]\nID = 2\n\n[[StepTemplate]]\nID = 7\nInCategory = [1]\n\n[[RatingType]]\nID = 3\n");
  folder.Put("in/a/10.TOML",
             "[[StepTemplate]]\nID = 8\nInCategory = [20, -1, 20]\n\n[[CategoryStep]]\nCategoryID = "
             "5\nStepID = 6\n\n"
             "[[StepTemplate]]\nID = 9\nInCategory = [20]\n\n[[RatingType]]\nID = 1\n");
  folder.Put("in/a/.2.toml.swp.toml", "[[");
  folder.Put("in/readme.md", "[[");
  ASSERT_EQ(device.Import(folder / "in"), u"");
  EXPECT_EQ(device.Ask("SELECT * FROM RatingType"), "1||\n2||\n3||\n4||");
  EXPECT_EQ(device.Ask("SELECT * FROM CategoryStep"), "20|8\n-1|8\n20|8\n5|6\n20|9\n1|7");
}

TEST(ImportTest, GivesKeysLeftOutTheirNeutralValueAndLinksTheirText) {
  LibraryDevice device;
  ASSERT_EQ(device.ImportText("[[Comments]]\nID = 40\nForStep = [-12]\nForCategory = [3]\nForMaterial = [4]\n"
                              "ForType = [5]\nNulls = [\"Rating\"]\n[[Options]]\nColumnWidth1 = 2\n"
                              "ReportIcon = \"\"\"00fF\n a1\"\"\"\n"),
            u"");
  EXPECT_EQ(device.Ask("SELECT * FROM Comments"), "40|0||NULL|||0");
  EXPECT_EQ(device.Ask("SELECT * FROM StepComment UNION ALL SELECT * FROM CategoryComment UNION ALL SELECT * "
                       "FROM MaterialComment UNION ALL SELECT * FROM InspectionTypeComment"),
            "-12|40|-12-40\n3|40|3-40\n4|40|4-40\n5|40|5-40");
  EXPECT_EQ(device.GetWorkspace().Options().m_ReportIcon, (data::ByteArray{0x00, 0xFF, 0xA1}));
  EXPECT_EQ(device.GetWorkspace().Options().m_ColumnWidth[0], 2);
}

TEST(ImportTest, ReadsWhatPlainEditorsWrite) {
  LibraryDevice device;
  ASSERT_EQ(device.ImportText(
                "\xEF\xBB\xBF# Words\r\n[[Pickers]]\r\nPickerName = \"\xC3\x89tat\"\r\n\r\nPickers2 = 1\r\n"),
            u"library.toml, line 5: [[Pickers]] has no key Pickers2. Nothing was changed.");
  ASSERT_EQ(device.ImportText("\xEF\xBB\xBF[[Pickers]]\r\nPickerName = \"\xC3\x89tat\"\r\n"), u"");
  EXPECT_EQ(device.Ask("SELECT PickerName FROM Pickers"), "\xC3\x89tat");
}

TEST(ImportTest, ReadsTheExampleOfTheGuide) {
  const std::string guide = ContentOf(INSPECTOR_SOURCE_DIR "/docs/library-format.md");
  const std::size_t begin = guide.find("```toml\n") + 8;
  LibraryDevice device;
  ASSERT_EQ(device.ImportText(guide.substr(begin, guide.find("```\n", begin) - begin)), u"");
  EXPECT_EQ(device.Ask("SELECT count(*) FROM MaterialComment"), "1");
}

TEST(ImportTest, ReplacesTheLibraryButNotWhatBelongsToTheDevice) {
  LibraryDevice device;
  device.Run(
      "UPDATE Options SET UserName = 'u', Pswrd = 'p', Port = 9, FooterText = 'old', FinePrint = 'old'");
  device.Run("INSERT INTO UniqueID VALUES ('Comments', 25003)");
  ASSERT_EQ(device.ImportText("[[Options]]\nFooterText = \"new\"\nFinePrint = \"\"\n[[Pickers]]\nID = 1\n"),
            u"");
  const data::OptionsTable& options = device.GetWorkspace().Options();
  EXPECT_EQ(options.m_UserName + options.m_Pswrd + options.m_FooterText + options.m_FinePrint, u"upnew");
  EXPECT_EQ(options.m_Port, 9);
  EXPECT_EQ(options.m_DataVersion, u"5.0");
  EXPECT_EQ(device.Ask("SELECT * FROM UniqueID"), "Comments|25003");

  ASSERT_EQ(device.ImportText("[[UniqueID]]\nTableName = \"X\"\nNextID = 5\n"), u"");
  EXPECT_EQ(device.Ask("SELECT * FROM Pickers"), "");
  EXPECT_EQ(device.Ask("SELECT TableName, FooterText FROM UniqueID, Options"), "X|new");

  // The copy is a database with the library as it was.
  ASSERT_NE(device.Copy(), "");
  EXPECT_EQ(Shell(device.Copy()).Ask("SELECT count(*) FROM Pickers"), "1");
}

TEST(ImportTest, NamesFileLineAndKeyAndChangesNothing) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"ID = 1", "line 1: a library has no table ID."},
      {"[[Step]]\nStepID = 1", "line 1: a library has no table Step."},
      {"\n[[comments]]\nID = 1", "line 2: a library has no table comments; it is written [[Comments]]."},
      {"[Options]\nPort = 1", "line 1: a row of Options begins with [[Options]], in double brackets."},
      {"Pickers = [1]", "line 1: a row of Pickers begins with"},
      {"[[Comments]]\nID = 1\nRaiting = \"\"", "line 3: [[Comments]] has no key Raiting."},
      {"[[Comments]]\nID = 1\nrating = \"\"",
       "line 3: [[Comments]] has no key rating; it is written Rating."},
      {"[[Pickers]]\nForStep = [1]", "line 2: [[Pickers]] has no key ForStep."},
      {"[[Comments]]\nID = 1\n\nID = 2", "line 4: "},
      {"[[Comments]]\nID = \"1\"", "line 2: the key ID of [[Comments]] takes a whole number"},
      {"[[Comments]]\nID = 2147483648", "line 2: the key ID of [[Comments]] takes a whole number"},
      {"[[Comments]]\nID = 1.0", "line 2: the key ID of [[Comments]] takes a whole number"},
      {"[[Comments]]\nRating = 1", "line 2: the key Rating of [[Comments]] takes a text"},
      {"[[Comments]]\nVoidFlag = 1", "line 2: the key VoidFlag of [[Comments]] takes true or false."},
      {"[[Options]]\nColumnWidth2 = \"1\"", "line 2: the key ColumnWidth2 of [[Options]] takes a number."},
      {"[[Options]]\nReportIcon = \"abc\"",
       "line 2: the key ReportIcon of [[Options]] takes a text of hexadecimal"},
      {"[[Options]]\nUserName = \"x\"", "line 2: the key UserName belongs to the device"},
      {"[[Options]]\nNulls = [\"Pswrd\"]", "line 2: the key Pswrd belongs to the device"},
      {"[[Comments]]\nForStep = [1]", "line 2: the key ForStep needs an ID on the same row."},
      {"[[Comments]]\nID = 1\nForStep = 1", "line 3: the key ForStep of [[Comments]] takes a list of IDs"},
      {"[[Comments]]\nID = 1\nForStep = [1,\n\"2\"]",
       "line 4: the key ForStep of [[Comments]] takes a list of IDs"},
      {"[[Comments]]\nNulls = \"ID\"", "line 2: the key Nulls takes a list"},
      {"[[Comments]]\nNulls = [\"Id\"]", "line 2: [[Comments]] has no key Id; it is written ID."},
      {"[[Comments]]\nRating = \"\"\nNulls = [\"Rating\"]", "line 3: the key Rating has a value already"},
      {"[[Comments]]\nRating = \"open\n\"", "line 2: "},
      {"[[Comments]]\nRating = \"\xE9\"", "line 2: "},
  };
  LibraryDevice device;
  device.Run("INSERT INTO Pickers VALUES ('Color', 'red', 1)");
  const Library before = device.Everything();
  for (const auto& [content, problem] : cases) {
    const std::string said = device::ToUtf8(device.ImportText(content));
    EXPECT_THAT(said, testing::StartsWith("library.toml, " + problem)) << content;
    EXPECT_THAT(said, testing::EndsWith(" Nothing was changed.")) << content;
    EXPECT_EQ(device.Copy(), "");
  }
  EXPECT_TRUE(device.Everything() == before);
}

TEST(ImportTest, RefusesFoldersThatAreNoLibrary) {
  LibraryDevice device;
  const auto& folder = device.Folder();
  const auto said = [&](const char* name) { return device::ToUtf8(device.Import(folder / name)); };
  EXPECT_THAT(said("missing"), testing::HasSubstr("holds no .toml files"));
  folder.Put("empty/notes.txt");
  EXPECT_THAT(said("empty"), testing::HasSubstr("holds no .toml files"));
  EXPECT_THAT(said("empty/notes.txt"), testing::HasSubstr("cannot be read"));

  folder.Put("twice/a.toml", "[[Options]]\n[[Options]]\n");
  folder.Put("twice/b.toml", "\n[[Options]]\n");
  EXPECT_THAT(said("twice"), testing::StartsWith("b.toml, line 2: [[Options]] stands in a.toml already"));

  folder.Put("loop/a.toml");
  std::filesystem::create_directory_symlink(folder / "loop", folder / "loop/back");
  EXPECT_THAT(said("loop"), testing::HasSubstr("lies too deep"));

  folder.Put("large/video.toml");
  std::filesystem::resize_file(folder / "large/video.toml", 100u << 20);
  EXPECT_THAT(said("large"), testing::StartsWith("video.toml is too large"));

  folder.Put("broken/a.toml", "[[Pickers]]\n");
  device.Files().FailRead(1);
  EXPECT_THAT(said("broken"), testing::StartsWith("a.toml cannot be read"));
}

TEST(ImportTest, IsWholeOrNotAtAll) {
  LibraryDevice device;
  device.Run("INSERT INTO Pickers VALUES ('Color', 'red', 1)");
  const Library before = device.Everything();
  const std::string content = "[[Comments]]\nID = 1\n[[VoidComments]]\nMaterialID = 1\n";

  device.Files().FailWrite(1);  // no room for the copy
  EXPECT_NE(device.ImportText(content), u"");
  EXPECT_TRUE(device.Everything() == before);

  device.Run("CREATE TRIGGER full BEFORE INSERT ON VoidComments BEGIN SELECT RAISE(ABORT, 'full'); END");
  EXPECT_THAT(device::ToUtf8(device.ImportText(content)), testing::HasSubstr("cannot be stored"));
  EXPECT_EQ(device.Copy(), "");
  EXPECT_TRUE(device.Everything() == before);
  EXPECT_FALSE(device.Connection().IsInTransaction());
  EXPECT_EQ(device.FaultCount(), 1);

  device.Run("DROP TRIGGER full");
  EXPECT_EQ(device.ImportText(content), u"");
  EXPECT_NE(device.Copy(), "");
}

}  // namespace
}  // namespace inspector::tests
