// What all sessions of a server share.
#pragma once

#include <asio/io_context.hpp>
#include <asio/thread_pool.hpp>
#include <cstdint>

#include "server/LoginGuard.h"
#include "server/ServerLog.h"
#include "server/Settings.h"
#include "server/StorageDesk.h"

namespace inspector::server {

// Since the start.
struct Counters {
  std::int64_t sessions = 0;
  std::int64_t refusedSessions = 0;  // by the limits
  std::int64_t logins = 0;
  std::int64_t wrongPasswords = 0;
  std::int64_t received = 0;  // inspections, by devices
  std::int64_t sent = 0;      // inspections, by devices, and stored
  std::int64_t complaints = 0;
  std::int64_t faults = 0;
};

struct SessionHost {
  asio::io_context& io;
  const Settings& settings;
  device::Clock& clock;
  ServerLog& log;
  StorageDesk& desk;
  LoginGuard& guard;
  // As many hashes are computed at once as it has threads.
  asio::thread_pool& hashing;
  // Of a password that nobody has: a name that nobody has costs what a wrong password does.
  const std::string& strangerHash;
  Counters& counters;
};

}  // namespace inspector::server
