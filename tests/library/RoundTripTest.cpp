#include <limits>

#include "LibraryDevice.h"
#include "data/CommentsTable.h"

namespace inspector::tests {
namespace {

class RoundTripTest : public LibraryTest {
protected:
  // Exports, imports on a second device, and exports there again.
  void ExpectRoundTrip() {
    ASSERT_EQ(Export(m_Folder / "out"), "");
    LibraryDevice other;
    ASSERT_EQ(other.Import(m_Folder / "out"), "");
    const Library after = other.Everything();
    for (const auto& [name, rows] : Everything()) EXPECT_TRUE(after.at(name) == rows) << ToUtf8(name);
    ASSERT_EQ(other.Export(other.m_Folder / "again"), "");
    EXPECT_EQ(FilesBelow(other.m_Folder / "again"), FilesBelow(m_Folder / "out"));
  }
  std::string Exported(const std::string& table) { return ContentOf(m_Folder / "out" / (table + ".toml")); }
};
using ExportTest = RoundTripTest;

TEST_F(RoundTripTest, KeepsTheStarterLibraryAndItsLinksOnTheirRows) {
  ASSERT_EQ(Import(StarterLibrary()), "");
  ExpectRoundTrip();
  // What an office edits are lists of links at the comments, not thousands of link rows.
  EXPECT_THAT(Exported("Comments"), HasSubstr("\nForStep = [2002]\nForMaterial = [4005]\n"));
  EXPECT_THAT(Exported("StepComment"), HasSubstr("these links stand with the rows of Comments, as ForStep"));
}

TEST_F(RoundTripTest, KeepsRowsThatNobodyWouldWriteByHand) {
  RunInLibrary(
      "INSERT INTO Comments (ID, Comments) VALUES (40, 'one'), (40, 'two'), (-7, NULL), (NULL, 'none')");
  RunInLibrary("INSERT INTO Comments (ID) VALUES (2147483647), (-2147483648)");
  RunInLibrary("INSERT INTO Comments (ID, VoidFlag) VALUES (1, -1), (2, 7), (3, 0.5), (4, 0), (5, NULL)");
  // Links to nothing, twice, below zero, out of the order of the comments, under another text.
  RunInLibrary("INSERT INTO StepComment VALUES (-12, 40, '-12-40'), (-12, 40, '-12-40'), (5, 99, '5-99')");
  RunInLibrary("INSERT INTO MaterialComment VALUES (2, 40, '2-40'), (1, 40, 'other'), (NULL, 40, NULL)");
  RunInLibrary("INSERT INTO CategoryComment VALUES (1, -7, '1--7'), (1, 40, '1-40')");
  // These do fit on their rows, doubles included.
  RunInLibrary(
      "INSERT INTO InspectionTypeComment VALUES (-3, 40, '-3-40'), (-3, 40, '-3-40'), (1, -7, '1--7')");
  RunInLibrary(
      "INSERT INTO MaterialTemplate (ID, StepID, CommentsExist) VALUES (1, NULL, 1), (NULL, NULL, NULL)");
  RunInLibrary("INSERT INTO Pickers VALUES ('', '', 0), ('', '', 0), (NULL, 'x', 3)");
  RunInLibrary("INSERT INTO VoidComments VALUES (9, 8), (9, 8), (-1, 0)");
  RunInLibrary("INSERT INTO UniqueID VALUES ('Comments', 25017), ('Pickers', -5), ('Comments', 1)");
  ExpectRoundTrip();
  EXPECT_THAT(Exported("StepComment"), HasSubstr("LinkKey = \"-12-40\""));
  EXPECT_THAT(Exported("Comments"), HasSubstr("\nForType = [-3, -3]\n"));
}

TEST_F(RoundTripTest, KeepsEveryCharacterByteAndDigit) {
  data::CommentsTable comments(m_Workspace->GetDatabases());
  comments.PrepareNew();
  for (char32_t unit = 0; unit < 0x10000; ++unit)
    if (unit < 0xD800 || unit > 0xDFFF) comments.m_Comments.push_back(static_cast<char16_t>(unit));
  comments.m_Comments += u"\U0001F3E0\U0010FFFF\\u0041\"\"\"'''\r\n\n\r\t\\";
  comments.m_Rating = u" = \"[[Options]]\" # ";
  ASSERT_TRUE(comments.Write());

  data::OptionsTable& options = m_Workspace->Options();
  options.m_ColumnWidth = {0.1 + 0.2, 1e300, std::numeric_limits<double>::denorm_min(), -1.0 / 3,
                           std::numeric_limits<double>::infinity()};
  options.m_ReportIcon.clear();
  for (int byte = 0; byte < 256; ++byte) options.m_ReportIcon.push_back(static_cast<std::uint8_t>(byte));
  ASSERT_TRUE(options.Write());
  ExpectRoundTrip();

  RunInLibrary(
      "UPDATE Options SET ReportIcon = x'', ColumnWidth1 = 2, ColumnWidth2 = NULL, FinePrint = NULL");
  ExpectRoundTrip();
}

TEST_F(ExportTest, RefusesAValueThatWouldComeBackAsAnother) {
  const std::pair<std::string, std::string> kCases[] = {{"OwnerID", "99999999999"},
                                                        {"OwnerID", "1.5"},
                                                        {"OwnerID", "'many'"},
                                                        {"Comments", "x'00ff'"},
                                                        {"Comments", "CAST(x'ff' AS TEXT)"},
                                                        {"VoidFlag", "'maybe'"}};
  for (const auto& [column, value] : kCases) {
    RunInLibrary("DELETE FROM Comments; INSERT INTO Comments (ID, " + column + ") VALUES (1, NULL), (2, " +
                 value + ")");
    EXPECT_THAT(Export(m_Folder / "out"), HasSubstr("Comments, column " + column + ", row 2: ")) << value;
    EXPECT_FALSE(m_Files.Exists(m_Folder / "out"));
  }
}

TEST_F(RoundTripTest, NeverWritesTheLogin) {
  RunInLibrary(
      "UPDATE Options SET UserName = 'somebody', Pswrd = 'hunter2', IPAddress = '10.0.0.7', Port = 4711");
  ASSERT_EQ(Export(m_Folder / "out"), "");
  for (const char* secret : {"UserName", "Pswrd", "somebody", "hunter2"})
    EXPECT_THAT(Exported("Options"), Not(HasSubstr(secret)));
  EXPECT_THAT(Exported("Options"), HasSubstr("IPAddress = \"10.0.0.7\"\nPort = 4711\n"));
  EXPECT_THAT(Exported("Options"), HasSubstr("HideRatings = false\n")) << "left out would mean: as it was";
}

TEST_F(ExportTest, LeavesNoFileBehindThatTheNextImportWouldReadTwice) {
  const auto out = m_Folder / "out";
  RunInLibrary("INSERT INTO Comments (ID) VALUES (1)");
  RunInLibrary("INSERT INTO StepComment VALUES (2, 1, 'odd')");
  ASSERT_EQ(Export(out), "");
  EXPECT_THAT(Exported("StepComment"), HasSubstr("[[StepComment]]"));
  RunInLibrary("UPDATE StepComment SET LinkKey = '2-1'");
  ASSERT_EQ(Export(out), "");
  EXPECT_THAT(Exported("StepComment"), Not(HasSubstr("[[")));

  m_Folder.Put("out/notes.txt");
  m_Folder.Put("out/.git/config.toml");
  EXPECT_EQ(Export(out), "") << "not read by an import";
  m_Folder.Put("out/more/Pickers.toml");
  RunInLibrary("DELETE FROM Comments");
  EXPECT_THAT(Export(out), HasSubstr("holds more/Pickers.toml"));
  EXPECT_THAT(Exported("Comments"), HasSubstr("ID = 1")) << "nothing was written";
}

TEST_F(ExportTest, NamesTheFileThatCannotBeWritten) {
  m_Files.FailCommit(2);
  EXPECT_THAT(Export(m_Folder / "out"), HasSubstr("out/CategoryStep.toml"));
  EXPECT_FALSE(m_Files.Exists(m_Folder / "out/CategoryStep.toml"));
  m_Folder.Put("file");
  EXPECT_NE(Export(m_Folder / "file"), "");
}

}  // namespace
}  // namespace inspector::tests
