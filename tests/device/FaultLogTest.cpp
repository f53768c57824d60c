#include "device/FaultLog.h"

#include <array>
#include <thread>

#include "support/TestSupport.h"

namespace inspector::device {
namespace {

class FaultLogTest : public testing::Test {
protected:
  tests::TemporaryFolder m_Folder;
  tests::ScriptedPrompts m_Prompts;
  tests::FixedClock m_Clock;
};

TEST_F(FaultLogTest, EachFaultIsLoggedEachTimeAndShownOnce) {
  FaultLog log(m_Prompts, m_Clock, m_Folder / "logs/faults.log");
  EXPECT_FALSE(std::filesystem::exists(m_Folder / "logs"));
  log.Report(u"The picture \u00E9.jpg\r\ncannot be read.");
  m_Clock.Set(MakeCalendarTime(2026, 6, 1));
  log.Report(u"The picture \u00E9.jpg\r\ncannot be read.");
  log.Report(u"The disk is full.");
  EXPECT_EQ(m_Prompts.Transcript(), (std::vector<Text>{u"Error: The picture \u00E9.jpg\r\ncannot be read.",
                                                       u"Error: The disk is full."}));
  EXPECT_EQ(log.Count(), 3);

  // A later run goes on in the same file.
  FaultLog(m_Prompts, m_Clock, m_Folder / "logs/faults.log").Report(u"Again.");
  EXPECT_EQ(tests::ContentOf(m_Folder / "logs/faults.log"),
            "2026-05-31T14:05:00 The picture \xC3\xA9.jpg  cannot be read.\n"
            "2026-06-01T00:00:00 The picture \xC3\xA9.jpg  cannot be read.\n"
            "2026-06-01T00:00:00 The disk is full.\n"
            "2026-06-01T00:00:00 Again.\n");
}

TEST_F(FaultLogTest, WhatFailsAgainIsShownForEachActionAndNeverWhileNobodyAttends) {
  FaultLog log(m_Prompts, m_Clock, m_Folder / "faults.log");
  {
    const FaultLog::Unattended typing(log);
    log.Report(u"Locked.");
    const FaultLog::Silence transaction(log);  // shows what waits, when it ends
    log.Report(u"Locked.");
  }
  EXPECT_TRUE(m_Prompts.Messages().empty());
  EXPECT_TRUE(NotStored(log).ends_with(u"Locked."));
  log.Report(u"Locked.");
  log.Report(u"Locked.");
  EXPECT_EQ(m_Prompts.Messages().size(), 1u);
  log.BeginAction();
  log.Report(u"Locked.");
  EXPECT_EQ(m_Prompts.Messages().size(), 2u);
  EXPECT_EQ(log.Count(), 5);
}

TEST_F(FaultLogTest, AWorkersFaultsWaitForThePromptsThread) {
  FaultLog log(m_Prompts, m_Clock, m_Folder / "faults.log");
  std::array<std::thread, 4> workers;
  for (std::thread& worker : workers) {
    worker = std::thread([&log] {
      for (int i = 0; i < 50; ++i) log.Report(u"Query " + Decimal(i % 5) + u" failed.");
    });
  }
  for (std::thread& worker : workers) worker.join();
  EXPECT_TRUE(m_Prompts.Messages().empty());
  EXPECT_EQ(log.Count(), 200);
  log.ShowPending();
  EXPECT_EQ(m_Prompts.Messages().size(), 5u);
  log.ShowPending();
  EXPECT_EQ(m_Prompts.Messages().size(), 5u);
}

// A box that stays up while the work behind it goes on, and fails.
class BusyPrompts : public tests::ScriptedPrompts {
public:
  FaultLog* m_Log = nullptr;

  Answer Show(const Message& message) override {
    if (message.text == u"First.") m_Log->Report(u"Second.");
    return ScriptedPrompts::Show(message);
  }
};

TEST_F(FaultLogTest, AFaultWhileABoxIsUpIsShownAsWell) {
  BusyPrompts prompts;
  FaultLog log(prompts, m_Clock, m_Folder / "faults.log");
  prompts.m_Log = &log;
  log.Report(u"First.");
  EXPECT_EQ(prompts.Messages().size(), 2u);
  EXPECT_EQ(log.Count(), 2);
}

TEST_F(FaultLogTest, ALogThatCannotBeWrittenDoesNotHideTheFault) {
  FaultLog log(m_Prompts, m_Clock, m_Folder.Put("file") / "faults.log");
  log.Report(u"The disk is full.");
  EXPECT_EQ(m_Prompts.Messages().size(), 1u);
  EXPECT_EQ(log.Count(), 1);
}

}  // namespace
}  // namespace inspector::device
