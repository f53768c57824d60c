// Whole sessions against a server on a real socket, byte for byte.

#include "exchange/SyncSession.h"

#include "exchange/ServerSettings.h"
#include "exchange/SyncList.h"
#include "support/ScriptedServer.h"
#include "support/Shell.h"
#include "support/StartedMachine.h"

namespace inspector::exchange {
namespace {

using protocol::Period;
using End = SyncReport::End;

const std::string kEmpty(1, protocol::kEot);
const std::string kYes = "CNFM\r";

// What the server says of one inspection, its number first.
std::vector<std::string> Offer(const std::string& number, const std::string& client,
                               const std::string& date) {
  using namespace std::string_literals;
  return {number,         "12 Elm Street", client,  kEmpty,    "Salem, OR",
          "Caf\xE9, dry", "House",         "Salem", "M. Cole", kEmpty,
          "\x2C\1\0\0"s,  "Elm Realty",    date};
}

class SyncSessionTest : public ::testing::Test, protected StartedMachine {
protected:
  void SetUp() override {
    RunInVisits(
        "INSERT INTO Inspection VALUES (71, '3 Oak Lane', 'Ana Ruiz', '', 'Salem, OR', 'Clear.', "
        "'2026-07-03T09:05:59', 'House', 1, 0, -5, '2026-014', '555', 'Salem', 'M. Cole', 'L. Ito', 1, "
        "'Elm Realty', 'keep to myself'), "
        "(72, '', 'Ben', '', '', '', '2026-07-04T10:00:00', '', 0, 0, 0, '', '', '', '', '', 0, '', '')");
  }

  // Runs against the server; true where Run says that the dialog is done.
  bool Run(ScriptedServer& server, std::optional<Period> receive, std::vector<std::int32_t> send = {}) {
    return Run(server.Port(), u"127.0.0.1", receive, std::move(send));
  }
  bool Run(int port, const Text& host, std::optional<Period> receive, std::vector<std::int32_t> send = {}) {
    data::OptionsTable& options = m_Workspace->Options();
    options.m_IPAddress = host;
    options.m_Port = port;
    options.m_UserName = u"ana";
    options.m_Pswrd = u"\u00E9clair";
    SyncSession session(*m_Workspace, {receive, std::move(send)});
    const bool isDone = session.Run();
    m_Report = session.Report();
    return isDone;
  }
  std::string Ask(const std::string& sql) {
    return Shell(m_Folder / "My Documents/Inspection_Data.cdb").Ask(sql);
  }
  std::string AllRows() { return Ask("SELECT * FROM Inspection ORDER BY InspectionID"); }

