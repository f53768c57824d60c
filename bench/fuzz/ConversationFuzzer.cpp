// Any bytes as what a device sends. The first byte says in how large pieces they arrive, the second what the
// office answers.
#include <algorithm>
#include <string>
#include <string_view>

#include "Fuzzer.h"
#include "server/Conversation.h"

namespace inspector::fuzz {
namespace {

using server::Conversation;

struct Course {
  std::string told;  // every reply and errand
  std::size_t replies = 0;
  bool hasClosed = false;
};

void Settle(Conversation& conversation, unsigned answers, Course& course) {
  for (;;) {
    const Conversation::Want want = conversation.Next();
    Expect(conversation.Next() == want, "it wants the same until it is done");
    switch (want) {
      case Conversation::Want::Bytes:
        Expect(!conversation.Space().empty(), "there is room for the bytes that it wants");
        return;
      case Conversation::Want::Send: {
        const std::string_view reply = conversation.Reply();
        Expect(!reply.empty() && reply.size() <= protocol::kBufferBytes, "a reply is what one receive takes");
        course.told += "[" + std::string(reply) + "]";
        ++course.replies;
        conversation.Sent();
        break;
      }
      case Conversation::Want::Login:
        course.told += "login " + conversation.Name() + "/" + conversation.Password();
        conversation.LoggedIn((answers & 1) == 0);
        Expect(conversation.Password().empty(), "a password is forgotten");
        break;
      case Conversation::Want::Offers:
        course.told += "offers ";
        conversation.Offered(answers >> 1 & 7);
        break;
      case Conversation::Want::Inspection: {
        server::OfficeInspection inspection;
        inspection.texts[0] = u"7";
        inspection.texts[5].assign((answers & 16) != 0 ? protocol::kMaxValueBytes : 3, u'g');
        conversation.Give(server::RepliesOf(inspection));
        break;
      }
      case Conversation::Want::Store:
        for (const server::Text& text : conversation.TakeTexts()) {
          Expect(text.size() <= protocol::kMaxValueBytes, "a value fits into a message");
          Expect(text.find(static_cast<char16_t>(protocol::kEot)) == text.npos, "a value ends at its EOT");
          course.told += device::ToUtf8(text) + "|";
        }
        conversation.Stored();
        break;
      case Conversation::Want::Close:
        course.told += "closed " + conversation.Complaint();
        course.hasClosed = true;
        return;
    }
  }
}

Course Run(std::string_view bytes, std::size_t piece, unsigned answers) {
  Course course;
  Conversation conversation;
  for (Settle(conversation, answers, course); !course.hasClosed && !bytes.empty();
       Settle(conversation, answers, course)) {
    const std::span<char> space = conversation.Space();
    const std::size_t count = std::min({bytes.size(), piece, space.size()});
    std::copy_n(bytes.begin(), count, space.begin());
    conversation.Received(count);
    bytes.remove_prefix(count);
  }
  return course;
}

}  // namespace
}  // namespace inspector::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  using namespace inspector;
  if (size < 2) return 0;
  const std::string_view sent(reinterpret_cast<const char*>(bytes) + 2, size - 2);
  const fuzz::Course course = fuzz::Run(sent, 1u + bytes[0], bytes[1]);
  const auto ends = std::count_if(sent.begin(), sent.end(),
                                  [](char c) { return c == protocol::kEndOfCommand || c == protocol::kEot; });
  fuzz::Expect(course.replies <= static_cast<std::size_t>(ends), "no reply comes before its command");
  fuzz::Expect(fuzz::Run(sent, protocol::kBufferBytes, bytes[1]).told == course.told,
               "pieces make no difference");
  return 0;
}
