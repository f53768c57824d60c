// What inspector-syncd costs over the network below it: 1,000 devices at once, each receiving 20 inspections
// and sending 5, against as many that exchange the same messages with a server that only echoes; and what a
// request for today's inspections costs when the server holds many others.
//
//   SyncBench [DEVICES]
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <asio.hpp>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "protocol/Wire.h"

namespace inspector::bench {
namespace {

using asio::ip::tcp;
using Clock = std::chrono::steady_clock;

constexpr int kToReceive = 20;
constexpr int kToSend = 5;
constexpr int kRuns = 3;
constexpr double kAllowedReceiving = 0.7;
constexpr double kAllowedMix = 0.4;
constexpr double kAllowedMemory = 64;  // KiB for each session
constexpr double kAllowedGrowth = 1.5;

[[noreturn]] void Fail(const std::string& what) {
  std::fprintf(stderr, "%s\n", what.c_str());
  std::exit(1);
}

double Since(Clock::time_point begin) {
  return std::chrono::duration<double>(Clock::now() - begin).count();
}

// --- the server that only echoes

class Echo : public std::enable_shared_from_this<Echo> {
public:
  explicit Echo(tcp::socket socket) : m_Socket(std::move(socket)) {}
  void Read() {
    m_Socket.async_read_some(asio::buffer(m_Bytes),
                             [self = shared_from_this()](const asio::error_code& error, std::size_t count) {
                               if (error) return;
                               asio::async_write(self->m_Socket, asio::buffer(self->m_Bytes, count),
                                                 [self](const asio::error_code& failure, std::size_t) {
                                                   if (!failure) self->Read();
                                                 });
                             });
  }

private:
  tcp::socket m_Socket;
  std::array<char, protocol::kBufferBytes> m_Bytes{};
};

void AcceptEchoes(tcp::acceptor& acceptor) {
  acceptor.async_accept([&acceptor](const asio::error_code& error, tcp::socket socket) {
    if (error) return;
    socket.set_option(tcp::no_delay(true));
    std::make_shared<Echo>(std::move(socket))->Read();
    AcceptEchoes(acceptor);
  });
}

// --- processes

struct Process {
  pid_t id = 0;
  std::uint16_t port = 0;

  void End() const {
    kill(id, SIGTERM);
    int status = 0;
    waitpid(id, &status, 0);
  }
  // KiB that it occupies now.
  double Memory() const {
    std::ifstream status("/proc/" + std::to_string(id) + "/status");
    for (std::string line; std::getline(status, line);)
      if (line.starts_with("VmRSS:")) return std::strtod(line.c_str() + 6, nullptr);
    return 0;
  }
};

Process StartEcho() {
  int ends[2];
  if (pipe(ends) != 0) Fail("no pipe");
  Process process;
  process.id = fork();
  if (process.id == 0) {
    asio::io_context io(1);
    tcp::acceptor acceptor(io, {asio::ip::address_v4::loopback(), 0});
    const std::uint16_t port = acceptor.local_endpoint().port();
    if (write(ends[1], &port, sizeof(port)) != sizeof(port)) _exit(1);
    AcceptEchoes(acceptor);
    io.run();
    _exit(0);
  }
  if (read(ends[0], &process.port, sizeof(process.port)) != sizeof(process.port)) Fail("no echo server");
  close(ends[0]);
  close(ends[1]);
  return process;
}

Process StartServer(const std::string& program, const std::string& data, int devices) {
  int ends[2];
  if (pipe(ends) != 0) Fail("no pipe");
  Process process;
  process.id = fork();
  if (process.id == 0) {
    dup2(ends[1], STDERR_FILENO);
    const std::string most = std::to_string(devices + 10);
    execl(program.c_str(), program.c_str(), "serve", "--data", data.c_str(), "--listen", "127.0.0.1:0",
          "--max-sessions", most.c_str(), "--max-per-address", most.c_str(), nullptr);
    _exit(127);
  }
  close(ends[1]);
  const std::string mark = "127.0.0.1:";
  std::string log;
  while (log.find('\n') == std::string::npos) {
    std::array<char, 512> part{};
    const ssize_t count = read(ends[0], part.data(), part.size());
    if (count <= 0) Fail("The server does not start: " + log);
    log.append(part.data(), static_cast<std::size_t>(count));
  }
  process.port = static_cast<std::uint16_t>(std::stoi(log.substr(log.find(mark) + mark.size())));
  // Nobody reads on; what it logs at the end of the sessions fits into the pipe or is read here.
  if (fork() == 0) {
    std::array<char, 4096> part{};
    while (read(ends[0], part.data(), part.size()) > 0) {
    }
    _exit(0);
  }
  close(ends[0]);
  return process;
}

// --- devices

struct Message {
  std::string bytes;
  std::string reply;  // empty: any
};
using Script = std::vector<Message>;

class Device {
public:
  Device(asio::io_context& io, bool isChecking) : m_Socket(io), m_IsChecking(isChecking) {}

