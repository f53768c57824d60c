#include "Office.h"

namespace inspector::tests {
namespace {

using device::MakeCalendarTime;

TEST_F(ServerTest, PeriodsAreDaysOfTheServersCalendar) {
  // Sunday 2026-05-31 ends the week that began on Monday the 25th.
  const std::pair<const char16_t*, device::CalendarTime> visits[] = {
      {u"last week", MakeCalendarTime(2026, 5, 24)}, {u"monday", MakeCalendarTime(2026, 5, 25)},
      {u"saturday", MakeCalendarTime(2026, 5, 30)},  {u"sunday 2", MakeCalendarTime(2026, 5, 31)},
      {u"sunday 1", MakeCalendarTime(2026, 5, 31)},  {u"next week", MakeCalendarTime(2026, 6, 1)},
      {u"last year", MakeCalendarTime(2025, 5, 31)}};
  for (const auto& [number, day] : visits) Add("north", number, day);
  Add("south", u"not ana's", MakeCalendarTime(2026, 5, 31));
  Start();
  auto ana = LogIn();
  EXPECT_THAT(ana->ReceiveNumbers("today"), ElementsAre("sunday 1", "sunday 2"));
  EXPECT_THAT(ana->ReceiveNumbers("week"), ElementsAre("monday", "saturday", "sunday 1", "sunday 2"));
  EXPECT_THAT(ana->ReceiveNumbers("all"), ElementsAre("last year", "last week", "monday", "saturday",
                                                      "sunday 1", "sunday 2", "next week"));
  EXPECT_THAT(LogIn("ben")->ReceiveNumbers("all"), ElementsAre("not ana's"));
  Stop();
  m_Clock.Set(MakeCalendarTime(2026, 6, 1, 0, 0, 1));
  Start();
  ana = LogIn();
  EXPECT_THAT(ana->ReceiveNumbers("today"), ElementsAre("next week"));
  EXPECT_THAT(ana->ReceiveNumbers("week"), ElementsAre("next week"));
}

TEST_F(ServerTest, MoreThanIsReadAheadArrivesInOrder) {
  std::vector<Change> changes;
  std::vector<std::string> numbers;
  for (int i = 1000; i < 1100; ++i) {
    numbers.push_back(std::to_string(i));
    Change& change = changes.emplace_back();
    change.number = Decimal(i);
    change.texts[5] = Text(i % 10 == 0 ? protocol::kMaxValueBytes : 300, u'g');
  }
  Applied applied;
  ASSERT_EQ(m_Storage->Apply("north", changes, ChangeKind::Imported, {}, applied), "");
  Start();
  auto ana = LogIn();
  EXPECT_EQ(ana->ReceiveNumbers("all"), numbers);
  // What is changed or removed meanwhile does not stop a session.
  EXPECT_EQ(ana->Say("RECV all\r"), "CONT 100\r");
  ASSERT_EQ(m_Storage->Remove("north", u"1099", {}), "");
  for (const std::string& number : numbers) {
    ASSERT_EQ(ana->Say("INSP\r"), number);
    for (int i = 0; i < 12; ++i) ana->Say("FELD\r");
  }
  EXPECT_EQ(ana->Say("RECV all\r"), "CONT 99\r");
}

TEST_F(ServerTest, APushChangesWhatTravelsAndNothingElse) {
  Change known;
  known.number = u"7";
  known.day = MakeCalendarTime(2026, 4, 1);
  known.type = 3;
  known.texts[2] = u"before";
  Applied applied;
  ASSERT_EQ(m_Storage->Apply("north", std::span(&known, 1), ChangeKind::Added,
                             {"root", "command line", m_Clock.Now()}, applied),
            "");
  Start();
  auto ana = LogIn();
  EXPECT_EQ(ana->Say("SEND 4\r"), "CNFM\r");
  for (const char* number : {"7", "8'", "", "7"}) EXPECT_EQ(ana->SendInspection(number), "CNFM\r");
  EXPECT_EQ(ana->Say("SEND 1\r"), "CNFM\r");
  EXPECT_EQ(ana->SendInspection(""), "CNFM\r");
  EXPECT_THAT(ana->ReceiveAll("all"),
              ElementsAre(AsReceived("7", "x", "4/1/2026", 3), AsReceived("8'", "x", "5/31/2026")));
  EXPECT_THAT(LogIn("ben")->ReceiveAll("all"), IsEmpty());

  const std::vector<Version> versions = History(u"7");
  ASSERT_THAT(versions, SizeIs(2)) << "the same one twice is one";
  EXPECT_EQ(versions[0].inspection.texts[2], u"before");
  EXPECT_EQ(versions[1].inspection.texts[2], u"x");
  EXPECT_EQ(versions[1].kind, ChangeKind::Pushed);
  EXPECT_EQ(versions[1].origin.who + "/" + versions[1].origin.where, "ana/127.0.0.1");
  EXPECT_THAT(History(u""), SizeIs(1)) << "without a number: kept, once, and never offered";
}

TEST_F(ServerTest, HostileSessionsHarmNoOther) {
  Add("north", u"1", MakeCalendarTime(2026, 5, 31), u"Ana");
  m_Settings.maxSessions = 8;
  Start();
  auto ana = LogIn();
  const std::string random = [] {
    std::string bytes;
    for (unsigned i = 0, x = 12345; i < 4000; ++i, x = x * 1664525 + 1013904223)
      bytes += static_cast<char>(x >> 24);
    return bytes;
  }();
  int closed = 0;
  for (const std::string& hostile :
       {random, "GET / HTTP/1.1\r\n\r\n"s, std::string(100'000, 'A'), "USER a\nb\rPASS x\rFELD\r"s,
        "USER ana\rPASS secret\rSEND 1\r" + std::string(5000, 'x')}) {
    auto device = Connect();
    device->Send(hostile);
    std::string last = device->Receive();
    while (!last.empty() && last != "(silence)") last = device->Receive();
    EXPECT_EQ(last, "") << hostile.substr(0, 20);
    EXPECT_TRUE(AwaitLog("reason=", ++closed));
  }
  EXPECT_TRUE(AwaitLog("more bytes than a message can have"));
  EXPECT_TRUE(AwaitLog(R"(wrong name or password user="a\nb" address=)")) << "one line";
  EXPECT_THAT(ana->ReceiveNumbers("all"), ElementsAre("1"));
  EXPECT_THAT(Numbers(), ElementsAre(u"1"));
}

TEST_F(ServerTest, SessionsAreLimited) {
  m_Settings.maxSessions = 3;
  Start();
  std::vector<std::unique_ptr<Device>> devices;
  for (int i = 0; i < 3; ++i) devices.push_back(LogIn());
  EXPECT_TRUE(Connect()->HasEnded());
  EXPECT_TRUE(AwaitLog("connections refused"));
  devices.pop_back();
  EXPECT_TRUE(AwaitLog("session ended"));
  LogIn();
  Stop();
  devices.clear();
  m_Settings.maxPerAddress = 1;
  m_Settings.idle = std::chrono::seconds(1);
  Start();
  auto only = LogIn();
  EXPECT_TRUE(Connect()->HasEnded());
  EXPECT_TRUE(only->HasEnded()) << "silent for too long";
  EXPECT_TRUE(AwaitLog("silent for too long"));
  Stop();
  m_Settings.idle = std::chrono::seconds(60);
  m_Settings.session = std::chrono::seconds(1);
  Start();
  EXPECT_TRUE(LogIn()->HasEnded());
  EXPECT_TRUE(AwaitLog("lasted too long"));
}

TEST_F(ServerTest, WrongPasswordsAreSlowedAndCounted) {
  m_Settings.loginDelay = std::chrono::milliseconds(200);
  Start();
  const auto now = std::chrono::steady_clock::now;
  for (const char* name : {"ana", "nobody"}) {
    const auto begin = now();
    for (int i = 0; i < 3; ++i) EXPECT_EQ(Connect()->LogIn(name, "guess"), "DENY\r");
    EXPECT_GE(now() - begin, std::chrono::milliseconds(600)) << "200 and 400 in between: " << name;
  }
  EXPECT_TRUE(AwaitLog("wrong name or password user=\"nobody\"", 3));
  std::optional<User> ana;
  const auto failures = [&] {
    EXPECT_EQ(m_Storage->FindUser("ana", ana), "");
    return ana->failedLogins;
  };
  EXPECT_EQ(failures(), 3);
  LogIn("ana");
  Stop();
  EXPECT_EQ(failures(), 0);
  EXPECT_EQ(ana->lastLogin, m_Clock.Now());
}

TEST(ServerLogTest, WritesALineForEachEventAndQuotesWhatIsStrange) {
  FixedClock clock;
  std::string lines;
  const auto sink = [&lines](std::string_view line) { lines += line; };
  ServerLog(clock, ServerLog::Form::Words, sink)
      .Warning("odd", {{"user", "Zo\u00EB \"x\"\n\x1B[2J\x7F\u009D"}, {"count", 3}});
  ServerLog(clock, ServerLog::Form::Json, sink).Error("odd", {{"user", "\xFF\n"}, {"count", 3}});
  EXPECT_EQ(
      lines,
      "2026-05-31T14:05:00 warning: odd user=\"Zo\u00EB \\\"x\\\"\\n\\u001b[2J\\u007f\\u009d\" count=3\n"
      "{\"time\":\"2026-05-31T14:05:00\",\"level\":\"error\",\"event\":\"odd\",\"user\":\"\uFFFD\\n\","
      "\"count\":3}\n");
}

TEST(LoginGuardTest, AttemptsAtOnceQueueUpAndAreRefusedInTheEnd) {
  using std::chrono::seconds;
  LoginGuard guard(seconds(1));
  const LoginGuard::Clock::time_point now{std::chrono::hours(1)};
  EXPECT_EQ(guard.Admit("ana", "a", now), now);
  guard.Failed("ana", "a", now);
  guard.Failed("ana", "a", now);
  EXPECT_EQ(guard.Admit("ana", "a", now), now + seconds(2));
  EXPECT_EQ(guard.Admit("ana", "a", now), now + seconds(6));
  int waiting = 0;
  while (guard.Admit("ana", "a", now)) ASSERT_LT(++waiting, 100);
  EXPECT_EQ(guard.Admit("ana", "b", now), now);
  EXPECT_EQ(guard.Admit("ben", "a", now), now);
  for (int i = 0; i < 30; ++i) guard.Failed(std::to_string(i), "a", now);
  EXPECT_EQ(guard.Admit("ben", "a", now), now);
  EXPECT_EQ(guard.Admit("eve", "a", now), now + seconds(1)) << "whatever the name";
  guard.Succeeded("ana", "a");
  EXPECT_EQ(guard.Admit("ana", "a", now + seconds(20)), now + seconds(20));
  guard.Failed("late", "c", now);
  guard.Failed("late", "c", now + std::chrono::minutes(20));
  EXPECT_EQ(guard.Admit("late", "c", now + std::chrono::minutes(20)),
            now + std::chrono::minutes(20) + seconds(1));
}

// Two sessions as they were recorded, broken off after every byte of theirs.
TEST_F(ServerTest, WhereverASessionIsCutNothingIsHalfStoredAndNothingConfirmedIsLost) {
  Add("south", u"1", MakeCalendarTime(2026, 5, 31), u"Ben");
  m_Settings.maxSessions = 100'000;
  m_Settings.maxPerAddress = 100'000;
  Start();
  const std::string content = "12 Elm";
  const auto recording = [&](const std::string& number) {
    std::vector<std::string> messages = {"USER ana\r", "PASS secret\r", "SEND 2\r"};
    for (const char* which : {"a", "b"}) {
      messages.push_back(protocol::Terminated(number + which));
      for (std::size_t i = 1; i < kTexts; ++i) messages.push_back(protocol::Terminated(content));
      messages.push_back(protocol::Terminated(protocol::kDone));
    }
    messages.emplace_back("QUIT\r");
    return messages;
  };
  const auto size = [](const std::vector<std::string>& messages) {
    std::size_t bytes = 0;
    for (const std::string& message : messages) bytes += message.size();
    return bytes;
  };

  std::set<Text> confirmed;
  std::set<Text> unsent;
  const std::size_t length = size(recording("1000"));
  for (std::size_t cut = 0; cut < length; ++cut) {
    const std::string number = std::to_string(1000 + cut);
    std::size_t left = cut;
    int done = 0;
    Device device(Port());
    for (const std::string& message : recording(number)) {
      const bool isWhole = left >= message.size();
      device.Send(message.substr(0, left));
      left -= std::min(left, message.size());
      if (!isWhole || left == 0) {
        // The last one may have been stored, without anybody having been told.
        if (isWhole && message == protocol::Terminated(protocol::kDone)) ++done;
        break;
      }
      if (message == "QUIT\r") break;
      ASSERT_EQ(device.Receive(), "CNFM\r") << cut << message;
      if (message == protocol::Terminated(protocol::kDone)) confirmed.insert(FromUtf8(number + "ab"[done++]));
    }
    for (int i = done; i < 2; ++i) unsent.insert(FromUtf8(number + "ab"[i]));
    if (cut % 2 == 1) device.Reset();
  }
  EXPECT_GT(confirmed.size(), 80u);

  const std::string receiving =
      "USER ben\rPASS secret\rRECV all\rINSP\rFELD\rFELD\rFELD\rFELD\rFELD\rFELD\rFELD\rFELD\rFELD\rFELD\r";
  for (std::size_t cut = 0; cut <= receiving.size(); ++cut) {
    Device device(Port());
    device.Send(receiving.substr(0, cut));
    if (cut % 2 == 1) device.Reset();
  }
  EXPECT_THAT(LogIn("ben")->ReceiveAll("all"), ElementsAre("1||Ben||||||||-1||5/31/2026"));
  Stop();

  std::vector<OfficeInspection> stored;
  ASSERT_EQ(m_Storage->List("north", std::nullopt, stored), "");
  for (const OfficeInspection& inspection : stored) {
    EXPECT_EQ(unsent.count(inspection.Number()), 0u) << ToUtf8(inspection.Number());
    confirmed.erase(inspection.Number());
    for (std::size_t i = 1; i < kTexts; ++i) ASSERT_EQ(inspection.texts[i], FromUtf8(content));
  }
  EXPECT_THAT(confirmed, IsEmpty()) << "confirmed and not stored";
}

TEST_F(ServerTest, StopWaitsForInspectionsUnderWay) {
  Add("north", u"1", MakeCalendarTime(2026, 5, 31));
  m_Settings.stop = std::chrono::seconds(20);
  Start();
  auto idle = LogIn();
  auto sender = LogIn();
  auto receiver = LogIn();
  sender->Say("SEND 2\r");
  sender->Say("7\x04");
  receiver->Say("RECV all\r");
  receiver->Say("INSP\r");
  m_Server->Stop();
  EXPECT_TRUE(idle->HasEnded());
  for (int i = 1; i < 11; ++i) EXPECT_EQ(sender->Say("x\x04"), "CNFM\r");
  EXPECT_EQ(sender->Say("DONE\x04"), "CNFM\r");
  EXPECT_TRUE(sender->HasEnded()) << "at the border";
  for (int i = 0; i < 12; ++i) EXPECT_NE(receiver->Say("FELD\r"), "");
  EXPECT_TRUE(receiver->HasEnded());
  Stop();
  EXPECT_THAT(Numbers(), ElementsAre(u"1", u"7"));

  m_Settings.stop = std::chrono::seconds(1);
  Start();
  auto stuck = LogIn();
  stuck->Say("SEND 1\r");
  stuck->Say("8\x04");
  Stop();
  EXPECT_TRUE(stuck->HasEnded());
  EXPECT_THAT(Numbers(), ElementsAre(u"1", u"7"));
}

TEST_F(ServerTest, AStorageThatFailsConfirmsNothing) {
  Start();
  auto ana = LogIn();
  {
    SqliteFile other(SqliteStorage::FileIn(m_Settings.data), std::chrono::seconds(30));
    ASSERT_TRUE(other.Open(SqliteFile::Mode::Existing));
    ASSERT_TRUE(other.Execute(
        "CREATE TRIGGER Full BEFORE INSERT ON Version BEGIN SELECT RAISE(ABORT, 'disk full'); END"));
  }
  EXPECT_EQ(ana->Say("SEND 1\r"), "CNFM\r");
  EXPECT_EQ(ana->SendInspection("7"), "");
  EXPECT_TRUE(AwaitLog("disk full"));
  EXPECT_THAT(Numbers(), IsEmpty());
}

TEST_F(ServerTest, TheStatusPageTellsFiguresAndNoNames) {
  m_Settings.status = HostAndPort{"127.0.0.1", 0};
  Start();
  auto ana = LogIn();
  const auto get = [this](const std::string& path) {
    Device browser(m_Server->StatusAddress()->port);
    browser.Send("GET " + path + " HTTP/1.1\r\nHost: x\r\n\r\n");
    std::string all;
    for (std::string part = browser.Receive(); !part.empty(); part = browser.Receive()) all += part;
    return all;
  };
  EXPECT_THAT(get("/status.json"), AllOf(StartsWith("HTTP/1.1 200"), HasSubstr("\"open_sessions\": 1"),
                                         HasSubstr("\"logins\": 1")));
  EXPECT_THAT(get("/"), AllOf(StartsWith("HTTP/1.1 200"), HasSubstr("<td>1</td>"), Not(HasSubstr("ana<"))));
  EXPECT_THAT(get("/etc/passwd"), StartsWith("HTTP/1.1 404"));
  Device flood(m_Server->StatusAddress()->port);
  flood.Send(std::string(100'000, 'x'));
  EXPECT_THAT(flood.Receive(), StartsWith("HTTP/1.1 404"));
  m_Settings.status = HostAndPort{"0.0.0.0", 0};
  Server open(m_Settings, *m_Storage, m_Clock, m_Log, kCheap);
  EXPECT_THAT(open.Listen(), HasSubstr("reached from outside"));
}

}  // namespace
}  // namespace inspector::tests
