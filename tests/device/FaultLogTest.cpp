#include "device/FaultLog.h"

#include <array>
#include <thread>

#include "support/TestSupport.h"

namespace inspector::device {
namespace {

class FaultLogTest : public testing::Test, protected ScriptedMachine {
protected:
  std::size_t Shown() const { return m_Prompts.Messages().size(); }

  FaultLog m_Log{m_Prompts, m_Clock, m_Folder / "logs/faults.log"};
};

TEST_F(FaultLogTest, EachFaultIsLoggedEachTimeAndShownOnce) {
  EXPECT_FALSE(std::filesystem::exists(m_Folder / "logs"));
  m_Log.Report(u"The picture \u00E9.jpg\r\ncannot be read.");
  m_Clock.Set(MakeCalendarTime(2026, 6, 1));
  m_Log.Report(u"The picture \u00E9.jpg\r\ncannot be read.");
  m_Log.Report(u"The disk is full.");
  EXPECT_THAT(m_Prompts.Transcript(),
              ElementsAre(u"Error: The picture \u00E9.jpg\r\ncannot be read.", u"Error: The disk is full."));
  EXPECT_EQ(m_Log.Count(), 3);

  // A later run goes on in the same file.
  FaultLog(m_Prompts, m_Clock, m_Folder / "logs/faults.log").Report(u"Again.");
  EXPECT_EQ(ContentOf(m_Folder / "logs/faults.log"),
            "2026-05-31T14:05:00 The picture \xC3\xA9.jpg  cannot be read.\n"
            "2026-06-01T00:00:00 The picture \xC3\xA9.jpg  cannot be read.\n"
            "2026-06-01T00:00:00 The disk is full.\n"
            "2026-06-01T00:00:00 Again.\n");
}

TEST_F(FaultLogTest, WhatFailsAgainIsShownForEachActionAndNeverWhileNobodyAttends) {
  {
    const FaultLog::Unattended typing(m_Log);
    m_Log.Report(u"Locked.");
    const FaultLog::Silence transaction(m_Log);  // shows what waits, when it ends
    m_Log.Report(u"Locked.");
  }
  EXPECT_EQ(Shown(), 0u);
  EXPECT_TRUE(NotStored(m_Log).ends_with(u"Locked."));
  for (int n = 0; n < 2; ++n) m_Log.Report(u"Locked.");
  EXPECT_EQ(Shown(), 1u);
  m_Log.BeginAction();
  m_Log.Report(u"Locked.");
  EXPECT_EQ(Shown(), 2u);
  EXPECT_EQ(m_Log.Count(), 5);
}

TEST_F(FaultLogTest, AWorkersFaultsWaitForThePromptsThread) {
  std::array<std::thread, 4> workers;
  for (std::thread& worker : workers)
    worker = std::thread([this] {
      for (int i = 0; i < 50; ++i) m_Log.Report(u"Query " + Decimal(i % 5) + u" failed.");
    });
  for (std::thread& worker : workers) worker.join();
  EXPECT_EQ(Shown(), 0u);
  EXPECT_EQ(m_Log.Count(), 200);
  for (int n = 0; n < 2; ++n) m_Log.ShowPending();
  EXPECT_EQ(Shown(), 5u);
}

// A box that stays up while the work behind it goes on, and fails.
struct BusyPrompts : ScriptedPrompts {
  Answer Show(const Message& message) override {
    if (message.text == u"First.") m_Log->Report(u"Second.");
    return ScriptedPrompts::Show(message);
  }
  FaultLog* m_Log = nullptr;
};

TEST_F(FaultLogTest, AFaultWhileABoxIsUpIsShownAsWell) {
  BusyPrompts prompts;
  FaultLog log(prompts, m_Clock, m_Folder.Put("file") / "a log that cannot be written.log");
  prompts.m_Log = &log;
  log.Report(u"First.");
  EXPECT_EQ(prompts.Messages().size(), 2u);
  EXPECT_EQ(log.Count(), 2);
}

}  // namespace
}  // namespace inspector::device
