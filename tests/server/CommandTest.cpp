#include "server/CommandLine.h"

#include <sstream>

#include "Office.h"
#include "support/Shell.h"

namespace inspector::tests {
namespace {

class SyncCommandTest : public testing::Test {
protected:
  // What a command said on both streams, and its exit code in front when it is not 0.
  std::string Run(std::vector<std::string> words, const std::string& input = "") {
    words.insert(words.end(), {"--data", (m_Folder / "data").string(), "--config", Cheap()});
    std::istringstream in(input);
    std::ostringstream out;
    const int code = RunCommandLine(words, in, out, out);
    return (code != 0 ? std::to_string(code) + ": " : "") + out.str();
  }
  std::string Import(const std::string& content, const std::vector<std::string>& more = {}) {
    std::vector<std::string> words = {"inspection", "import", m_Folder.Put("work.csv", content).string(),
                                      "--office", "north"};
    words.insert(words.end(), more.begin(), more.end());
    return Run(words);
  }
  std::string Cheap() const { return m_Folder.Put("cheap.toml", "password_mib = 1\n").string(); }
  std::string Ask(const std::string& sql) const { return Shell(m_Folder / "data/syncd.db").Ask(sql); }
  std::string Stored() const {
    return Ask(
        "SELECT InspectionNum, ClientName, InspectionDate, InspectionTypeID FROM Inspection WHERE NOT "
        "IsRemoved ORDER BY 1");
  }

