#include "server/Conversation.h"

#include <gtest/gtest.h>

#include "device/CodePage.h"
#include "support/TestSupport.h"

namespace inspector::server {
namespace {

using namespace std::string_literals;
using Want = Conversation::Want;

// Plays both the socket and the office for a conversation, and writes down what happens: replies in brackets,
// errands in words.
class Play {
public:
  // Gives it pieces of these sizes, the last one again and again.
  std::string Of(std::string_view bytes, std::vector<std::size_t> pieces = {protocol::kBufferBytes}) {
    for (std::size_t piece = 0;; piece = std::min(piece + 1, pieces.size() - 1)) {
      Settle();
      if (m_HasClosed || bytes.empty()) return m_Told;
      const std::size_t count = std::min({bytes.size(), pieces[piece], m_Conversation.Space().size()});
      EXPECT_GT(count, 0u);
      std::copy_n(bytes.begin(), count, m_Conversation.Space().begin());
      m_Conversation.Received(count);
      bytes.remove_prefix(count);
    }
  }
  bool IsAtBorder() const { return m_Conversation.IsAtBorder(); }

private:
  void Settle() {
    for (;;) {
      switch (m_Conversation.Next()) {
        case Want::Bytes:
          return;
        case Want::Send:
          Tell("[" + std::string(m_Conversation.Reply()) + "]");
          m_Conversation.Sent();
          break;
        case Want::Login:
          Tell("login " + m_Conversation.Name() + "/" + m_Conversation.Password() + " ");
          m_Conversation.LoggedIn(m_Conversation.Password() == "secret");
          break;
        case Want::Offers:
          Tell("offers ");
          m_Conversation.Offered(1);
          break;
        case Want::Inspection:
          m_Conversation.Give(
              RepliesOf({{u"7", u"12 Elm Street", u"Zo\u00EB"}, device::MakeCalendarTime(2026, 5, 31), 3}));
          break;
        case Want::Store:
          Tell("store ");
          for (const Text& text : m_Conversation.TakeTexts()) Tell(ToUtf8(text) + "|");
          m_Conversation.Stored();
          break;
        case Want::Close:
          Tell("closed" + (m_Conversation.Complaint().empty() ? "" : ": " + m_Conversation.Complaint()));
          m_HasClosed = true;
          return;
      }
    }
  }
  void Tell(const std::string& what) { m_Told += what; }

