#include "server/Serve.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

#include "server/OpenStorage.h"
#include "server/Server.h"

namespace inspector::server {
namespace {

constexpr rlim_t kFilesBesideSockets = 64;

// Two servers of one folder would be sound, but each would count its own sessions. The system lets go of the
// lock when the process ends, however it ends.
class FolderLock {
public:
  explicit FolderLock(const std::filesystem::path& folder)
      : m_Descriptor(open((folder / "serve.lock").c_str(), O_CREAT | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR)) {
  }
  ~FolderLock() {
    if (m_Descriptor >= 0) close(m_Descriptor);
  }
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

  bool IsMine() const { return m_Descriptor >= 0 && flock(m_Descriptor, LOCK_EX | LOCK_NB) == 0; }

private:
  int m_Descriptor;
};

void AllowSockets(int sessions, ServerLog& log) {
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
  const rlim_t needed = static_cast<rlim_t>(sessions) + kFilesBesideSockets;
  if (limit.rlim_cur < needed) {
    limit.rlim_cur = std::min(needed, limit.rlim_max);
    setrlimit(RLIMIT_NOFILE, &limit);
  }
  if (limit.rlim_cur < needed)
    log.Warning("the system allows fewer open files than sessions",
                {{"files", static_cast<std::int64_t>(limit.rlim_cur)}});
}

}  // namespace

ExitCode Serve(const Settings& settings, std::ostream& err) {
  // Whoever reads the log may go; the devices stay.
  signal(SIGPIPE, SIG_IGN);
  device::SystemClock clock;
  ServerLog log(clock, settings.logJson ? ServerLog::Form::Json : ServerLog::Form::Words,
                WriteToStandardError);
  const auto fail = [&err](const std::string& why) {
    err << why << '\n';
    return ExitCode::Failed;
  };

  std::unique_ptr<Storage> storage;
  if (const Fault fault = OpenStorage(settings, storage); !fault.empty()) return fail(fault);
  const FolderLock lock(settings.data);
  if (!lock.IsMine()) return fail("Another server runs on " + settings.data.string() + ".");
  AllowSockets(settings.maxSessions, log);

  Server server(settings, *storage, clock, log, settings.cost);
  if (const std::string problem = server.Listen(); !problem.empty()) return fail(problem);
  server.StopAtSignals();
  const HostAndPort address = server.Address();
  log.Info("listening", {{"address", ToString(address)}, {"data", settings.data.string()}});
  if (const auto status = server.StatusAddress())
    log.Info("status page", {{"address", "http://" + ToString(*status) + "/"}});
  log.Warning(
      "the protocol is not encrypted: names, passwords and inspections can be read on the way, so lead it "
      "through a tunnel outside a trusted network");
  if (address.port < kLowestDevicePort || address.port > kHighestDevicePort)
    log.Warning("devices accept ports from 10 to 10000 only", {{"port", std::int64_t{address.port}}});
  std::vector<User> users;
  if (storage->ListUsers(users).empty() && users.empty())
    log.Warning("nobody can log in yet: inspector-syncd user add NAME --office OFFICE --data DIR");
  server.Run();
  log.Info("stopped");
  return ExitCode::Done;
}

}  // namespace inspector::server
