// Opening a socket that listens, for sessions and for the status page.
#pragma once

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <string>

#include "server/Settings.h"

namespace inspector::server {

// Why it cannot listen there, for a person; empty when it does. With `localOnly` it refuses an address that
// other machines reach.
std::string OpenAcceptor(asio::ip::tcp::acceptor& acceptor, asio::io_context& io, const HostAndPort& place,
                         bool localOnly);
HostAndPort AddressOf(const asio::ip::tcp::acceptor& acceptor);

}  // namespace inspector::server