  TemporaryFolder m_Folder;
};

TEST_F(SyncCommandTest, UsersHavePasswordsThatDevicesCanSend) {
  EXPECT_THAT(Run({"user", "list"}), StartsWith("1: There is no data in"));
  EXPECT_FALSE(std::filesystem::exists(m_Folder / "data"));
  EXPECT_EQ(Run({"user", "add", "ana", "--office", "north"}, "Z\u00FCrich\n"),
            "\"north\" is a new office.\n");
  EXPECT_THAT(Ask("SELECT Name, PasswordHash FROM User"), StartsWith("ana|$argon2id$"));
  const auto fits = [this](const std::string& bytes) {
    return IsPassword(Ask("SELECT PasswordHash FROM User"), bytes);
  };
  EXPECT_TRUE(fits("Z\xFCrich")) << "as it comes over the wire";
  EXPECT_EQ(Run({"user", "passwd", "ana"}, "0123456789abcdef\r\n"), "");
  EXPECT_TRUE(fits("0123456789abcdef"));
  for (const char* wrong : {"", "\n", "0123456789abcdefg\n", "pass\tword\n", "\u0141\u00F3d\u017A\n"})
    EXPECT_THAT(Run({"user", "passwd", "ana"}, wrong), StartsWith("1: A password may")) << wrong;
  EXPECT_TRUE(fits("0123456789abcdef"));
  EXPECT_THAT(Run({"user", "add", "ana", "--office", "south"}, "x\n"),
              StartsWith("1: There is a user \"ana\" already"));
  EXPECT_THAT(Run({"user", "add", "", "--office", "south"}, "x\n"), StartsWith("2: A name may not be empty"));
  EXPECT_THAT(Run({"user", "passwd", "ben"}, "x\n"), StartsWith("1: There is no user"));
  EXPECT_THAT(Run({"user", "list", "--json"}),
              AllOf(HasSubstr("\"Office\": \"north\""), Not(HasSubstr("argon"))));
  EXPECT_EQ(Run({"user", "remove", "ana"}), "");
  EXPECT_THAT(Run({"user", "remove", "ana"}), StartsWith("1: There is no user"));
}

TEST_F(SyncCommandTest, InspectionsAreEnteredByTheirFields) {
  EXPECT_THAT(Run({"inspection", "add", "--office", "north", "InspectionNum=7", "ClientName=Zo\u00EB",
                   "InspectionDate=5/31/2026"}),
              HasSubstr("new office"));
  EXPECT_EQ(Run({"inspection", "add", "--office", "north", "number=8", "DATE=2026-06-01", "type=4",
                 "general=a\r\nb"}),
            "");
  EXPECT_EQ(Run({"inspection", "set", "--office", "north", "7", "address=12 Elm=Street"}), "");
  EXPECT_EQ(Stored(), "7|Zo\u00EB|2026-05-31|-1\n8||2026-06-01|4");
  EXPECT_THAT(Run({"inspection", "show", "--office", "north", "InspectionNum=7"}),
              HasSubstr("DwellingAddress     12 Elm=Street\n"));
  EXPECT_THAT(Run({"inspection", "list", "--office", "north"}),
              HasSubstr("\n7       2026-05-31  -1    Zo\u00EB"));
  EXPECT_THAT(Run({"inspection", "list", "--office", "north", "type=4", "--json"}),
              AllOf(HasSubstr("\"8\""), Not(HasSubstr("\"7\""))));

  const std::pair<std::vector<std::string>, const char*> refused[] = {
      {{"add", "number=7"}, "There is an inspection \"7\" already"},
      {{"set", "number=9", "client=x"}, "There is no inspection \"9\""},
      {{"add", "client=x"}, "Which inspection"},
      {{"add", "number="}, "Which inspection"},
      {{"add", "number=9", "phone=1"}, "phone does not travel"},
      {{"add", "number=9", "colour=red"}, "There is no field \"colour\""},
      {{"add", "number=9", "date=2026-02-30"}, "is no date"},
      {{"add", "number=9", "type=x"}, "is no number"},
      {{"add", "number=9", "client=a\x04"}, "ClientName has the control character U+0004"},
      {{"add", "number=9", "client=a\nb"}, "ClientName has the control character U+000A"},
      {{"add", "number=9", "client=\u0142"}, "ClientName has a character that devices cannot show: \u0142"},
      {{"add", "number=9", "client=a\xFF"}, "ClientName has a character that devices cannot show"},
      {{"add", "number=9", "general=" + std::string(2048, 'x')},
       "GeneralInformation has 2048 characters; 2047 can be sent"},
  };
  for (const auto& [words, why] : refused) {
    std::vector<std::string> all = {"inspection", words[0], "--office", "north"};
    all.insert(all.end(), words.begin() + 1, words.end());
    EXPECT_THAT(Run(all), AllOf(StartsWith("1: "), HasSubstr(why)));
  }
  EXPECT_EQ(Stored(), "7|Zo\u00EB|2026-05-31|-1\n8||2026-06-01|4");
  EXPECT_EQ(Run({"inspection", "add", "--office", "north", "9", "general=" + std::string(2047, 'x')}), "");
}

TEST_F(SyncCommandTest, TablesAreImportedWholeOrNotAtAll) {
  EXPECT_THAT(Import("\xEF\xBB\xBFInspectionNum,ClientName,date,type\r\n7,\"Ruiz, "
                     "\"\"Ana\"\"\",2026-05-31,3\r\n\r\n8,,5/1/2026,\r\n"),
              EndsWith("2 added, 0 changed, 0 as they were.\n"));
  EXPECT_EQ(Stored(), "7|Ruiz, \"Ana\"|2026-05-31|3\n8||2026-05-01|-1");
  EXPECT_EQ(Import("client;number\nM\xFCller;8\nRuiz, \"Ana\";7\n"), "0 added, 1 changed, 1 as they were.\n");
  EXPECT_EQ(Stored(), "7|Ruiz, \"Ana\"|2026-05-31|3\n8|M\u00FCller|2026-05-01|-1") << "dates and types stay";
  EXPECT_EQ(Import("number\tgeneral\n9\t\"two\nlines\"", {"--dry-run"}), "1 inspections can be imported.\n");

  const std::pair<const char*, const char*> refused[] = {
      {"", "The file is empty"},
      {"client,colour\nx,red\n", "line 1: There is no field \"colour\""},
      {"client\nx\n", "line 1: there is no column InspectionNum"},
      {"number,client\n10,x\n11\n", "line 3: 1 values where there are 2"},
      {"number,general\n10,\"a\nb\"\n10,y\n", "line 4: the number is that of line 2"},
      {"number,date\n10,2026-05-31\n11,tomorrow\n", "line 3: InspectionDate: \"tomorrow\" is no date"},
      {"number,client\n10,\x01\n", "line 2: ClientName has the control character U+0001"},
      {"number,client\n,x\n", "line 2: there is no number"},
      {"number,client\n10,\"x\n", "line 2: a quote is not closed"},
      {"number,client\n10,\"x\"y\n", "line 2: words follow a closing quote"},
  };
  for (const auto& [content, why] : refused)
    EXPECT_THAT(Import(content), AllOf(StartsWith("1: "), HasSubstr(why))) << content;
  EXPECT_EQ(Ask("SELECT COUNT(*) FROM Inspection"), "2");
}

TEST_F(SyncCommandTest, EveryVersionIsKeptAndCanComeBack) {
  Run({"inspection", "add", "--office", "north", "7", "client=Ana", "date=2026-05-31"});
  Run({"inspection", "set", "--office", "north", "7", "client=Ben"});
  EXPECT_EQ(Run({"inspection", "remove", "7", "--office", "north"}), "");
  EXPECT_THAT(Run({"inspection", "show", "7", "--office", "north"}), StartsWith("1: "));
  EXPECT_EQ(Stored(), "");
  EXPECT_EQ(Run({"restore", "7", "--office", "north", "--version", "1"}), "");
  EXPECT_EQ(Stored(), "7|Ana|2026-05-31|-1");
  const std::string history = Run({"history", "7", "--office", "north"});
  for (const char* part :
       {"\n1 ", "\n2 ", "\n3 ", "\n4 ", "added", "ClientName=Ben", "removed", "restored", "command line"})
    EXPECT_THAT(history, HasSubstr(part));
  EXPECT_THAT(Run({"restore", "7", "--office", "north", "--version", "9"}),
              StartsWith("1: There is no version 9"));
  EXPECT_THAT(Run({"history", "7", "--office", "south"}), StartsWith("1: "));

  std::unique_ptr<SqliteStorage> storage;
  ASSERT_EQ(SqliteStorage::Open(m_Folder / "data", storage), "");
  const Push push{
      "north", {u"", u"12 Elm", u"Zo\u00EB"}, {"ana", "10.0.0.7", device::MakeCalendarTime(2026, 5, 30)}};
  ASSERT_EQ(storage->StorePushes(std::span(&push, 1)), "");
  EXPECT_THAT(Run({"history", "--office", "north"}), HasSubstr("10.0.0.7"));
  EXPECT_THAT(Run({"restore", "7", "--unnumbered", "--version", "1", "--office", "north"}),
              StartsWith("1: There is an inspection"));
  EXPECT_EQ(Run({"restore", "9", "--unnumbered", "--version", "1", "--office", "north"}), "");
  EXPECT_EQ(Stored(), "7|Ana|2026-05-31|-1\n9|Zo\u00EB|2026-05-30|-1");

  EXPECT_THAT(Run({"restore", "a\4b", "--unnumbered", "--version", "1", "--office", "north"}),
              StartsWith("2: InspectionNum has the control character U+0004"));
  EXPECT_THAT(Run({"restore", std::string(2048, '7'), "--unnumbered", "--version", "1", "--office", "north"}),
              StartsWith("2: InspectionNum has 2048 characters"));

  EXPECT_EQ(Run({"backup", (m_Folder / "copy.db").string()}), "");
  EXPECT_EQ(std::filesystem::status(m_Folder / "copy.db").permissions(),
            std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  EXPECT_EQ(Shell(m_Folder / "copy.db").Ask("SELECT COUNT(*) FROM Inspection"), "2");
}

TEST_F(SyncCommandTest, ConfigurationsAreChecked) {
  const auto check = [this](const std::string& content, const std::vector<std::string>& more = {}) {
    std::vector<std::string> words = {"--check-config", "--config",
                                      m_Folder.Put("syncd.toml", content).string()};
    words.insert(words.end(), more.begin(), more.end());
    std::istringstream in;
    std::ostringstream out;
    const int code = RunCommandLine(words, in, out, out);
    return std::to_string(code) + ": " + out.str();
  };
  EXPECT_EQ(check("data = 'x'\nlisten = '[::1]:7020'\nstatus = '127.0.0.1:7021'\nlog = 'json'\ntime_zone = "
                  "'Europe/Vienna'\n"
                  "max_sessions = 9\nidle_seconds = 5\n"),
            "0: The configuration is sound.\n");
  const std::pair<const char*, const char*> faulty[] = {
      {"", "Where is the data?"},
      {"data = 'x'\nlisen = 'a:1'", ":2: there is no setting \"lisen\""},
      {"data = 'x'\nlisten = '7020'", ":2: listen is HOST:PORT"},
      {"data = 'x'\nlisten = 'a:70200'", ":2: listen is HOST:PORT"},
      {"data = 'x'\nmax_sessions = 0", ":2: max_sessions is a number above 0"},
      {"data = 'x'\ntime_zone = 'Mars/Base'", "no time zone \"Mars/Base\""},
      {"data = x", ":1: "},
  };
  for (const auto& [content, why] : faulty)
    EXPECT_THAT(check(content), AllOf(StartsWith("2: "), HasSubstr(why))) << content;
  EXPECT_THAT(check("data = 'x'", {"--listen", "nowhere"}), StartsWith("2: --listen"));
  EXPECT_THAT(check("data = 'x'", {"--port", "7"}), StartsWith("2: "));
  EXPECT_THAT(Run({"user"}), StartsWith("2: "));
}

// A day apart, whatever the time is here.
TEST_F(SyncCommandTest, CommandsMeanTheDaysOfTheServersTimeZone) {
  for (const auto& [number, zone] : {std::pair{"1", "Pacific/Kiritimati"}, {"2", "Pacific/Pago_Pago"}}) {
    const std::string config = std::string("time_zone = '") + zone + "'\ndata = 'data'\n";
    std::istringstream in;
    std::ostringstream out;
    EXPECT_EQ(RunCommandLine({"inspection", "add", number, "--office", "north", "--config",
                              m_Folder.Put("zone.toml", config).string()},
                             in, out, out),
              0);
  }
  unsetenv("TZ");
  tzset();
  EXPECT_EQ(Ask("SELECT COUNT(DISTINCT InspectionDate) FROM Inspection"), "2");
}

TEST_F(SyncCommandTest, AFileOfALaterVersionIsLeftAsItIs) {
  Run({"inspection", "add", "--office", "north", "7"});
  Shell(m_Folder / "data/syncd.db").Run("PRAGMA user_version = 99");
  EXPECT_THAT(Run({"inspection", "list", "--office", "north"}), HasSubstr("later version"));
  EXPECT_EQ(Ask("PRAGMA user_version"), "99");
}

}  // namespace
}  // namespace inspector::tests