  void Connect(std::uint16_t port) {
    m_Socket.connect({asio::ip::address_v4::loopback(), port});
    m_Socket.set_option(tcp::no_delay(true));
    m_Socket.non_blocking(true);
  }
  void Play(const Script& script, std::function<void()> done) {
    m_Script = &script;
    m_Next = 0;
    m_Done = std::move(done);
    Say();
  }

private:
  void Say() {
    if (m_Next == m_Script->size()) return m_Done();
    const std::string& bytes = (*m_Script)[m_Next].bytes;
    if (m_Socket.send(asio::buffer(bytes)) != bytes.size()) Fail("half a message went out");
    m_Socket.async_read_some(asio::buffer(m_Bytes), [this](const asio::error_code& error, std::size_t count) {
      if (error) Fail("A session was refused or broken off: " + error.message());
      const Message& message = (*m_Script)[m_Next++];
      const std::string_view reply(m_Bytes.data(), count);
      if (m_IsChecking && !message.reply.empty() && reply != message.reply)
        Fail("A wrong reply to " + message.bytes + ": " + std::string(reply));
      Say();
    });
  }

  tcp::socket m_Socket;
  bool m_IsChecking;
  const Script* m_Script = nullptr;
  std::size_t m_Next = 0;
  std::function<void()> m_Done;
  std::array<char, protocol::kBufferBytes> m_Bytes{};
};

std::string NumberOf(int inspection) {
  return "today-" + std::to_string(1000 + inspection);
}

// Of other days, so that what devices send does not add to what they receive.
std::string OtherNumber(int inspection) {
  return "other-" + std::to_string(inspection);
}

Script Receiving(const char* period) {
  Script script = {{"RECV " + std::string(period) + "\r", protocol::CountReply(kToReceive)}};
  for (int i = 0; i < kToReceive; ++i) {
    script.push_back({"INSP\r", NumberOf(i)});
    for (const int ordinal : protocol::kReceivedOrdinals)
      script.push_back({"FELD\r", ordinal == 2                        ? "Client of " + NumberOf(i)
                                  : ordinal == protocol::kTypeOrdinal ? std::string("\xFF\xFF\xFF\xFF")
                                                                      : ""});
  }
  return script;
}

Script Sending(int device, int round) {
  Script script = {{"SEND " + std::to_string(kToSend) + "\r", "CNFM\r"}};
  for (int i = 0; i < kToSend; ++i) {
    for (std::size_t at = 0; at < protocol::kSentOrdinals.size(); ++at) {
      const std::string content = "1234 Endless Row, apt. " + std::to_string(round);
      script.push_back(
          {protocol::Terminated(at == 0 ? OtherNumber(device * kToSend + i) : content), "CNFM\r"});
    }
    script.push_back({protocol::Terminated(protocol::kDone), "CNFM\r"});
  }
  return script;
}

class Fleet {
public:
  Fleet(const Process& server, int devices, bool isChecking) : m_Server(server) {
    for (int i = 0; i < devices; ++i) {
      m_Devices.push_back(std::make_unique<Device>(m_Io, isChecking));
      m_Devices.back()->Connect(server.port);
    }
  }

  // Each device plays its script. Returns the exchanges in a second.
  double Play(const std::function<const Script&(int)>& scriptOf) {
    std::size_t exchanges = 0;
    std::size_t playing = m_Devices.size();
    const auto begin = Clock::now();
    for (std::size_t i = 0; i < m_Devices.size(); ++i) {
      const Script& script = scriptOf(static_cast<int>(i));
      exchanges += script.size();
      m_Devices[i]->Play(script, [&playing] { --playing; });
    }
    for (auto next = begin; playing > 0;) {
      m_Io.restart();
      m_Io.run_one_for(std::chrono::milliseconds(20));
      if (Clock::now() < next) continue;
      m_Memory = std::max(m_Memory, m_Server.Memory());
      next = Clock::now() + std::chrono::milliseconds(100);
    }
    return static_cast<double>(exchanges) / Since(begin);
  }
  // The most that the server has occupied during the scripts, in KiB.
  double Memory() const { return m_Memory; }
  void ForgetMemory() { m_Memory = 0; }

private:
  const Process& m_Server;
  asio::io_context m_Io{1};
  std::vector<std::unique_ptr<Device>> m_Devices;
  double m_Memory = 0;
};

// --- the measures

class Office {
public:
  explicit Office(std::string program) : m_Program(std::move(program)) {
    std::string pattern = std::filesystem::temp_directory_path() / "inspector-sync-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) Fail("no temporary folder");
    m_Folder = pattern;
  }
  ~Office() {
    std::error_code ignored;
    std::filesystem::remove_all(m_Folder, ignored);
  }

