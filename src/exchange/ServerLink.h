// One connection to the office's server: bytes one way and the other, for somebody who waits for them.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace inspector::exchange {

// Whoever calls waits, but not blindly: `givesUp` is asked several times a second meanwhile, so that a window
// can be painted and a person can stop; true ends the wait. There is no other limit of time, because an
// office may be at the end of a slow line.
class ServerLink {
public:
  explicit ServerLink(std::function<bool()> givesUp);
  ~ServerLink();
  ServerLink(const ServerLink&) = delete;
  ServerLink& operator=(const ServerLink&) = delete;

  enum class Attempt { Connected, NoSocket, UnknownHost, NotReached };
  // `host`: a dotted address or a name, of which the first address counts. IPv4 only.
  Attempt Connect(const std::string& host, std::uint16_t port);
  // All of it, in one call where the system takes it. False when the connection is broken or was given up.
  bool Send(std::string_view bytes);
  // What one receive call returns, at most `most` bytes. Nothing when the other end has closed, the
  // connection is broken or was given up.
  std::optional<std::string> Receive(std::size_t most);
  // Whether Receive would return at once, after so long a wait at most. Not so when it was given up.
  bool HasMore(std::chrono::milliseconds within);
  // So that no further call waits. Also done at the end.
  void Close();

  // Why the last call failed, in the system's words.
  const std::string& Error() const { return m_Error; }

private:
  struct Socket;

  bool Wait(const std::function<bool()>& isOver, std::optional<std::chrono::milliseconds> most = {});

  std::function<bool()> m_GivesUp;
  std::unique_ptr<Socket> m_Socket;
  std::string m_Error;
};

}  // namespace inspector::exchange
