#include "server/Acceptor.h"

namespace inspector::server {

using asio::ip::tcp;

namespace {

// The first address of a host name, in the form that devices use if there is one; sets `problem` when there
// is none at all.
tcp::endpoint Resolve(asio::io_context& io, const HostAndPort& place, std::string& problem) {
  asio::error_code error;
  tcp::resolver resolver(io);
  const auto found = resolver.resolve(place.host, std::to_string(place.port), error);
  if (error || found.empty()) {
    problem = "\"" + place.host + "\" is no address of this machine: " + error.message() + ".";
    return {};
  }
  for (const auto& entry : found)
    if (entry.endpoint().address().is_v4()) return entry.endpoint();
  return found.begin()->endpoint();
}

}  // namespace

std::string OpenAcceptor(tcp::acceptor& acceptor, asio::io_context& io, const HostAndPort& place,
                         bool localOnly) {
  std::string problem;
  const tcp::endpoint endpoint = Resolve(io, place, problem);
  if (!problem.empty()) return problem;
  if (localOnly && !endpoint.address().is_loopback())
    return ToString(place) + " can be reached from outside: choose a local address, as 127.0.0.1.";
  asio::error_code error;
  acceptor.open(endpoint.protocol(), error);
  if (!error) acceptor.set_option(tcp::acceptor::reuse_address(true), error);
  if (!error) acceptor.bind(endpoint, error);
  if (!error) acceptor.listen(asio::socket_base::max_listen_connections, error);
  if (error) return "Cannot listen on " + ToString(place) + ": " + error.message() + ".";
  return {};
}

HostAndPort AddressOf(const tcp::acceptor& acceptor) {
  asio::error_code error;
  const tcp::endpoint endpoint = acceptor.local_endpoint(error);
  return {endpoint.address().to_string(), endpoint.port()};
}

}  // namespace inspector::server
