#include "server/StatusPage.h"

#include <array>
#include <asio/buffer.hpp>
#include <asio/write.hpp>
#include <chrono>
#include <nlohmann/json.hpp>

#include "server/Acceptor.h"

namespace inspector::server {

using asio::ip::tcp;

namespace {

constexpr std::size_t kMostVisits = 16;
constexpr std::size_t kLongestRequest = 4096;
constexpr std::chrono::seconds kLongestVisit{5};
constexpr std::chrono::milliseconds kAcceptPause{500};

std::string Response(const char* status, const char* type, const std::string& body) {
  return std::string("HTTP/1.1 ") + status + "\r\nContent-Type: " + type +
         "; charset=utf-8\r\nContent-Length: " + std::to_string(body.size()) +
         "\r\nCache-Control: no-store\r\nContent-Security-Policy: default-src 'none'; style-src "
         "'unsafe-inline'"
         "\r\nConnection: close\r\n\r\n" +
         body;
}

struct Figure {
  const char* key;
  const char* caption;
  std::int64_t value;
};

std::array<Figure, 9> FiguresOf(const StatusFigures& figures) {
  const Counters& counters = figures.counters;
  return {{{"open_sessions", "Sessions now", static_cast<std::int64_t>(figures.openSessions)},
           {"sessions", "Sessions since the start", counters.sessions},
           {"refused_sessions", "Refused by the limits", counters.refusedSessions},
           {"logins", "Logins", counters.logins},
           {"wrong_passwords", "Wrong names or passwords", counters.wrongPasswords},
           {"received", "Inspections received by devices", counters.received},
           {"sent", "Inspections sent by devices and stored", counters.sent},
           {"complaints", "Sessions closed for what they sent", counters.complaints},
           {"faults", "Faults of the storage", counters.faults}}};
}

}  // namespace

// One request and its answer. Keeps itself alive until then.
class StatusPage::Visit : public std::enable_shared_from_this<Visit> {
public:
  Visit(tcp::socket socket, StatusPage& page)
      : m_Socket(std::move(socket)), m_Page(page), m_Open(page.m_Visits), m_Timer(page.m_Io) {
    m_Open->insert(this);
  }
  ~Visit() { m_Open->erase(this); }

  void Start() {
    m_Timer.expires_after(kLongestVisit);
    m_Timer.async_wait([visit = weak_from_this()](const asio::error_code& cancelled) {
      if (const auto self = visit.lock(); self && !cancelled) self->Close();
    });
    Read();
  }

  void Close() {
    asio::error_code ignored;
    m_Timer.cancel();
    m_Socket.shutdown(tcp::socket::shutdown_both, ignored);
    m_Socket.close(ignored);
  }

private:
  void Read() {
    m_Socket.async_read_some(asio::buffer(m_Bytes.data() + m_Filled, m_Bytes.size() - m_Filled),
                             [self = shared_from_this()](const asio::error_code& error, std::size_t count) {
                               if (error) return self->Close();
                               self->m_Filled += count;
                               self->Answer();
                             });
  }
  void Answer() {
    const std::string_view request(m_Bytes.data(), m_Filled);
    const bool isWhole = request.find("\r\n\r\n") != std::string_view::npos;
    if (!isWhole && m_Filled < m_Bytes.size()) return Read();
    m_Answer = m_Page.AnswerTo(request.substr(0, request.find("\r\n")));
    asio::async_write(m_Socket, asio::buffer(m_Answer),
                      [self = shared_from_this()](const asio::error_code&, std::size_t) { self->Close(); });
  }
  tcp::socket m_Socket;
  StatusPage& m_Page;
  std::shared_ptr<std::set<Visit*>> m_Open;
  asio::steady_timer m_Timer;
  std::array<char, kLongestRequest> m_Bytes{};
  std::size_t m_Filled = 0;
  std::string m_Answer;
};

std::string StatusPage::Listen(const HostAndPort& place) {
  std::string problem = OpenAcceptor(m_Acceptor, m_Io, place, true);
  if (problem.empty()) Accept();
  return problem;
}

std::optional<HostAndPort> StatusPage::Address() const {
  if (!m_Acceptor.is_open()) return std::nullopt;
  return AddressOf(m_Acceptor);
}

void StatusPage::Close() {
  asio::error_code ignored;
  m_Acceptor.close(ignored);
  m_Pause.cancel();
  for (Visit* const visit : *m_Visits) visit->Close();
}

void StatusPage::Accept() {
  m_Acceptor.async_accept([this](const asio::error_code& error, tcp::socket socket) {
    if (error) {
      // Without files for another socket the page waits; closed, it has nothing to wait for.
      if (!m_Acceptor.is_open()) return;
      m_Pause.expires_after(kAcceptPause);
      m_Pause.async_wait([this](const asio::error_code& cancelled) {
        if (!cancelled) Accept();
      });
      return;
    }
    if (m_Visits->size() < kMostVisits) std::make_shared<Visit>(std::move(socket), *this)->Start();
    Accept();
  });
}

std::string StatusPage::AnswerTo(std::string_view request) const {
  const StatusFigures figures = m_Figures();
  const std::string time = device::ToIso(figures.now);
  if (request.starts_with("GET /status.json ")) {
    nlohmann::ordered_json object = {{"time", time}};
    for (const Figure& figure : FiguresOf(figures)) object[figure.key] = figure.value;
    return Response("200 OK", "application/json", object.dump(2) + "\n");
  }
  if (!request.starts_with("GET / "))
    return Response("404 Not Found", "text/plain", "There is / and /status.json.\n");
  std::string rows;
  for (const Figure& figure : FiguresOf(figures))
    rows += std::string("<tr><th scope=\"row\">") + figure.caption + "</th><td>" +
            std::to_string(figure.value) + "</td></tr>\n";
  return Response(
      "200 OK", "text/html",
      "<!DOCTYPE html>\n<html lang=\"en\"><head><title>Inspections of the office</title><style>body{font:1em "
      "sans-serif;margin:2em}th{text-align:left;font-weight:normal;padding-right:2em}td{text-align:right}"
      "</style></head><body><h1>Synchronisation server</h1>\n<p>" +
          time + "</p>\n<table>\n" + rows + "</table></body></html>\n");
}

}  // namespace inspector::server
