// A device as the server sees it: a socket that sends one message and waits for one reply.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "protocol/Wire.h"

namespace inspector::tests {

// A device that sends what it is told and takes for a reply what one receive returns.
class Device {
public:
  explicit Device(std::uint16_t port) : m_Socket(socket(AF_INET, SOCK_STREAM, 0)) {
    const timeval patience{30, 0};
    setsockopt(m_Socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof(patience));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    m_IsConnected = connect(m_Socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
  }
  ~Device() { close(m_Socket); }
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;

  bool IsConnected() const { return m_IsConnected; }
  bool Send(std::string_view bytes) {
    return send(m_Socket, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
  }
  // Empty at the end of the connection; "(silence)" when nothing comes.
  std::string Receive() {
    std::string bytes(protocol::kBufferBytes, '\0');
    const ssize_t count = recv(m_Socket, bytes.data(), bytes.size(), 0);
    if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return "(silence)";
    bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return bytes;
  }
  std::string Say(std::string_view bytes) { return Send(bytes) ? Receive() : ""; }
  bool HasEnded() { return Receive().empty(); }
  // Ends the connection as a device out of reach does: what waits is dropped.
  void Reset() {
    const linger now{1, 0};
    setsockopt(m_Socket, SOL_SOCKET, SO_LINGER, &now, sizeof(now));
  }
  void HangUp() { shutdown(m_Socket, SHUT_WR); }

  // The reply to the password.
  std::string LogIn(const std::string& name, const std::string& password) {
    return Say("USER " + name + "\r") != "CNFM\r" ? "" : Say("PASS " + password + "\r");
  }
  // Everything that is offered, each inspection as its number and fields joined with '|', the type in
  // decimal.
  std::vector<std::string> ReceiveAll(const std::string& period) {
    std::vector<std::string> inspections;
    const auto count = protocol::CountOf(Say("RECV " + period + "\r"));
    if (!count) return {"no count"};
    for (int i = 0; i < *count; ++i) {
      std::string& inspection = inspections.emplace_back(Say("INSP\r"));
      for (const int ordinal : protocol::kReceivedOrdinals) {
        const std::string reply = Say("FELD\r");
        inspection += '|';
        if (ordinal != protocol::kTypeOrdinal) {
          inspection += reply == "\x04" ? "" : reply;
        } else if (reply.size() == 4) {
          inspection += std::to_string(protocol::Int32FromWire({reply[0], reply[1], reply[2], reply[3]}));
        }
      }
    }
    return inspections;
  }
  std::vector<std::string> ReceiveNumbers(const std::string& period) {
    std::vector<std::string> numbers = ReceiveAll(period);
    for (std::string& number : numbers) number.resize(number.find('|'));
    return numbers;
  }
  // The reply to "DONE".
  std::string SendInspection(const std::string& number, const std::string& content = "x") {
    for (std::size_t at = 0; at < protocol::kSentOrdinals.size(); ++at)
      if (Say(protocol::Terminated(at == 0 ? number : content)) != "CNFM\r") return "";
    return Say("DONE\x04");
  }

private:
  int m_Socket;
  bool m_IsConnected = false;
};

// What content `x` comes back as, from a device that has never been told a date.
inline std::string AsReceived(const std::string& number, const std::string& content, const std::string& date,
                              int type = -1) {
  std::string all = number;
  for (const int ordinal : protocol::kReceivedOrdinals) {
    const bool isType = ordinal == protocol::kTypeOrdinal;
    all += "|" + (isType ? std::to_string(type) : ordinal == protocol::kDateOrdinal ? date : content);
  }
  return all;
}

}  // namespace inspector::tests
