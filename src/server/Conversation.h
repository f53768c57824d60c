// One session with a device as a state machine: bytes in, replies out, and errands for whoever has passwords
// and a storage. It knows no sockets, no threads and no time.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "server/OfficeInspection.h"

namespace inspector::server {

// Whoever drives it calls Next and does what it wants, again and again:
//
//   Bytes       put bytes into Space(), tell Received(count)
//   Send        send Reply() in one piece, tell Sent()
//   Login       look at Name() and Password(), tell LoggedIn(...)
//   Offers      find what AskedPeriod() offers, tell Offered(count)
//   Inspection  tell Give(...) the next one that was offered
//   Store       make TakeTexts() durable, tell Stored(). Without that there is no reply: close.
//   Close       end the session; Complaint() says why, and is empty when the device has quit
//
// Whatever the device sends, no more than one message of it is kept (protocol::kBufferBytes) beside one
// inspection on its way out and one on its way in. Messages may arrive in any pieces.
class Conversation {
public:
  enum class Want { Bytes, Send, Login, Offers, Inspection, Store, Close };

  ~Conversation();

  // Stays the same until it is done.
  Want Next();

  // Never empty when bytes are wanted.
  std::span<char> Space();
  void Received(std::size_t count);

  std::string_view Reply() const { return m_Reply; }
  void Sent();

  const std::string& Name() const { return m_Name; }          // UTF-8
  const std::string& Password() const { return m_Password; }  // as it came
  void LoggedIn(bool isWelcome);

  protocol::Period AskedPeriod() const { return m_Period; }
  void Offered(std::size_t count);
  void Give(InspectionReplies replies);

  InspectionTexts TakeTexts();
  void Stored();

  const std::string& Complaint() const { return m_Complaint; }

  // Nothing is under way that the device would have to begin again: between two commands that are no part of
  // an inspection.
  bool IsAtBorder() const;

private:
  enum class State {
    Stranger,   // USER is expected
    Named,      // PASS
    Member,     // RECV, SEND
    Receiving,  // INSP and FELD, until what was offered has been asked for
    Sending,    // values, until what was announced has come
    Closed
  };

  Want Fail(std::string complaint);
  Want Confirm();
  Want Say(std::string_view reply);
  Want Await(Want errand) { return m_Want = errand; }
  // The bytes up to `end`, which may be longer than one unit; nothing while they have not come.
  std::optional<std::string_view> Message(char end);
  void Forget();  // the message that was looked at last
  void ForgetPassword();

  Want Obey(std::string_view command);
  Want ObeyStranger(std::string_view command);
  Want ObeyMember(std::string_view command);
  Want AnnounceSend(std::string_view number);
  Want NextInspection();
  Want NextField();
  Want TakeValue(std::string_view value);

  State m_State = State::Stranger;
  Want m_Want = Want::Bytes;

  std::array<char, protocol::kBufferBytes> m_Buffer{};
  std::size_t m_Filled = 0;
  std::size_t m_Searched = 0;  // of m_Filled, without an end of a message
  std::size_t m_Message = 0;   // bytes of the message being obeyed, with its end

  std::string_view m_Reply;
  std::string m_OwnReply;
  std::string m_Name;
  std::string m_Password;
  int m_Refusals = 0;
  protocol::Period m_Period = protocol::Period::Today;
  std::size_t m_ToGive = 0;  // inspections offered and not asked for
  InspectionReplies m_Replies;
  std::size_t m_NextReply = 1;  // into m_Replies; past their end when no inspection is under way
  std::size_t m_ToTake = 0;     // inspections announced and not stored
  InspectionTexts m_Texts;
  std::size_t m_NextText = 0;
  std::string m_Complaint;
};

}  // namespace inspector::server
