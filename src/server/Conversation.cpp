#include "server/Conversation.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <utility>

#include "device/CodePage.h"

namespace inspector::server {
namespace {

// What a device may announce to send. More is no device.
constexpr std::size_t kMostInspections = 1'000'000;
// A device gives up after the first; a person who tries by hand may mistype.
constexpr int kMostRefusals = 3;
constexpr std::string_view kRefused = "DENY\r";
constexpr std::string_view kQuitWord = protocol::kQuit.substr(0, protocol::kQuit.size() - 1);
constexpr std::string_view kNextInspectionWord = "INSP";
constexpr std::string_view kNextFieldWord = "FELD";
static_assert(protocol::kNextInspection.starts_with(kNextInspectionWord));
static_assert(protocol::kNextField.starts_with(kNextFieldWord));

}  // namespace

Conversation::~Conversation() {
  ForgetPassword();
}

Conversation::Want Conversation::Next() {
  if (m_Want != Want::Bytes) return m_Want;
  if (m_State == State::Closed) return m_Want = Want::Close;

  if (m_State == State::Sending) {
    // A number that begins like this would have a carriage return in it.
    const bool isBorder = m_NextText == 0;
    if (isBorder && std::string_view(m_Buffer.data(), m_Filled).starts_with(protocol::kQuit)) {
      m_State = State::Closed;
      return m_Want = Want::Close;
    }
    if (const auto value = Message(protocol::kEot)) return TakeValue(*value);
  } else if (const auto command = Message(protocol::kEndOfCommand)) {
    return Obey(*command);
  }
  if (m_Filled == m_Buffer.size()) return Fail("more bytes than a message can have");
  return Want::Bytes;
}

std::span<char> Conversation::Space() {
  return std::span(m_Buffer).subspan(m_Filled);
}

void Conversation::Received(std::size_t count) {
  m_Filled += std::min(count, m_Buffer.size() - m_Filled);
}

std::optional<std::string_view> Conversation::Message(char end) {
  const char* const begin = m_Buffer.data();
  const void* const found = std::memchr(begin + m_Searched, end, m_Filled - m_Searched);
  if (found == nullptr) {
    m_Searched = m_Filled;
    return std::nullopt;
  }
  const auto size = static_cast<std::size_t>(static_cast<const char*>(found) - begin);
  m_Message = size + 1;
  return std::string_view(begin, size);
}

void Conversation::Forget() {
  std::memmove(m_Buffer.data(), m_Buffer.data() + m_Message, m_Filled - m_Message);
  m_Filled -= m_Message;
  m_Searched = m_Message = 0;
}

void Conversation::ForgetPassword() {
  // Written over in a way that the compiler cannot leave out.
  volatile char* byte = m_Password.data();
  for (std::size_t at = 0; at < m_Password.size(); ++at) byte[at] = 0;
  m_Password.clear();
  std::fill(m_Buffer.begin() + static_cast<std::ptrdiff_t>(m_Filled), m_Buffer.end(), '\0');
}

Conversation::Want Conversation::Fail(std::string complaint) {
  m_Complaint = std::move(complaint);
  m_State = State::Closed;
  return m_Want = Want::Close;
}

Conversation::Want Conversation::Say(std::string_view reply) {
  m_Reply = reply;
  return m_Want = Want::Send;
}

Conversation::Want Conversation::Confirm() {
  return Say(protocol::kConfirmed);
}

void Conversation::Sent() {
  m_Reply = {};
  m_Want = Want::Bytes;
}

// --- commands

Conversation::Want Conversation::Obey(std::string_view command) {
  Want want = Want::Close;
  if (command == kQuitWord) {
    m_State = State::Closed;
    m_Want = Want::Close;
  } else {
    want =
        m_State == State::Stranger || m_State == State::Named ? ObeyStranger(command) : ObeyMember(command);
  }
  Forget();
  return want;
}

Conversation::Want Conversation::ObeyStranger(std::string_view command) {
  if (command.starts_with(protocol::kUser)) {
    m_Name = device::ToUtf8(device::FromCodePage(command.substr(protocol::kUser.size())));
    m_State = State::Named;
    return Confirm();  // also for a name that nobody has, so that nobody learns which there are
  }
  if (m_State == State::Named && command.starts_with(protocol::kPass)) {
    m_Password = command.substr(protocol::kPass.size());
    return Await(Want::Login);
  }
  return Fail(m_State == State::Named ? "no password after a name" : "no name at the beginning");
}

void Conversation::LoggedIn(bool isWelcome) {
  ForgetPassword();
  if (isWelcome) {
    m_State = State::Member;
    Confirm();
  } else if (++m_Refusals < kMostRefusals) {
    m_State = State::Stranger;
    Say(kRefused);
  } else {
    Fail("too many wrong passwords");
  }
}

Conversation::Want Conversation::ObeyMember(std::string_view command) {
  if (m_State == State::Receiving) {
    if (command == kNextFieldWord) return NextField();
    if (m_NextReply < m_Replies.size()) return Fail("another command where a field should be asked for");
    if (command == kNextInspectionWord) return NextInspection();
  }
  if (command.starts_with(protocol::kReceive)) {
    const auto period = protocol::PeriodOf(command.substr(protocol::kReceive.size()));
    if (!period) return Fail("a period that is none");
    m_Period = *period;
    return Await(Want::Offers);
  }
  if (command.starts_with(protocol::kSend)) return AnnounceSend(command.substr(protocol::kSend.size()));
  return Fail("a command that is none, or is not expected");
}

// --- receiving, as the device calls it

void Conversation::Offered(std::size_t count) {
  m_State = State::Receiving;
  m_ToGive = count;
  m_NextReply = m_Replies.size();
  m_OwnReply = protocol::CountReply(static_cast<int>(count));
  Say(m_OwnReply);
}

Conversation::Want Conversation::NextInspection() {
  if (m_ToGive == 0) return Fail("another inspection than those that were offered");
  return Await(Want::Inspection);
}

void Conversation::Give(InspectionReplies replies) {
  --m_ToGive;
  m_Replies = std::move(replies);
  m_NextReply = 1;
  Say(m_Replies[0]);
}

Conversation::Want Conversation::NextField() {
  if (m_NextReply == m_Replies.size()) return Fail("another field than an inspection has");
  return Say(m_Replies[m_NextReply++]);
}

// --- sending

Conversation::Want Conversation::AnnounceSend(std::string_view number) {
  std::size_t count = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), count);
  if (error != std::errc() || end != number.data() + number.size() || count > kMostInspections)
    return Fail("a count that is none");
  m_ToTake = count;
  m_NextText = 0;
  m_State = count > 0 ? State::Sending : State::Member;
  return Confirm();
}

Conversation::Want Conversation::TakeValue(std::string_view value) {
  Want want = Want::Store;
  if (m_NextText < m_Texts.size()) {
    m_Texts[m_NextText++] = device::FromCodePage(value);
    want = Confirm();
  } else if (value == protocol::kDone) {
    Await(Want::Store);
  } else {
    want = Fail("more values than an inspection has");
  }
  Forget();
  return want;
}

InspectionTexts Conversation::TakeTexts() {
  return std::exchange(m_Texts, {});
}

void Conversation::Stored() {
  m_NextText = 0;
  if (--m_ToTake == 0) m_State = State::Member;
  Confirm();
}

bool Conversation::IsAtBorder() const {
  if (m_Filled > 0 || m_Want != Want::Bytes) return m_State == State::Closed;
  if (m_State == State::Receiving) return m_NextReply == m_Replies.size();
  return m_State != State::Sending || m_NextText == 0;
}

}  // namespace inspector::server
