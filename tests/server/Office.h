// A server of two offices on a free port of this machine, and the devices that talk to it.
#pragma once

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "server/Server.h"
#include "server/SqliteStorage.h"
#include "support/TestSupport.h"

namespace inspector::tests {

using namespace server;
using namespace std::string_literals;

inline constexpr PasswordCost kCheap{1, 8192};

// A device that sends what it is told and takes for a reply what one receive returns.
class Device {
public:
  explicit Device(std::uint16_t port) : m_Socket(socket(AF_INET, SOCK_STREAM, 0)) {
    const timeval patience{30, 0};
    setsockopt(m_Socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof(patience));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    m_IsConnected = connect(m_Socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
  }
  ~Device() { close(m_Socket); }
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;

  bool IsConnected() const { return m_IsConnected; }
  bool Send(std::string_view bytes) {
    return send(m_Socket, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
  }
  // Empty at the end of the connection; "(silence)" when nothing comes.
  std::string Receive() {
    std::string bytes(protocol::kBufferBytes, '\0');
    const ssize_t count = recv(m_Socket, bytes.data(), bytes.size(), 0);
    if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return "(silence)";
    bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return bytes;
  }
  std::string Say(std::string_view bytes) { return Send(bytes) ? Receive() : ""; }
  bool HasEnded() { return Receive().empty(); }
  // Ends the connection as a device out of reach does: what waits is dropped.
  void Reset() {
    const linger now{1, 0};
    setsockopt(m_Socket, SOL_SOCKET, SO_LINGER, &now, sizeof(now));
  }
  void HangUp() { shutdown(m_Socket, SHUT_WR); }

  // The reply to the password.
  std::string LogIn(const std::string& name, const std::string& password) {
    EXPECT_EQ(Say("USER " + name + "\r"), "CNFM\r");
    return Say("PASS " + password + "\r");
  }
  // Everything that is offered, each inspection as its number and fields joined with '|', the type in
  // decimal.
  std::vector<std::string> ReceiveAll(const std::string& period) {
    std::vector<std::string> inspections;
    const auto count = protocol::CountOf(Say("RECV " + period + "\r"));
    EXPECT_TRUE(count);
    for (int i = 0; i < count.value_or(0); ++i) {
      std::string& inspection = inspections.emplace_back(Say("INSP\r"));
      for (const int ordinal : protocol::kReceivedOrdinals) {
        const std::string reply = Say("FELD\r");
        inspection += '|';
        if (ordinal != protocol::kTypeOrdinal) {
          inspection += reply == "\x04" ? "" : reply;
        } else if (reply.size() == 4) {
          inspection += std::to_string(protocol::Int32FromWire({reply[0], reply[1], reply[2], reply[3]}));
        }
      }
    }
    return inspections;
  }
  std::vector<std::string> ReceiveNumbers(const std::string& period) {
    std::vector<std::string> numbers = ReceiveAll(period);
    for (std::string& number : numbers) number.resize(number.find('|'));
    return numbers;
  }
  // The reply to "DONE".
  std::string SendInspection(const std::string& number, const std::string& content = "x") {
    for (std::size_t at = 0; at < kTexts; ++at)
      if (Say(protocol::Terminated(at == 0 ? number : content)) != "CNFM\r") return "";
    return Say("DONE\x04");
  }

private:
  int m_Socket;
  bool m_IsConnected = false;
};

// What content `x` comes back as, from a device that has never been told a date.
inline std::string AsReceived(const std::string& number, const std::string& content, const std::string& date,
                              int type = -1) {
  std::string all = number;
  for (const int ordinal : protocol::kReceivedOrdinals) {
    const bool isType = ordinal == protocol::kTypeOrdinal;
    all += "|" + (isType ? std::to_string(type) : ordinal == protocol::kDateOrdinal ? date : content);
  }
  return all;
}

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