  const std::string m_LogIn =
      "USER ana\\r\nPASS \xE9"
      "clair\\r\n";
  SyncReport m_Report;
};

std::vector<std::string> Together(std::initializer_list<std::vector<std::string>> lists) {
  std::vector<std::string> all;
  for (const auto& list : lists) all.insert(all.end(), list.begin(), list.end());
  return all;
}

std::string Times(int count, const std::string& text) {
  std::string all;
  while (count-- > 0) all += text;
  return all;
}

TEST_F(SyncSessionTest, ReceivesAndSendsByteForByte) {
  // One that is known, one that is new, and one whose number would make another statement of the query.
  ScriptedServer server(Together({{kYes, kYes, "CONT 3\r"},
                                  Offer("2026-014", "Ana and Leo", "8/1/2026"),
                                  Offer("2026-015", kEmpty, "13/1/2026"),
                                  Offer("' OR '1'='1", "Eve \x80", " 02/29/2028 09:30"),
                                  {kYes},
                                  std::vector<std::string>(24, "whatever")}));
  EXPECT_TRUE(Run(server, Period::Week, {72, 71}));
  EXPECT_EQ(server.Heard(),
            m_LogIn + "RECV week\\r\n" + Times(3, "INSP\\r\n" + Times(12, "FELD\\r\n")) +
                "SEND 2\\r\n"
                ".\n.\nBen.\n.\n.\n.\n.\n.\n.\n.\n.\nDONE.\n"
                "2026-014.\n12 Elm Street.\nAna and Leo.\n.\nSalem, OR.\nCaf\xE9, dry.\nHouse.\n"
                "Salem.\nM. Cole.\n.\nElm Realty.\nDONE.\n"
                "QUIT\\r\n");
  // The day is the office's, the hour the inspector's; a day that is none leaves what was there, which is now
  // for a new one. What does not travel stays.
  const std::string same = "|Salem, OR|Caf\xC3\xA9, dry|";
  EXPECT_EQ(AllRows(), "71|12 Elm Street|Ana and Leo|" + same +
                           "2026-08-01T09:05:59|House|1|0|-5|2026-014|555|"
                           "Salem|M. Cole||300|Elm Realty|keep to myself\n"
                           "72||Ben||||2026-07-04T10:00:00||0|0|0||||||0||\n"
                           "1000|12 Elm Street||" +
                           same +
                           "2026-05-31T14:05:00|House|0|0|0|2026-015||"
                           "Salem|M. Cole||300|Elm Realty|\n"
                           "1001|12 Elm Street|Eve \xE2\x82\xAC|" +
                           same +
                           "2028-02-29T00:00:00|House|0|0|0|"
                           "' OR '1'='1||Salem|M. Cole||300|Elm Realty|");
  EXPECT_TRUE(m_Report.IsWhole());
  EXPECT_THAT(ToUtf8(Described(m_Report)),
              StartsWith("3 inspections were received: 2 new, 1 already on this device.\n"
                         "2 inspections were sent.\nInspection 2026-015: its date 13/1/2026 is none"));
  ASSERT_EQ(m_Prompts.ProgressWindows().size(), 1u);
  const ScriptedPrompts::Progress& progress = *m_Prompts.ProgressWindows().front();
  EXPECT_EQ(
      progress.Told(),
      u"Connection to Server|Logging in...|Receiving Inspections...|Receiving Inspections...|"
      u"Receiving Inspections...|Sending Inspections...|Sending Inspections...|Logging Out...|0|100|100");
  EXPECT_EQ(Joined(progress.details), u"|1 of 3|2 of 3|3 of 3|1 of 2|2 of 2|");
}

TEST_F(SyncSessionTest, GoesNoFurtherThanTheServerLets) {
  struct Case {
    std::vector<std::string> replies;
    std::string heard;  // after the user's name
    std::string told;
    std::optional<Period> receive = Period::Today;
    std::vector<std::int32_t> send = {71};
  };
  const std::string pass =
                        "PASS \xE9"
                        "clair\\r\n",
                    today = "RECV today\\r\n", quit = "QUIT\\r\n";
  const std::string unknown = "does not know this user name and password";
  const std::string send =
      "SEND 1\\r\n2026-014.\n3 Oak Lane.\nAna Ruiz.\n.\nSalem, OR.\nClear..\nHouse.\n"
      "Salem.\nM. Cole.\nL. Ito.\nElm Realty.\nDONE.\n";
  const Case cases[] = {
      {{"CNFM"}, quit, unknown},
      {{"cnfm\r"}, quit, unknown},
      {{kYes, "NO\r"}, pass + quit, unknown},
      {{kYes, kYes, "CONT abc\r", "NO\r"},
       pass + today + "SEND 1\\r\n" + quit,
       "does not take inspections now"},
      {{kYes, kYes, "NONE\r", "NO\r"}, pass + today + "SEND 1\\r\n" + quit, "did not say which inspections"},
      {{kYes, kYes, "CONT 0\r"},
       pass + "RECV all\\r\n" + quit,
       "no inspections for this period",
       Period::All,
       {}},
      {{kYes, kYes}, pass + quit, "Nothing was to be received or sent.", std::nullopt, {}},
      {Together({{kYes, kYes, kYes}, std::vector<std::string>(12, "?")}),
       pass + send + quit,
       "1 inspection was sent of 2 chosen.\nThe inspection with the key 99 was left out: it is not on this "
       "device.",
       std::nullopt,
       {99, 71}},
  };
  const std::string before = AllRows();
  for (const Case& each : cases) {
    ScriptedServer server(each.replies);
    EXPECT_TRUE(Run(server, each.receive, each.send)) << each.told;
    EXPECT_EQ(server.Heard(), "USER ana\\r\n" + each.heard) << each.told;
    EXPECT_THAT(ToUtf8(Described(m_Report)), HasSubstr(each.told));
  }
  EXPECT_EQ(AllRows(), before);
}

TEST_F(SyncSessionTest, BreaksOffAtAnyMessageWithoutHalfARow) {
  const std::vector<std::string> replies = Together({{kYes, kYes, "CONT 2\r"},
                                                     Offer("2026-014", "Ana and Leo", "8/1/2026"),
                                                     Offer("2026-015", "Cy", "8/2/2026"),
                                                     {kYes},
                                                     std::vector<std::string>(12, kYes)});
  const std::string before = AllRows();
  const std::string first = "71|12 Elm Street|Ana and Leo";
  for (std::size_t count = 0; count < replies.size(); ++count) {
    RunInVisits(
        "DELETE FROM Inspection WHERE InspectionID > 72; UPDATE Inspection SET ClientName = 'Ana Ruiz', "
        "DwellingAddress = '3 Oak Lane' WHERE InspectionID = 71");
    ScriptedServer server({replies.begin(), replies.begin() + static_cast<std::ptrdiff_t>(count)},
                          ScriptedServer::End::Close);
    EXPECT_TRUE(Run(server, Period::All, {72}));
    EXPECT_EQ(m_Report.end, End::Broken) << count;
    const int received = count < 16 ? 0 : count < 29 ? 1 : 2;
    EXPECT_EQ(m_Report.Received(), received) << count;
    EXPECT_EQ(m_Report.sent, 0) << count;
    EXPECT_EQ(Ask("SELECT count(*) FROM Inspection"), received == 2 ? "3" : "2") << count;
    EXPECT_EQ(AllRows().starts_with(first), received > 0) << count;
    EXPECT_THAT(ToUtf8(Described(m_Report)), HasSubstr("broke off"));
  }
  // The four bytes of the type may come one by one, and must all come.
  std::vector<std::string> cut(replies.begin(), replies.begin() + 14);
  cut.back() = std::string("\1\0\0", 3);
  ScriptedServer server(cut, ScriptedServer::End::Close);
  EXPECT_TRUE(Run(server, Period::All));
  EXPECT_EQ(m_Report.Received(), 0);
}

TEST_F(SyncSessionTest, TakesWhatIsUnusualWithARemark) {
  std::vector<std::string> known = Offer("2026-014", "Ana and Leo", "13/1/2026");
  known[10] = kEmpty;  // no type
  std::vector<std::string> unknown = Offer("O'Neil", "Cy", "8/2/2026");
  unknown[10] = kEmpty;
  std::vector<std::string> four = Offer("2026-015", "Di", "8/3/2026");
  four[10] = std::string("\4\0\0\0", 4);
  ScriptedServer server(Together({{kYes, kYes, "CONT 3\r"}, known, unknown, four}));
  EXPECT_TRUE(Run(server, Period::All));
  EXPECT_EQ(
      Ask("SELECT InspectionNum, InspectionTypeID, InspectionDate FROM Inspection WHERE InspectionID <> 72"),
      "2026-014|1|2026-07-03T09:05:59\nO'Neil|-1|2026-08-02T00:00:00\n2026-015|4|2026-08-03T00:00:00");
  EXPECT_EQ(
      ToUtf8(Described(m_Report)),
      "3 inspections were received: 2 new, 1 already on this device.\n"
      "Inspection 2026-014: its date 13/1/2026 is none and was passed over.\n"
      "Inspection O'Neil: it is added in every session, because a number with ' in it is not found again. "
      "The office should give it another one.");
}

// What a person reads who asked for inspections, by how far the session came.
TEST(SyncReportTest, SaysWhatCameAndWhatDidNot) {
  SyncReport report;
  report.hasAsked = true;
  report.end = End::Cancelled;
  const std::string stopped =
      "Stopped before the end. What is counted here is done; synchronise again for the rest.\n";
  EXPECT_EQ(ToUtf8(Described(report)), stopped + "No inspections were received.");
  report.isAnswered = true;
  report.offered = 3;
  EXPECT_EQ(ToUtf8(Described(report)), stopped + "No inspections were received. The server has 3.");
  report.added = 1;
  EXPECT_EQ(ToUtf8(Described(report)),
            stopped + "1 inspection was received: 1 new, 0 already on this device. The server has 3.");
  report.end = End::Complete;
  report.added = 0;
  report.notStored = 3;
  EXPECT_EQ(ToUtf8(Described(report)), "3 inspections came but could not be stored.");
  EXPECT_FALSE(report.IsWhole());
  report.notStored = 0;
  report.added = 1;
  report.updated = 2;
  report.notes.assign(22, u"-");
  EXPECT_TRUE(report.IsWhole());
  EXPECT_THAT(ToUtf8(Described(report)),
              StartsWith("3 inspections were received: 1 new, 2 already on this device.\n-\n"));
  EXPECT_THAT(ToUtf8(Described(report)), EndsWith("\n-\nThere are 2 more remarks like these."));
}

TEST_F(SyncSessionTest, SendsOnlyWhatArrivesWhole) {
  RunInVisits(
      "UPDATE Inspection SET GeneralInformation = printf('%.*c', 2048, 'x') WHERE InspectionID = 71;"
      "UPDATE Inspection SET GeneralInformation = printf('%.*c', 2047, 'y'), ClientName = 'Beñ 中' "
      "WHERE InspectionID = 72;"
      "INSERT INTO Inspection SELECT 73, DwellingAddress, 'a' || char(4) || 'b', '', '', '', InspectionDate, "
      "'', "
      "0, 0, 0, '2026-016', '', '', '', '', 0, '', '' FROM Inspection WHERE InspectionID = 72");
  ScriptedServer server(std::vector<std::string>(15, kYes));
  const std::vector<std::int32_t> asTyped = {73, 99, 72, 73, 71, 99};
  const std::vector<std::int32_t> inOrder = InOrderOfList(m_Workspace->GetDatabases(), asTyped);
  EXPECT_THAT(inOrder, ElementsAre(71, 72, 73, 99));
  EXPECT_TRUE(Run(server, std::nullopt, inOrder));
  EXPECT_EQ(server.Heard(), m_LogIn + "SEND 1\\r\n.\n.\nBe\xF1 ?.\n.\n.\n" + std::string(2047, 'y') +
                                ".\n.\n.\n.\n.\n.\nDONE.\nQUIT\\r\n");
  EXPECT_FALSE(m_Report.IsWhole());
  const std::string told = ToUtf8(Described(m_Report));
  EXPECT_THAT(told, HasSubstr("1 inspection was sent of 4 chosen."));
  EXPECT_THAT(told,
              HasSubstr("Inspection 2026-014 (Ana Ruiz) was left out: its \"General Information\" has 2048"));
  EXPECT_THAT(told, HasSubstr("Inspection 2026-016"));
  EXPECT_THAT(told, HasSubstr("gets a ?"));
}

TEST_F(SyncSessionTest, StopsBetweenTwoInspections) {
  ScriptedServer server(Together({{kYes, kYes, "CONT 2\r"}, Offer("2026-015", "Cy", "8/2/2026")}));
  m_Prompts.CancelAtStep(2);  // the window is told that the first one comes
  EXPECT_TRUE(Run(server, Period::All, {71}));
  EXPECT_EQ(server.Heard(), m_LogIn + "RECV all\\r\nINSP\\r\n" + Times(12, "FELD\\r\n") + "QUIT\\r\n");
  EXPECT_EQ(m_Report.end, End::Cancelled);
  EXPECT_EQ(Ask("SELECT InspectionNum FROM Inspection WHERE InspectionID > 72"), "2026-015");
}

TEST_F(SyncSessionTest, StopsWaitingForAServerThatIsSilent) {
  ScriptedServer server({});
  m_Prompts.CancelAtStep(1);
  EXPECT_TRUE(Run(server, Period::All));
  EXPECT_EQ(server.Heard(), "USER ana\\r\nQUIT\\r\n");
  EXPECT_EQ(m_Report.end, End::Cancelled);
}

TEST_F(SyncSessionTest, TellsWhatItCannotReachOrStore) {
  int closed = 0;
  { closed = ScriptedServer({}).Port(); }
  EXPECT_TRUE(Run(closed, u"127.0.0.1", Period::All));
  EXPECT_EQ(m_Prompts.Last(), "Alert: ERROR:\r\rConnection timed out.");
  EXPECT_THAT(ToUtf8(Described(m_Report)), HasSubstr("could not be reached (Connection refused)"));
  EXPECT_TRUE(m_Prompts.ProgressWindows().empty());
  m_Prompts.Forget();

  EXPECT_FALSE(Run(4850, u"no.such.host.invalid", Period::All));
  EXPECT_TRUE(m_Prompts.Messages().empty());
  EXPECT_THAT(ToUtf8(Described(m_Report)), HasSubstr("no.such.host.invalid:4850 was not found"));

  RunInVisits("CREATE TRIGGER Full BEFORE UPDATE ON Inspection BEGIN SELECT RAISE(FAIL, 'no room'); END");
  ScriptedServer server(Together({{kYes, kYes, "CONT 2\r"},
                                  Offer("2026-014", "Ana and Leo", "8/1/2026"),
                                  Offer("2026-015", "Cy", "8/2/2026")}));
  EXPECT_TRUE(Run(server, Period::All));
  EXPECT_THAT(m_Prompts.Last(), HasSubstr("no room"));
  EXPECT_EQ(ToUtf8(Described(m_Report)),
            "1 inspection was received: 1 new, 0 already on this device. "
            "1 more came but could not be stored.");
}

TEST_F(SyncSessionTest, KeepsTheSettingsOfTheServer) {
  EXPECT_FALSE(SyncSession::HasServer(m_Workspace->Options()));
  ExpectEach<ServerSettings, Text>(
      {{{u"", u"9", u"", u""}, u"The port is a number from 10 to 10000."},
       {{u"a", u"10", u"a\rb", u""},
        u"The user name has a character that the connection to the server has no room for. Ask the office "
        u"for "
        u"another one."},
       {{u"a", u"10", u"a", u"\u4E2D"},
        u"The password has a character that the connection to the server has no room for. Ask the office for "
        u"another one."},
       {{u"", u"10001", u"", u""}, u"The port is a number from 10 to 10000."},
       {{u"", u"10a", u"", u""}, u"The port is a number from 10 to 10000."},
       {{Text(81, u'a'), u"10", u"", u""}, u"The address of the server takes at most 80 characters."},
       {{u"a", u"10", u"", Text(17, u'p')}, u"The password takes at most 16 characters."},
       {{Text(80, u'a'), u"10000", u"ana", Text(16, u'p')}, u""}},
      [](const ServerSettings& settings) { return WhyNot(settings); });
  EXPECT_TRUE(WriteServerSettings(*m_Workspace, {u"office.example", u"4850", u"ana", u"secret"}));
  Start();
  EXPECT_TRUE(SyncSession::HasServer(m_Workspace->Options()));
  const ServerSettings read = ReadServerSettings(*m_Workspace);
  EXPECT_EQ(Joined({read.address, read.port, read.userName, read.password}),
            u"office.example|4850|ana|secret");
  RunInLibrary("CREATE TRIGGER Full BEFORE UPDATE ON Options BEGIN SELECT RAISE(FAIL, 'no room'); END");
  EXPECT_FALSE(WriteServerSettings(*m_Workspace, {u"elsewhere", u"10", u"", u""}));
  EXPECT_EQ(ReadServerSettings(*m_Workspace).address, u"office.example");
}

}  // namespace
}  // namespace inspector::exchange
