#include "server/OfficeInspection.h"

#include <algorithm>

namespace inspector::server {

const Text& OfficeInspection::OfOrdinal(int ordinal) const {
  const auto& sent = protocol::kSentOrdinals;
  return texts[static_cast<std::size_t>(std::find(sent.begin(), sent.end(), ordinal) - sent.begin())];
}

InspectionReplies RepliesOf(const OfficeInspection& inspection) {
  InspectionReplies replies;
  replies[0] = protocol::Reply(protocol::ToWire(inspection.Number()));
  for (std::size_t at = 1; at < replies.size(); ++at) {
    const int ordinal = protocol::kReceivedOrdinals[at - 1];
    if (ordinal == protocol::kTypeOrdinal) {
      const auto bytes = protocol::Int32ToWire(inspection.type);
      replies[at].assign(bytes.begin(), bytes.end());
    } else if (ordinal == protocol::kDateOrdinal) {
      replies[at] = protocol::Reply(protocol::DateToWire(inspection.day));
    } else {
      replies[at] = protocol::Reply(protocol::ToWire(inspection.OfOrdinal(ordinal)));
    }
  }
  return replies;
}

}  // namespace inspector::server
