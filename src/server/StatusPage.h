// A page for the person who looks after the server: how many sessions, logins, inspections, faults. Figures
// only, no names; reached from this machine only.
#pragma once

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/steady_timer.hpp>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "server/SessionHost.h"

namespace inspector::server {

struct StatusFigures {
  device::CalendarTime now;
  std::size_t openSessions = 0;
  Counters counters;
};

// "/" for a browser, "/status.json" for a program. Runs on the thread of `io`.
class StatusPage {
public:
  StatusPage(asio::io_context& io, std::function<StatusFigures()> figures)
      : m_Io(io), m_Figures(std::move(figures)), m_Acceptor(io), m_Pause(io) {}

  std::string Listen(const HostAndPort& place);
  std::optional<HostAndPort> Address() const;
  void Close();

private:
  class Visit;

  void Accept();
  // The whole answer to the first line of a request.
  std::string AnswerTo(std::string_view request) const;

  asio::io_context& m_Io;
  std::function<StatusFigures()> m_Figures;
  asio::ip::tcp::acceptor m_Acceptor;
  asio::steady_timer m_Pause;
  // Open at this moment; they may outlive the page.
  std::shared_ptr<std::set<Visit*>> m_Visits = std::make_shared<std::set<Visit*>>();
};

}  // namespace inspector::server
