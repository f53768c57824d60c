// Spelling by the command line, with the dictionary that the build makes.
#include "CommandLineFixture.h"

namespace inspector::cli {
namespace {

class SpellCommandsTest : public CommandLineTest {
protected:
  void SetUp() override {
    m_Device.Put("Program Files/Brindlecove/spell.dct", ContentOf(INSPECTOR_DICTIONARIES "/american.dct"));
    CommandLineTest::SetUp();
  }
  // Of a text in a file: the words that are found, each with where it stands and the first suggestion.
  std::string Found(const std::string& text) {
    const CliRun run = Cli("spell " + m_Folder.Put("notes.txt", text).string());
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.exit, run.out.empty() ? 0 : 1);
    std::string found;
    std::istringstream lines(run.out);
    for (std::string line; std::getline(lines, line);) found += line.substr(0, line.find(',')) + "|";
    return found;
  }

  TemporaryFolder m_Folder;
};

TEST_F(SpellCommandsTest, EachUnknownWordIsToldWithItsPlace) {
  EXPECT_EQ(Found("The roof is sound.\n"), "");
  EXPECT_EQ(Found("\xEF\xBB\xBFTeh roof\r\nis \xF0\x9F\x8F\xA0 olld, caf\xC3\xA9 sof fit\n\nleeking"),
            "1:1: Teh: The|2:6: olld: old|2:17: sof fit: soffit|4:1: leeking: leaking|");
  EXPECT_EQ(Found("2x4 at 16\" o.c. ***teh.jpg*** ^teh^ teh@a.example"), "");
  m_Device.Put("Program Files/Brindlecove/newwords.txt", "olld\r\n");
  EXPECT_EQ(Found("olld OLLD qzxv"), "1:11: qzxv: xxv|");
}

TEST_F(SpellCommandsTest, AVisitIsCheckedWithItsPlaces) {
  Between([&] { m_Device.Library().AddShortcut(u"wtr", u"water"); });
  Out("new --type House 'general=Teh house.' notes=fine");
  Cli("--yes defaults 1001");
  const auto category = [this](const std::string& title) {
    return InVisits("SELECT CategoryID FROM Category WHERE CategoryTitle = '" + title + "'");
  };
  Out("steps " + category("Checklist"));
  Out("comment " + InVisits("SELECT StepID FROM Step WHERE StepTitle = 'Shingles'") +
      " 'wtr: shingels are torn.'");
  const CliRun run = Cli("spell --inspection 1001");
  EXPECT_EQ(run.exit, 1);
  EXPECT_THAT(run.out, AllOf(StartsWith("General Information: 1:1: Teh: The, "),
                             HasSubstr("\nRoof: 20.1 Shingles: Comments: 1:31: shingels: shingles, ")));
  EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 2);
  EXPECT_EQ(Cli("spell --inspection 1000").exit, 0);
}

TEST_F(SpellCommandsTest, WhatCannotBeCheckedIsSaid) {
  ExpectRefused(2, "spell", "Give one file");
  ExpectRefused(2, "spell a b", "Give one file");
  ExpectRefused(2, "spell a --inspection 1000", "Give one file");
  ExpectRefused(2, "spell --inspection x", "is no key");
  ExpectRefused(1, "spell --inspection 77", "There is no inspection 77");
  ExpectRefused(1, "spell " + (m_Folder / "missing.txt").string(), "missing.txt cannot be read");
  EXPECT_EQ(Out("spell -"), "");
  std::string bad = ContentOf(INSPECTOR_DICTIONARIES "/american.dct");
  bad[8] = static_cast<char>(bad[8] + 1);
  m_Device.Put("Program Files/Brindlecove/spell.dct", bad);
  EXPECT_EQ(Cli("spell -").err, "bad dictionary file\n");
  std::filesystem::remove(Home() / "Program Files/Brindlecove/spell.dct");
  ExpectRefused(1, "spell -", "There is no dictionary");
}

}  // namespace
}  // namespace inspector::cli
