// The office's end of a connection, on a real socket: answers message after message with what it was given.
#pragma once

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace inspector::tests {

// Takes one connection. A message ends in a carriage return or an EOT; each gets the next reply in one send.
// After the last reply it hears what else comes, or closes at once.
class ScriptedServer {
public:
  enum class End { Hear, Close };

  explicit ScriptedServer(std::vector<std::string> replies, End end = End::Hear)
      : m_Replies(std::move(replies)), m_End(end), m_Listener(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    EXPECT_EQ(bind(m_Listener, reinterpret_cast<sockaddr*>(&address), size), 0);
    EXPECT_EQ(listen(m_Listener, 1), 0);
    EXPECT_EQ(getsockname(m_Listener, reinterpret_cast<sockaddr*>(&address), &size), 0);
    m_Port = ntohs(address.sin_port);
    m_Thread = std::thread([this] { Serve(); });
  }
  ~ScriptedServer() { Heard(); }
  ScriptedServer(const ScriptedServer&) = delete;
  ScriptedServer& operator=(const ScriptedServer&) = delete;

  int Port() const { return m_Port; }
  // Called on the server's thread after so many messages were heard, before the reply.
  void AtMessage(std::size_t count, std::function<void()> call) {
    m_CallAt = count;
    m_Call = std::move(call);
  }
  // Ends the connection. Everything that came: "\r" as it is written in C, EOT as ".".
  const std::string& Heard() {
    if (m_Thread.joinable()) {
      shutdown(m_Listener, SHUT_RDWR);  // nobody may have come
      m_Thread.join();
      close(m_Listener);
    }
    return m_Heard;
  }

private:
  static constexpr char kEot = 4;

  void Serve() {
    const int peer = accept(m_Listener, nullptr, nullptr);
    if (peer < 0) return;
    std::size_t count = 0;
    bool isOpen = count < m_Replies.size() || m_End == End::Hear;
    for (char byte = 0; isOpen && recv(peer, &byte, 1, 0) == 1;) {
      m_Heard += byte == '\r' ? "\\r" : byte == kEot ? "." : std::string(1, byte);
      if (byte != '\r' && byte != kEot) continue;
      m_Heard += '\n';
      ++count;
      if (m_Call && count == m_CallAt) m_Call();
      if (count <= m_Replies.size()) {
        const std::string& reply = m_Replies[count - 1];
        send(peer, reply.data(), reply.size(), MSG_NOSIGNAL);
      }
      isOpen = count < m_Replies.size() || m_End == End::Hear;
    }
    close(peer);
  }

  const std::vector<std::string> m_Replies;
  const End m_End;
  const int m_Listener;
  int m_Port = 0;
  std::size_t m_CallAt = 0;
  std::function<void()> m_Call;
  std::string m_Heard;
  std::thread m_Thread;
};

}  // namespace inspector::tests
