// Slows down whoever tries passwords.
#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>

namespace inspector::server {

// After a wrong password the next attempt with that name from that address waits, twice as long each time. An
// address from which many came waits whatever the name. Attempts queue up, so that many at once are no way
// around it; other addresses are not hindered, so that nobody can lock a colleague out.
class LoginGuard {
public:
  using Clock = std::chrono::steady_clock;

  explicit LoginGuard(std::chrono::milliseconds firstDelay) : m_FirstDelay(firstDelay) {}

  // When an attempt may go on; nothing when too many wait already, and it is to be refused.
  std::optional<Clock::time_point> Admit(const std::string& name, const std::string& address,
                                         Clock::time_point now);
  void Failed(const std::string& name, const std::string& address, Clock::time_point now);
  void Succeeded(const std::string& name, const std::string& address);

private:
  struct Record {
    int failures = 0;
    Clock::time_point last{};  // failure
    Clock::time_point next{};  // attempt that is allowed
  };
  using Records = std::map<std::string, Record>;

  static void Note(Records& records, const std::string& key, Clock::time_point now);
  static void Tidy(Records& records, Clock::time_point now);

  std::chrono::milliseconds m_FirstDelay;
  Records m_Names;  // by address and name
  Records m_Addresses;
};

}  // namespace inspector::server
