// Kills inspector-syncd again and again while devices send and receive, and looks at what is left: the file
// must be intact, every inspection that was confirmed must be there, and every one must be there whole or not
// at all. Now and then it is told to end instead, and must do so in good order.
//
//   inspector_server_kill PROGRAM [KILLS [SEED]]
#include <atomic>
#include <map>

#include "kill/Tablet.h"
#include "server/DeviceSocket.h"

namespace inspector::tests {
namespace {

constexpr int kSenders = 3;
constexpr int kOffered = 20;
constexpr int kLongestLife = 120;  // milliseconds

void Expect(bool holds, const std::string& what) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", what.c_str());
  std::exit(1);
}

// The server as a process of its own.
class ServerProcess {
public:
  explicit ServerProcess(std::vector<std::string> words) {
    int ends[2];
    Expect(pipe(ends) == 0, "no pipe");
    m_Id = fork();
    if (m_Id == 0) {
      dup2(ends[1], STDERR_FILENO);
      std::vector<char*> arguments;
      for (std::string& word : words) arguments.push_back(word.data());
      arguments.push_back(nullptr);
      execv(arguments[0], arguments.data());
      _exit(127);
    }
    close(ends[1]);
    m_Log = ends[0];
    const std::string mark = "listening address=\"127.0.0.1:";
    std::size_t at = std::string::npos;
    std::string log;
    while ((at = log.find(mark)) == std::string::npos || log.find('\n', at) == std::string::npos) {
      char part[256];
      const ssize_t count = read(m_Log, part, sizeof(part));
      Expect(count > 0, "the server does not start: " + log);
      log.append(part, static_cast<std::size_t>(count));
    }
    m_Port = static_cast<std::uint16_t>(std::stoi(log.substr(at + mark.size())));
    // Its log must not fill the pipe.
    m_Drain = std::thread([this] {
      char part[4096];
      while (read(m_Log, part, sizeof(part)) > 0) {
      }
    });
  }
  // Its exit code, -1 when it was killed.
  int End(int signal) {
    kill(m_Id, signal);
    int status = 0;
    waitpid(m_Id, &status, 0);
    m_Drain.join();
    close(m_Log);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  std::uint16_t Port() const { return m_Port; }

private:
  pid_t m_Id = 0;
  int m_Log = -1;
  std::uint16_t m_Port = 0;
  std::thread m_Drain;
};

struct Sent {
  std::string number;
  std::string content;
};

// Sends until the server is gone. Numbers are used twice, so that rows are changed as well as added.
void SendOn(std::uint16_t port, const std::string& name, std::vector<Sent>& confirmed) {
  for (int round = 0;; ++round) {
    Device device(port);
    if (!device.IsConnected() || device.LogIn("ana", "secret") != "CNFM\r" ||
        device.Say("SEND 4\r") != "CNFM\r")
      return;
    for (int i = 0; i < 4; ++i) {
      const Sent sent{name + "-" + std::to_string((4 * round + i) / 2), "r" + std::to_string(4 * round + i)};
      if (device.SendInspection(sent.number, sent.content) != "CNFM\r") return;
      confirmed.push_back(sent);
    }
    device.Send("QUIT\r");
  }
}

void ReceiveOn(std::uint16_t port, std::atomic<int>& received) {
  for (;;) {
    Device device(port);
    if (!device.IsConnected() || device.LogIn("ben", "secret") != "CNFM\r") return;
    const auto count = protocol::CountOf(device.Say("RECV all\r"));
    if (!count) return;
    Expect(*count == kOffered, "the wrong number is offered");
    for (int i = 0; i < kOffered; ++i) {
      const std::string number = device.Say("INSP\r");
      if (number.empty()) return;
      Expect(number == std::to_string(100 + i), "the wrong inspection: " + number);
      for (std::size_t field = 1; field <= protocol::kReceivedOrdinals.size(); ++field) {
        const std::string reply = device.Say("FELD\r");
        if (reply.empty()) return;
        Expect(field != 2 || reply == "Client " + number, "the wrong field: " + reply);
      }
      ++received;
    }
    device.Send("QUIT\r");
  }
}

int Run(int count, char** words) {
  KillRun run(count, words, 1);
  std::mt19937 random(run.seed);
  const std::string program = run.programs[0];
  const std::string data = run.folder / "data";
  const std::string config = run.folder / "cheap.toml";
  std::ofstream(config) << "password_mib = 1\n";
  std::ofstream table(run.folder / "work.csv");
  table << "number,client\n";
  for (int i = 0; i < kOffered; ++i) table << 100 + i << ",Client " << 100 + i << "\n";
  table.close();
  const std::string tail = " --data " + data + " --config " + config;
  Expect(std::system(("echo secret | " + program + " user add ana --office north" + tail).c_str()) == 0,
         "no user");
  Expect(std::system(("echo secret | " + program + " user add ben --office south" + tail).c_str()) == 0,
         "no user");
  Expect(std::system((program + " inspection import " + (run.folder / "work.csv").string() +
                      " --office south" + tail + " >/dev/null 2>&1")
                         .c_str()) == 0,
         "no import");

  std::map<std::string, int> known;  // the round of the last confirmed content of each number
  std::size_t confirmedInAll = 0;
  std::atomic<int> received = 0;
  for (int round = 0; round < run.kills; ++round) {
    ServerProcess server({program, "serve", "--data", data, "--config", config, "--listen", "127.0.0.1:0"});
    std::vector<std::vector<Sent>> confirmed(kSenders);
    std::vector<std::thread> devices;
    for (int i = 0; i < kSenders; ++i)
      devices.emplace_back([&, i] {
        SendOn(server.Port(), std::to_string(round) + "-" + std::to_string(i),
               confirmed[static_cast<std::size_t>(i)]);
      });
    devices.emplace_back([&] { ReceiveOn(server.Port(), received); });
    std::this_thread::sleep_for(std::chrono::microseconds(random() % (1000 * kLongestLife)));
    const bool isTerm = random() % 8 == 0;
    const int code = server.End(isTerm ? SIGTERM : SIGKILL);
    Expect(!isTerm || code == 0, "told to end, it does not end well");
    for (std::thread& device : devices) device.join();

    for (const auto& list : confirmed) {
      for (const Sent& sent : list) known[sent.number] = std::stoi(sent.content.substr(1));
      confirmedInAll += list.size();
    }
    Shell shell(std::filesystem::path(data) / "syncd.db");
    Expect(shell.Ask("PRAGMA integrity_check") == "ok", "the file is damaged");
    const std::string whole = " WHERE OfficeKey = (SELECT OfficeKey FROM Office WHERE Name = 'north') AND ";
    const std::string torn =
        shell.Ask("SELECT COUNT(*) FROM Inspection" + whole +
                  "(ClientName, ClientAddress, ClientCityStateZip, GeneralInformation, DocType, "
                  "CityStateZip, ClientAgent, "
                  "ListingAgent, RealEstateCompany) <> (DwellingAddress, DwellingAddress, DwellingAddress, "
                  "DwellingAddress, "
                  "DwellingAddress, DwellingAddress, DwellingAddress, DwellingAddress, DwellingAddress)");
    Expect(torn == "0", "half an inspection");
    Expect(
        shell.Ask(
            "SELECT COUNT(*) FROM Inspection i WHERE NOT EXISTS (SELECT 1 FROM Version v WHERE v.OfficeKey = "
            "i.OfficeKey AND v.InspectionNum = i.InspectionNum AND v.DwellingAddress = i.DwellingAddress)") ==
            "0",
        "an inspection without its version");
    std::map<std::string, int> stored;
    for (const std::string& row :
         shell.Rows("SELECT InspectionNum, DwellingAddress FROM Inspection" + whole + "1"))
      stored[row.substr(0, row.find('|'))] = std::stoi(row.substr(row.find('|') + 2));
    for (const auto& [number, content] : known)
      Expect(stored.contains(number) && stored[number] >= content, "what was confirmed is gone: " + number);
  }
  std::printf("%d kills, %zu inspections confirmed, %d received, seed %u\n", run.kills, confirmedInAll,
              received.load(), run.seed);
  Expect(confirmedInAll > static_cast<std::size_t>(run.kills) && received > 0,
         "hardly anything was done before the kills");
  std::filesystem::remove_all(run.folder);
  return 0;
}

}  // namespace
}  // namespace inspector::tests

int main(int count, char** words) {
  return inspector::tests::Run(count, words);
}