  Conversation m_Conversation;
  std::string m_Told;
  bool m_HasClosed = false;
};

const std::string kLogin = "USER ana\rPASS secret\r";
const std::string kLoginTold = "[CNFM\r]login ana/secret [CNFM\r]";

std::string Fields(int count) {
  std::string commands;
  for (int i = 0; i < count; ++i) commands += "FELD\r";
  return commands;
}

// One after the other as a device sends them, and what comes of it.
const std::string kSession = kLogin + "RECV week\rINSP\r" + Fields(12) +
                             "SEND 2\r"
                             "DONE\x04"
                             "12 Elm\x04"
                             "\x04\x04\x04"
                             "SEND 9\r\x04\x04\x04\x04\x04"
                             "CNFM\x04"
                             "DONE\x04"
                             "8\x04\x04\x04\x04\x04\x04\x04\x04\x04\x04\x04"
                             "DONE\x04"
                             "QUIT\r";
const std::string kNine = "[CNFM\r][CNFM\r][CNFM\r][CNFM\r][CNFM\r][CNFM\r][CNFM\r][CNFM\r][CNFM\r]";
const std::string kSessionTold =
    kLoginTold + "offers [CONT 1\r][7][12 Elm Street][Zo\xEB][\x04][\x04][\x04][\x04][\x04][\x04][\x04][" +
    "\x03\0\0\0"s + "][\x04][5/31/2026][CNFM\r]" + kNine +
    "[CNFM\r][CNFM\r]store DONE|12 Elm||||SEND 9\r|||||CNFM|[CNFM\r]" + kNine +
    "[CNFM\r][CNFM\r]store 8|||||||||||[CNFM\r]closed";

TEST(ConversationTest, BytesMayArriveInAnyPieces) {
  EXPECT_EQ(Play().Of(kSession), kSessionTold) << "at once";
  EXPECT_EQ(Play().Of(kSession, {1}), kSessionTold) << "byte by byte";
  for (std::size_t cut = 1; cut < kSession.size(); ++cut)
    ASSERT_EQ(Play().Of(kSession, {cut, protocol::kBufferBytes}), kSessionTold) << cut;
}

TEST(ConversationTest, QuitEndsItBetweenInspections) {
  for (const std::string& before : {""s, "USER ana\r"s, kLogin, kLogin + "RECV all\r",
                                    kLogin + "RECV all\rINSP\r" + Fields(3), kLogin + "SEND 2\r"})
    EXPECT_THAT(Play().Of(before + "QUIT\r"), EndsWith("closed")) << before;
  EXPECT_THAT(Play().Of(kLogin + "SEND 1\r7\x04QUIT\r"), EndsWith("[CNFM\r]"))
      << "that is the beginning of a value";
  Play play;
  for (const auto& [bytes, isBorder] : {std::pair{""s, true},
                                        {kLogin, true},
                                        {"RECV all\r"s, true},
                                        {"INSP\r"s, false},
                                        {Fields(12), true},
                                        {"SEND 2\r"s, true},
                                        {"7\x04"s, false}}) {
    play.Of(bytes);
    EXPECT_EQ(play.IsAtBorder(), isBorder) << bytes;
  }
}

TEST(ConversationTest, WhatNoDeviceSendsClosesIt) {
  const std::string long2048(protocol::kBufferBytes, 'x');
  const std::string values = "1\x04\x04\x04\x04\x04\x04\x04\x04\x04\x04\x04";
  const std::pair<std::string, std::string> cases[] = {
      {"", "PASS secret\r"},
      {"", "RECV all\r"},
      {"", "GET / HTTP/1.1\r"},
      {"", "\r"},
      {"", long2048},
      {"", "SEND 1\r"},
      {"USER ana\r", "RECV all\r"},
      {"USER ana\r", "pass secret\r"},
      {kLogin, "USER ana\r"},
      {kLogin, "RECV tomorrow\r"},
      {kLogin, "RECV \r"},
      {kLogin, "INSP\r"},
      {kLogin, "FELD\r"},
      {kLogin, "SEND\r"},
      {kLogin, "SEND -1\r"},
      {kLogin, "SEND 1x\r"},
      {kLogin, "SEND 1000001\r"},
      {kLogin, "SEND 99999999999999999999\r"},
      {kLogin, "DONE\x04\r"},
      {kLogin, long2048},
      {kLogin + "RECV all\r", "FELD\r"},
      {kLogin + "RECV all\rINSP\r", "INSP\r"},
      {kLogin + "RECV all\rINSP\r", "SEND 1\r"},
      {kLogin + "RECV all\rINSP\r" + Fields(12), "FELD\r"},
      {kLogin + "RECV all\rINSP\r" + Fields(12), "INSP\r"},
      {kLogin + "SEND 1\r", long2048},
      {kLogin + "SEND 1\r" + values, "\x04"},
      {kLogin + "SEND 1\r" + values, "QUIT\r\x04"},
      {kLogin + "SEND 1\r" + values, "done\x04"},
  };
  for (const auto& [before, hostile] : cases) {
    const std::string sound = Play().Of(before);
    const std::string told = Play().Of(before + hostile);
    EXPECT_THAT(sound, Not(HasSubstr("closed"))) << before;
    EXPECT_THAT(told, StartsWith(sound + "closed: ")) << hostile;
    EXPECT_THAT(told, Not(HasSubstr("store"))) << hostile;
  }
}

TEST(ConversationTest, ValuesMayFillTheBufferAndHoldAnyOtherByte) {
  std::string longest(protocol::kMaxValueBytes, 'x');
  for (int byte = 0; byte < 256; ++byte)
    if (byte != protocol::kEot) longest[static_cast<std::size_t>(byte)] = static_cast<char>(byte);
  std::string values = "1\x04";
  for (int i = 0; i < 10; ++i) values += protocol::Terminated(longest);
  const std::string told = Play().Of(kLogin + "SEND 1\r" + values + "DONE\x04");
  EXPECT_THAT(told, EndsWith(ToUtf8(device::FromCodePage(longest)) + "|[CNFM\r]"));
  EXPECT_THAT(Play().Of(kLogin + "SEND 1\r" + longest + "xx"), EndsWith("can have"));
}

TEST(ConversationTest, ThirdWrongPasswordEndsIt) {
  const std::string wrong = "USER ana\rPASS x\r";
  EXPECT_THAT(Play().Of(wrong + kLogin), EndsWith("[DENY\r]" + kLoginTold));
  EXPECT_THAT(Play().Of(wrong + "RECV all\r"), EndsWith("closed: no name at the beginning"));
  EXPECT_THAT(Play().Of(wrong + wrong + wrong + kLogin),
              EndsWith("login ana/x closed: too many wrong passwords"));
}

}  // namespace
}  // namespace inspector::server
