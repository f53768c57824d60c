#include "server/Server.h"

#include <asio/post.hpp>
#include <csignal>

#include "server/Acceptor.h"

namespace inspector::server {

using asio::ip::tcp;

namespace {

constexpr std::chrono::seconds kLookEvery{1};
constexpr std::chrono::milliseconds kAcceptPause{200};

}  // namespace

Server::Server(const Settings& settings, Storage& storage, device::Clock& clock, ServerLog& log,
               const PasswordCost& cost)
    : m_Settings(settings),
      m_Clock(clock),
      m_Log(log),
      m_StrangerHash(HashPassword("nobody's password", cost).value_or("")),
      m_Guard(settings.loginDelay),
      m_StatusPage(m_Io, [this] { return Figures(); }),
      m_Desk(storage, m_Io),
      m_Host{m_Io, settings, clock, log, m_Desk, m_Guard, m_Hashing, m_StrangerHash, m_Counters} {}

Server::~Server() {
  // Nobody waits any more for those that have not begun.
  m_Hashing.stop();
  m_Hashing.join();
  // What is left in the queue may hold sessions, whose sockets belong to it.
  m_Sessions.clear();
}

std::string Server::Listen() {
  if (m_StrangerHash.empty()) return "There is no memory for hashing passwords.";
  std::string problem = OpenAcceptor(m_Acceptor, m_Io, m_Settings.listen, false);
  if (problem.empty() && m_Settings.status) problem = m_StatusPage.Listen(*m_Settings.status);
  return problem;
}

HostAndPort Server::Address() const {
  return AddressOf(m_Acceptor);
}

std::optional<HostAndPort> Server::StatusAddress() const {
  return m_StatusPage.Address();
}

void Server::Run() {
  Accept();
  Look();
  m_Io.run();
}

// --- sessions

void Server::Accept() {
  m_Acceptor.async_accept([this](const asio::error_code& error, tcp::socket socket) {
    if (m_IsStopping) return;
    if (!error) {
      Admit(std::move(socket));
      return Accept();
    }
    // Too many open files, most likely: trying again at once would only burn the processor.
    m_Log.Error("cannot accept", {{"fault", error.message()}});
    m_AcceptPause.expires_after(kAcceptPause);
    m_AcceptPause.async_wait([this](const asio::error_code& cancelled) {
      if (!cancelled && !m_IsStopping) Accept();
    });
  });
}

void Server::Admit(tcp::socket socket) {
  asio::error_code error;
  const std::string address = socket.remote_endpoint(error).address().to_string();
  if (error) return;  // gone already
  int& ofAddress = m_PerAddress[address];
  if (static_cast<int>(m_Sessions.size()) >= m_Settings.maxSessions ||
      ofAddress >= m_Settings.maxPerAddress) {
    if (ofAddress == 0) m_PerAddress.erase(address);
    ++m_Counters.refusedSessions;  // told once a second, since a flood must not fill the log
    return;
  }
  ++ofAddress;
  ++m_Counters.sessions;
  socket.set_option(tcp::no_delay(true), error);
  socket.non_blocking(true, error);
  const auto place = m_Sessions.emplace(m_Sessions.end());
  *place = std::make_shared<Session>(std::move(socket), address, m_Host, [this, place] {
    const auto count = m_PerAddress.find((*place)->Address());
    if (--count->second == 0) m_PerAddress.erase(count);
    // Not at once: the session is at work in this moment.
    asio::post(m_Io, [this, place] {
      m_Sessions.erase(place);
      if (m_IsStopping && m_Sessions.empty()) FinishStop();
    });
  });
  const std::shared_ptr<Session> session = *place;
  session->Start();
}

void Server::Look() {
  m_LookTimer.expires_after(kLookEvery);
  m_LookTimer.async_wait([this](const asio::error_code& cancelled) {
    if (cancelled || (m_IsStopping && m_Sessions.empty())) return;
    const auto now = Session::Clock::now();
    for (const auto& session : m_Sessions) session->CheckTime(now);
    if (m_Counters.refusedSessions > m_RefusedTold) {
      m_Log.Warning("connections refused, too many sessions",
                    {{"count", m_Counters.refusedSessions - m_RefusedTold}});
      m_RefusedTold = m_Counters.refusedSessions;
    }
    Look();
  });
}

// --- the end

void Server::Stop() {
  asio::post(m_Io, [this] { BeginStop(); });
}

void Server::StopAtSignals() {
  asio::error_code ignored;
  m_Signals.add(SIGTERM, ignored);
  m_Signals.add(SIGINT, ignored);
  AwaitSignal();
}

void Server::AwaitSignal() {
  m_Signals.async_wait([this](const asio::error_code& error, int) {
    if (error) return;
    const bool isSecond = m_IsStopping;
    BeginStop();
    if (isSecond) BreakAll("the server stops at once");
    if (!m_Sessions.empty()) AwaitSignal();
  });
}

void Server::BeginStop() {
  if (m_IsStopping) return;
  m_IsStopping = true;
  m_Log.Info("stopping", {{"sessions", static_cast<std::int64_t>(m_Sessions.size())}});
  asio::error_code ignored;
  m_Acceptor.close(ignored);
  m_AcceptPause.cancel();
  if (m_Sessions.empty()) return FinishStop();
  for (const auto& session : m_Sessions) session->Stop();
  m_StopTimer.expires_after(m_Settings.stop);
  m_StopTimer.async_wait([this](const asio::error_code& cancelled) {
    if (!cancelled) BreakAll("the server stops and cannot wait longer");
  });
}

void Server::BreakAll(const char* why) {
  for (const auto& session : m_Sessions) session->Break(why);
}

void Server::FinishStop() {
  asio::error_code ignored;
  m_StatusPage.Close();
  m_StopTimer.cancel();
  m_LookTimer.cancel();
  m_Signals.cancel(ignored);
}

StatusFigures Server::Figures() const {
  return {m_Clock.Now(), m_Sessions.size(), m_Counters};
}

}  // namespace inspector::server
