#include <limits>

#include "LibraryDevice.h"
#include "data/CommentsTable.h"

namespace inspector::tests {
namespace {

// Exports, imports on a second device, and exports there again.
void ExpectRoundTrip(LibraryDevice& device) {
  const Library before = device.Everything();
  ASSERT_EQ(device.Export(device.Folder() / "out"), u"");
  LibraryDevice other;
  ASSERT_EQ(other.Import(device.Folder() / "out"), u"");
  const Library after = other.Everything();
  for (const auto& [table, rows] : before) {
    const auto& read = after.at(table);
    ASSERT_EQ(read.size(), rows.size()) << device::ToUtf8(table);
    for (std::size_t at = 0; at < rows.size(); ++at)
      EXPECT_TRUE(read[at] == rows[at]) << device::ToUtf8(table) << ", row " << at;
  }
  ASSERT_EQ(other.Export(other.Folder() / "again"), u"");
  for (const auto& file : std::filesystem::directory_iterator(device.Folder() / "out"))
    EXPECT_EQ(ContentOf(other.Folder() / "again" / file.path().filename()), ContentOf(file.path()));
}

TEST(RoundTripTest, KeepsTheStarterLibraryAndItsLinksOnTheirRows) {
  LibraryDevice device;
  ASSERT_EQ(device.Import(StarterLibrary()), u"");
  ExpectRoundTrip(device);
  // What an office edits are lists of links at the comments, not thousands of link rows.
  EXPECT_NE(
      ContentOf(device.Folder() / "out/Comments.toml").find("\nForStep = [2002]\nForMaterial = [4005]\n"),
      std::string::npos);
  EXPECT_EQ(ContentOf(device.Folder() / "out/StepComment.toml"),
            "# StepComment: these links stand with the rows of Comments, as ForStep.\n");
}

TEST(RoundTripTest, KeepsRowsThatNobodyWouldWriteByHand) {
  LibraryDevice device;
  device.Run(
      "INSERT INTO Comments (ID, Comments) VALUES (40, 'first'), (40, 'second'), (-7, NULL), (NULL, 'none')");
  device.Run("INSERT INTO Comments (ID) VALUES (2147483647), (-2147483648)");
  // Links to nothing, twice, below zero, out of the order of the comments, under another text.
  device.Run("INSERT INTO StepComment VALUES (-12, 40, '-12-40'), (-12, 40, '-12-40'), (5, 99, '5-99')");
  device.Run("INSERT INTO MaterialComment VALUES (2, 40, '2-40'), (1, 40, 'other'), (NULL, 40, NULL)");
  device.Run("INSERT INTO CategoryComment VALUES (1, -7, '1--7'), (1, 40, '1-40')");
  // These do fit on their rows, doubles included.
  device.Run(
      "INSERT INTO InspectionTypeComment VALUES (-3, 40, '-3-40'), (-3, 40, '-3-40'), (1, -7, '1--7')");
  device.Run(
      "INSERT INTO MaterialTemplate (ID, StepID, CommentsExist) VALUES (1, NULL, 1), (NULL, NULL, NULL)");
  device.Run("INSERT INTO Pickers VALUES ('', '', 0), ('', '', 0), (NULL, 'x', 3)");
  device.Run("INSERT INTO VoidComments VALUES (9, 8), (9, 8), (-1, 0)");
  device.Run("INSERT INTO UniqueID VALUES ('Comments', 25017), ('Pickers', -5), ('Comments', 1)");
  ExpectRoundTrip(device);
  EXPECT_NE(ContentOf(device.Folder() / "out/StepComment.toml").find("LinkKey = \"-12-40\""),
            std::string::npos);
  EXPECT_NE(ContentOf(device.Folder() / "out/Comments.toml").find("\nForType = [-3, -3]\n"),
            std::string::npos);
}

TEST(RoundTripTest, KeepsEveryCharacterByteAndDigit) {
  LibraryDevice device;
  data::CommentsTable comments(device.GetWorkspace().GetDatabases());
  comments.PrepareNew();
  for (char32_t unit = 0; unit < 0x10000; ++unit)
    if (unit < 0xD800 || unit > 0xDFFF) comments.m_Comments.push_back(static_cast<char16_t>(unit));
  comments.m_Comments += u"\U0001F3E0\U0010FFFF\\u0041\"\"\"'''\r\n\n\r\t\\";
  comments.m_Rating = u" = \"[[Options]]\" # ";
  ASSERT_TRUE(comments.Write());

  data::OptionsTable& options = device.GetWorkspace().Options();
  options.m_ColumnWidth = {0.1 + 0.2, 1e300, std::numeric_limits<double>::denorm_min(), -1.0 / 3,
                           std::numeric_limits<double>::infinity()};
  options.m_ReportIcon.clear();
  for (int byte = 0; byte < 256; ++byte) options.m_ReportIcon.push_back(static_cast<std::uint8_t>(byte));
  ASSERT_TRUE(options.Write());
  ExpectRoundTrip(device);

  device.Run("UPDATE Options SET ReportIcon = x'', ColumnWidth1 = 2, ColumnWidth2 = NULL, FinePrint = NULL");
  ExpectRoundTrip(device);
}

TEST(RoundTripTest, TakesWhatReadsAsYes) {
  LibraryDevice device;
  device.Run("INSERT INTO Comments (ID, VoidFlag) VALUES (1, -1), (2, 7), (3, 0.5), (4, 0), (5, NULL)");
  ExpectRoundTrip(device);
}

TEST(ExportTest, RefusesAValueThatWouldComeBackAsAnother) {
  for (const auto& [column, value] : {std::pair{"OwnerID", "99999999999"},
                                      {"OwnerID", "1.5"},
                                      {"OwnerID", "'many'"},
                                      {"Comments", "x'00ff'"},
                                      {"Comments", "CAST(x'ff' AS TEXT)"},
                                      {"VoidFlag", "'maybe'"}}) {
    LibraryDevice device;
    device.Run(std::string("INSERT INTO Comments (ID, ") + column + ") VALUES (1, NULL), (2, " + value + ")");
    EXPECT_THAT(device::ToUtf8(device.Export(device.Folder() / "out")),
                testing::HasSubstr(std::string("table Comments, column ") + column + ", row 2: "))
        << value;
    EXPECT_FALSE(device.Files().Exists(device.Folder() / "out"));
  }
}

TEST(RoundTripTest, NeverWritesTheLogin) {
  LibraryDevice device;
  device.Run(
      "UPDATE Options SET UserName = 'somebody', Pswrd = 'hunter2', IPAddress = '10.0.0.7', Port = 4711");
  ASSERT_EQ(device.Export(device.Folder() / "out"), u"");
  const std::string options = ContentOf(device.Folder() / "out/Options.toml");
  for (const char* secret : {"UserName", "Pswrd", "somebody", "hunter2"})
    EXPECT_EQ(options.find(secret), std::string::npos) << secret;
  EXPECT_NE(options.find("IPAddress = \"10.0.0.7\"\nPort = 4711\n"), std::string::npos);
  EXPECT_NE(options.find("HideRatings = false\n"), std::string::npos) << "left out would mean: as it was";
}

TEST(ExportTest, LeavesNoFileBehindThatTheNextImportWouldReadTwice) {
  LibraryDevice device;
  const auto out = device.Folder() / "out";
  device.Run("INSERT INTO Comments (ID) VALUES (1)");
  device.Run("INSERT INTO StepComment VALUES (2, 1, 'odd')");
  ASSERT_EQ(device.Export(out), u"");
  EXPECT_NE(ContentOf(out / "StepComment.toml").find("[[StepComment]]"), std::string::npos);
  device.Run("UPDATE StepComment SET LinkKey = '2-1'");
  ASSERT_EQ(device.Export(out), u"");
  EXPECT_EQ(ContentOf(out / "StepComment.toml").find("[["), std::string::npos);

  device.Folder().Put("out/notes.txt");
  device.Folder().Put("out/.git/config.toml");
  EXPECT_EQ(device.Export(out), u"") << "not read by an import";
  device.Folder().Put("out/more/Pickers.toml");
  device.Run("DELETE FROM Comments");
  EXPECT_THAT(device::ToUtf8(device.Export(out)), testing::HasSubstr("holds more/Pickers.toml"));
  EXPECT_NE(ContentOf(out / "Comments.toml").find("ID = 1"), std::string::npos) << "nothing was written";
}

TEST(ExportTest, NamesTheFileThatCannotBeWritten) {
  LibraryDevice device;
  device.Files().FailCommit(2);
  EXPECT_THAT(device::ToUtf8(device.Export(device.Folder() / "out")),
              testing::HasSubstr("out/CategoryStep.toml"));
  EXPECT_FALSE(device.Files().Exists(device.Folder() / "out/CategoryStep.toml"));
  device.Folder().Put("file");
  EXPECT_NE(device.Export(device.Folder() / "file"), u"");
}

}  // namespace
}  // namespace inspector::tests
