// A server of two offices on a free port of this machine, and the devices that talk to it.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "DeviceSocket.h"
#include "server/Server.h"
#include "server/SqliteStorage.h"
#include "support/TestSupport.h"

namespace inspector::tests {

using namespace server;
using namespace std::string_literals;

inline constexpr PasswordCost kCheap{1, 8192};

// Ana works for the north, Ben for the south; both have the password "secret". The clock stands at Sunday,
// 2026-05-31.
class ServerTest : public testing::Test {
protected:
  ServerTest() {
    EXPECT_TRUE(PreparePasswords());
    m_Settings.data = m_Folder / "data";
    m_Settings.listen.port = 0;
    m_Settings.loginDelay = std::chrono::milliseconds(50);
    m_Settings.stop = std::chrono::seconds(2);
    EXPECT_EQ(SqliteStorage::Open(m_Settings.data, m_Storage), "");
    const std::string hash = HashPassword("secret", kCheap).value_or("");
    EXPECT_EQ(m_Storage->AddUser({"ana", "north", hash}), "");
    EXPECT_EQ(m_Storage->AddUser({"ben", "south", hash}), "");
  }
  ~ServerTest() override {
    Stop();
    if (HasFailure())
      for (const std::string& line : m_Lines) ADD_FAILURE() << line;
  }

  void Start() {
    m_Server = std::make_unique<Server>(m_Settings, *m_Storage, m_Clock, m_Log, kCheap);
    ASSERT_EQ(m_Server->Listen(), "");
    m_Thread = std::thread([this] { m_Server->Run(); });
  }
  void Stop() {
    if (!m_Server) return;
    m_Server->Stop();
    m_Thread.join();
    m_Server.reset();
  }
  std::uint16_t Port() const { return m_Server->Address().port; }
  std::unique_ptr<Device> Connect() const { return std::make_unique<Device>(Port()); }
  std::unique_ptr<Device> LogIn(const std::string& name = "ana") const {
    auto device = Connect();
    EXPECT_EQ(device->LogIn(name, "secret"), "CNFM\r");
    return device;
  }
  void Add(const std::string& office, const Text& number, const device::CalendarTime& day,
           const Text& client = u"") {
    Change change;
    change.number = number;
    change.day = day;
    change.texts[2] = client;
    Applied applied;
    EXPECT_EQ(m_Storage->Apply(office, std::span(&change, 1), ChangeKind::Added,
                               {"root", "here", m_Clock.Now()}, applied),
              "");
  }
  std::vector<Text> Numbers(const std::string& office = "north") const {
    std::vector<OfficeInspection> inspections;
    EXPECT_EQ(m_Storage->List(office, std::nullopt, inspections), "");
    std::vector<Text> numbers;
    for (const OfficeInspection& inspection : inspections) numbers.push_back(inspection.Number());
    return numbers;
  }
  std::vector<Version> History(const Text& number, const std::string& office = "north") const {
    std::vector<Version> versions;
    EXPECT_EQ(m_Storage->History(office, number, versions), "");
    return versions;
  }
  // Waits until the log has this many lines with `part`.
  bool AwaitLog(const std::string& part, int count = 1) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    std::unique_lock lock(m_LogMutex);
    return m_LogGrew.wait_until(lock, end, [&] {
      return std::count_if(m_Lines.begin(), m_Lines.end(), [&](const std::string& line) {
               return line.find(part) != std::string::npos;
             }) >= count;
    });
  }

  TemporaryFolder m_Folder;
  FixedClock m_Clock;
  Settings m_Settings;
  std::unique_ptr<SqliteStorage> m_Storage;
  std::mutex m_LogMutex;
  std::condition_variable m_LogGrew;
  std::vector<std::string> m_Lines;
  ServerLog m_Log{m_Clock, ServerLog::Form::Words, [this](std::string_view line) {
                    const std::lock_guard lock(m_LogMutex);
                    m_Lines.emplace_back(line);
                    m_LogGrew.notify_all();
                  }};
  std::unique_ptr<Server> m_Server;
  std::thread m_Thread;
};

}  // namespace inspector::tests
