#include "server/LoginGuard.h"

#include <algorithm>

namespace inspector::server {
namespace {

constexpr int kMostDoublings = 4;
constexpr int kFailuresOfAnAddress =
    20;  // tablets of an office may share one, and one of them a wrong password
constexpr std::chrono::seconds kLongestWait{20};
constexpr std::chrono::minutes kMemory{15};
constexpr std::size_t kMostRecords = 10'000;

std::string KeyOf(const std::string& name, const std::string& address) {
  return address + '\n' + name;
}

}  // namespace

std::optional<LoginGuard::Clock::time_point> LoginGuard::Admit(const std::string& name,
                                                               const std::string& address,
                                                               Clock::time_point now) {
  const auto ofName = m_Names.find(KeyOf(name, address));
  const auto ofAddress = m_Addresses.find(address);
  const bool isSlowAddress =
      ofAddress != m_Addresses.end() && ofAddress->second.failures >= kFailuresOfAnAddress;
  Clock::time_point when = now;
  if (ofName != m_Names.end()) when = std::max(when, ofName->second.next);
  if (isSlowAddress) when = std::max(when, ofAddress->second.next);
  if (when > now + kLongestWait) return std::nullopt;

  if (ofName != m_Names.end()) {
    const int doublings = std::min(ofName->second.failures, kMostDoublings);
    ofName->second.next = when + m_FirstDelay * (1 << doublings);
  }
  if (isSlowAddress) ofAddress->second.next = when + m_FirstDelay;
  return when;
}

void LoginGuard::Failed(const std::string& name, const std::string& address, Clock::time_point now) {
  Note(m_Names, KeyOf(name, address), now);
  Note(m_Addresses, address, now);
  Record& record = m_Names[KeyOf(name, address)];
  const int doublings = std::min(record.failures - 1, kMostDoublings);
  record.next = std::max(record.next, now + m_FirstDelay * (1 << doublings));
}

void LoginGuard::Succeeded(const std::string& name, const std::string& address) {
  m_Names.erase(KeyOf(name, address));
}

void LoginGuard::Note(Records& records, const std::string& key, Clock::time_point now) {
  if (records.size() >= kMostRecords) Tidy(records, now);
  Record& record = records[key];
  if (now - record.last > kMemory) record.failures = 0;
  ++record.failures;
  record.last = now;
}

void LoginGuard::Tidy(Records& records, Clock::time_point now) {
  std::erase_if(records, [now](const auto& entry) { return now - entry.second.last > kMemory; });
  // So many at once are no mistyping: whom it lets go cannot be told apart from the others.
  if (records.size() >= kMostRecords) records.clear();
}

}  // namespace inspector::server
