// The running server: listens, starts sessions, watches their limits, and ends in good order.
#pragma once

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/signal_set.hpp>
#include <asio/steady_timer.hpp>
#include <asio/thread_pool.hpp>
#include <list>
#include <map>
#include <memory>
#include <string>

#include "server/Passwords.h"
#include "server/Session.h"
#include "server/StatusPage.h"

namespace inspector::server {

class Server {
public:
  Server(const Settings& settings, Storage& storage, device::Clock& clock, ServerLog& log,
         const PasswordCost& cost = {});
  ~Server();

  // Takes the addresses it is to listen on. Why that is not possible, or an empty text.
  std::string Listen();
  // Serves until it is told to stop, and everything under way is done.
  void Run();
  // From any thread: no new sessions; those there end when no inspection is under way in them.
  void Stop();
  // SIGTERM and SIGINT do that, too; a second one does not wait for inspections.
  void StopAtSignals();

  // Where it listens; after Listen.
  HostAndPort Address() const;
  std::optional<HostAndPort> StatusAddress() const;

private:
  void AwaitSignal();
  void Accept();
  void Admit(asio::ip::tcp::socket socket);
  void Look();  // once a second
  void BeginStop();
  void BreakAll(const char* why);
  void FinishStop();
  StatusFigures Figures() const;

  const Settings& m_Settings;
  device::Clock& m_Clock;
  ServerLog& m_Log;
  asio::io_context m_Io{1};
  std::string m_StrangerHash;
  LoginGuard m_Guard;
  Counters m_Counters;
  asio::ip::tcp::acceptor m_Acceptor{m_Io};
  asio::steady_timer m_AcceptPause{m_Io};
  asio::steady_timer m_LookTimer{m_Io};
  asio::steady_timer m_StopTimer{m_Io};
  asio::signal_set m_Signals{m_Io};
  StatusPage m_StatusPage;
  std::list<std::shared_ptr<Session>> m_Sessions;
  std::map<std::string, int> m_PerAddress;
  std::int64_t m_RefusedTold = 0;
  bool m_IsStopping = false;
  // Last, so that they end first: what they are doing may use the rest.
  StorageDesk m_Desk;
  asio::thread_pool m_Hashing{2};
  SessionHost m_Host;
};

}  // namespace inspector::server
