// A conversation on its socket: reads and writes for it, runs its errands, keeps its time.
#pragma once

#include <asio/ip/tcp.hpp>
#include <asio/steady_timer.hpp>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "server/Conversation.h"
#include "server/SessionHost.h"

namespace inspector::server {

// All of it runs on the thread of the host's io_context. Lives until its socket is closed and what it asked
// for has been answered.
class Session : public std::enable_shared_from_this<Session> {
public:
  using Clock = std::chrono::steady_clock;

  // `address` is the device's, without its port. `ended` is called once.
  Session(asio::ip::tcp::socket socket, std::string address, SessionHost& host, std::function<void()> ended);

  void Start() { Drive(); }
  // Called now and then: ends a session that has been silent, or has lasted, too long.
  void CheckTime(Clock::time_point now);
  // Ends it as soon as no inspection is under way.
  void Stop();
  // Ends it at once.
  void Break(const char* why) { End(why); }

  const std::string& Address() const { return m_Address; }

private:
  // Does what the conversation wants until it has to wait.
  void Drive();
  bool SendReply();  // true when it went out at once
  void Read();
  void LogIn();
  void CheckPassword(std::optional<User> user);
  void FinishLogin(const std::optional<User>& user, bool isPassword);
  void FindOffer();
  bool GiveNext();  // true when the next inspection had been read already
  void Store();
  void Fail(const Fault& fault);
  void End(const std::string& why);

  asio::ip::tcp::socket m_Socket;
  std::string m_Address;
  SessionHost& m_Host;
  std::function<void()> m_Ended;
  Conversation m_Conversation;
  Offer m_Offer;
  std::string m_User;
  std::string m_Office;
  std::unique_ptr<asio::steady_timer> m_LoginTimer;
  Clock::time_point m_Begin = Clock::now();
  std::optional<Clock::time_point> m_Silent;  // since then it is the device's turn
  int m_Received = 0;
  int m_Sent = 0;
  bool m_IsStopping = false;
  bool m_HasEnded = false;
};

}  // namespace inspector::server