  std::string Data() const { return m_Folder / "data"; }
  void AddUser() const { Run("echo secret | " + m_Program + " user add ana --office north"); }
  // Those of today, and others of other days.
  void Fill(int first, int others) const {
    const std::filesystem::path file = m_Folder / "work.csv";
    std::ofstream out(file);
    out << "number,client,address,citystatezip,general,date\n";
    const auto add = [&out](const std::string& number, const std::string& date) {
      out << number << ",Client of " << number
          << ",1234 Endless Row,\"Springfield, IL 62704\",Two floors and a cellar." << date << "\n";
    };
    if (first == 0)
      for (int i = 0; i < kToReceive; ++i) add(NumberOf(i), ",");
    for (int i = first; i < others; ++i)
      add(OtherNumber(i), "," + std::to_string(1 + i % 12) + "/" + std::to_string(1 + i % 28) + "/" +
                              std::to_string(2000 + i % 20));
    out.close();
    Run(m_Program + " inspection import " + file.string() + " --office north");
  }

private:
  void Run(const std::string& command) const {
    if (std::system((command + " --data " + Data() + " >/dev/null 2>&1").c_str()) != 0)
      Fail("This failed: " + command);
  }

  std::string m_Program;
  std::filesystem::path m_Folder;
};

struct Speeds {
  double receiving = 0;
  double mix = 0;
};

// The best of several runs of each.
Speeds Measure(Fleet& fleet, int devices) {
  const Script receiving = Receiving("today");
  Speeds best;
  for (int run = 0; run < kRuns; ++run) {
    std::vector<Script> mixed;
    for (int i = 0; i < devices; ++i) {
      mixed.push_back(receiving);
      const Script sending = Sending(i, run);
      mixed.back().insert(mixed.back().end(), sending.begin(), sending.end());
    }
    best.receiving = std::max(best.receiving, fleet.Play([&](int) -> const Script& { return receiving; }));
    best.mix = std::max(
        best.mix, fleet.Play([&](int i) -> const Script& { return mixed[static_cast<std::size_t>(i)]; }));
  }
  return best;
}

bool MeasureFleet(const std::string& program, int devices) {
  Speeds echo;
  {
    const Process server = StartEcho();
    Fleet fleet(server, devices, false);
    echo = Measure(fleet, devices);
    server.End();
  }

  Office office(program);
  office.AddUser();
  office.Fill(0, devices * kToSend);
  const Process server = StartServer(program, office.Data(), devices);
  const double before = server.Memory();
  Fleet fleet(server, devices, true);
  const Script login = {{"USER ana\r", "CNFM\r"}, {"PASS secret\r", "CNFM\r"}};
  const auto begin = Clock::now();
  fleet.Play([&](int) -> const Script& { return login; });
  std::printf("%d logins at once: %.1f s\n", devices, Since(begin));
  fleet.ForgetMemory();
  const Speeds office1 = Measure(fleet, devices);
  const double memory = (fleet.Memory() - before) / devices;
  server.End();

  const double receiving = office1.receiving / echo.receiving;
  const double mix = office1.mix / echo.mix;
  std::printf("receiving: %.0f exchanges a second, echo %.0f, ratio %.2f (at least %.1f)\n",
              office1.receiving, echo.receiving, receiving, kAllowedReceiving);
  std::printf("receiving and sending: %.0f exchanges a second, echo %.0f, ratio %.2f (at least %.1f)\n",
              office1.mix, echo.mix, mix, kAllowedMix);
  std::printf("memory of the server: %.0f KiB alone, %.1f KiB for each session (at most %.0f)\n", before,
              memory, kAllowedMemory);
  return receiving >= kAllowedReceiving && mix >= kAllowedMix && memory <= kAllowedMemory;
}

// Seconds of one request for today's inspections with all its answers.
double Today(const std::string& program, const Office& office) {
  constexpr int kRequests = 300;
  const Process server = StartServer(program, office.Data(), 1);
  Fleet fleet(server, 1, true);
  const Script login = {{"USER ana\r", "CNFM\r"}, {"PASS secret\r", "CNFM\r"}};
  fleet.Play([&](int) -> const Script& { return login; });
  const Script receiving = Receiving("today");
  double best = 1e9;
  for (int run = 0; run < 5; ++run) {
    const auto begin = Clock::now();
    for (int i = 0; i < kRequests; ++i) fleet.Play([&](int) -> const Script& { return receiving; });
    best = std::min(best, Since(begin) / kRequests);
  }
  server.End();
  return best;
}

bool MeasureGrowth(const std::string& program) {
  Office office(program);
  office.AddUser();
  office.Fill(0, 1000);
  const double few = Today(program, office);
  office.Fill(1000, 100'000);
  const double many = Today(program, office);
  std::printf("\"today\" with 1,000 inspections: %.2f ms, with 100,000: %.2f ms, ratio %.2f (at most %.1f)\n",
              1e3 * few, 1e3 * many, many / few, kAllowedGrowth);
  return many / few <= kAllowedGrowth;
}

}  // namespace
}  // namespace inspector::bench

int main(int count, char** words) {
  const int devices = count > 1 ? std::atoi(words[1]) : 1000;
  const std::string program =
      std::filesystem::read_symlink("/proc/self/exe").replace_filename("inspector-syncd");
  signal(SIGPIPE, SIG_IGN);
  const bool isFast = inspector::bench::MeasureFleet(program, devices);
  const bool isLevel = inspector::bench::MeasureGrowth(program);
  return isFast && isLevel ? 0 : 1;
}
