#include "exchange/ServerLink.h"

#include <asio/connect.hpp>
#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/write.hpp>
#include <vector>

namespace inspector::exchange {
namespace {

using asio::ip::tcp;

constexpr std::chrono::milliseconds kBetweenLooks(40);  // at whether somebody gives up

}  // namespace

struct ServerLink::Socket {
  asio::io_context context{1};
  tcp::socket socket{context};
};

ServerLink::ServerLink(std::function<bool()> givesUp)
    : m_GivesUp(std::move(givesUp)), m_Socket(std::make_unique<Socket>()) {}

ServerLink::~ServerLink() {
  Close();
}

void ServerLink::Close() {
  asio::error_code passedOver;
  m_Socket->socket.close(passedOver);
}

bool ServerLink::Wait(const std::function<bool()>& isOver, std::optional<std::chrono::milliseconds> most) {
  const auto begun = std::chrono::steady_clock::now();
  const auto isLate = [&] { return most && std::chrono::steady_clock::now() - begun >= *most; };
  m_Socket->context.restart();
  while (!isOver()) {
    m_Socket->context.run_one_for(kBetweenLooks);
    if (isOver() || !(isLate() || m_GivesUp())) continue;
    asio::error_code passedOver;
    m_Socket->socket.cancel(passedOver);
    // What waits refers to the caller's variables.
    while (!isOver() && m_Socket->context.run_one() > 0) continue;
    m_Error = "stopped";
    return false;
  }
  return true;
}

ServerLink::Attempt ServerLink::Connect(const std::string& host, std::uint16_t port) {
  asio::error_code error;
  m_Socket->socket.open(tcp::v4(), error);
  if (error) {
    m_Error = error.message();
    return Attempt::NoSocket;
  }
  tcp::resolver resolver(m_Socket->context);
  std::optional<asio::error_code> result;
  tcp::resolver::results_type found;
  // In a thread of the library's, which has to come back even when nobody waits for it any more.
  resolver.async_resolve(tcp::v4(), host, std::to_string(port), tcp::resolver::numeric_service,
                         [&](const asio::error_code& code, tcp::resolver::results_type addresses) {
                           result = code;
                           found = std::move(addresses);
                         });
  if (!Wait([&result] { return result.has_value(); })) return Attempt::NotReached;
  if (*result || found.empty()) {
    m_Error = result->message();
    return Attempt::UnknownHost;
  }
  result.reset();
  m_Socket->socket.async_connect(found.begin()->endpoint(),
                                 [&result](const asio::error_code& code) { result = code; });
  if (!Wait([&result] { return result.has_value(); })) return Attempt::NotReached;
  if (*result) {
    m_Error = result->message();
    return Attempt::NotReached;
  }
  // Each message waits for its reply; nothing is gained by collecting small ones.
  m_Socket->socket.set_option(tcp::no_delay(true), error);
  return Attempt::Connected;
}

bool ServerLink::Send(std::string_view bytes) {
  std::optional<asio::error_code> result;
  asio::async_write(m_Socket->socket, asio::buffer(bytes.data(), bytes.size()),
                    [&result](const asio::error_code& code, std::size_t) { result = code; });
  if (!Wait([&result] { return result.has_value(); })) return false;
  if (*result) m_Error = result->message();
  return !*result;
}

std::optional<std::string> ServerLink::Receive(std::size_t most) {
  std::string bytes(most, '\0');
  std::optional<asio::error_code> result;
  std::size_t count = 0;
  m_Socket->socket.async_read_some(asio::buffer(bytes), [&](const asio::error_code& code, std::size_t size) {
    result = code;
    count = size;
  });
  if (!Wait([&result] { return result.has_value(); })) return std::nullopt;
  if (*result) {
    m_Error = *result == asio::error::eof ? "the server has closed the connection" : result->message();
    return std::nullopt;
  }
  bytes.resize(count);
  return bytes;
}

bool ServerLink::HasMore(std::chrono::milliseconds within) {
  std::optional<asio::error_code> result;
  m_Socket->socket.async_wait(tcp::socket::wait_read,
                              [&result](const asio::error_code& code) { result = code; });
  return Wait([&result] { return result.has_value(); }, within) && !*result;
}

}  // namespace inspector::exchange
