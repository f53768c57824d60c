#include "exchange/SyncReport.h"

#include <algorithm>

#include "device/Format.h"

namespace inspector::exchange {
namespace {

using device::Format;

// The same is to be said of many, if of one.
constexpr std::size_t kMostNotes = 20;

Text Counted(int count, TextView one, TextView many) {
  return count == 1 ? Text(one) : Format(many, count);
}

Text HowItEnded(const SyncReport& report) {
  const Text why = report.reason.empty() ? Text() : Format(u" (%s)", report.reason);
  switch (report.end) {
    case SyncReport::End::Complete:
      return {};
    case SyncReport::End::NoSocket:
      return Format(u"This device could not open a connection%s. Try again.", why);
    case SyncReport::End::UnknownHost:
      return Format(u"The server %s was not found%s. Check its address in the options, and the network.",
                    report.server, why);
    case SyncReport::End::NotReached:
      return Format(
          u"The server %s could not be reached%s. Check its address and port in the options, and the "
          u"network.",
          report.server, why);
    case SyncReport::End::Refused:
      return Format(u"The server %s does not know this user name and password. Check both in the options.",
                    report.server);
    case SyncReport::End::Broken:
      return Format(
          u"The connection to the server %s broke off%s. What is counted here is done; synchronise "
          u"again for the rest.",
          report.server, why);
    case SyncReport::End::Cancelled:
      return u"Stopped before the end. What is counted here is done; synchronise again for the rest.";
  }
  return {};
}

Text Received(const SyncReport& report) {
  if (!report.hasAsked) return {};
  if (!report.isAnswered) return u"No inspections were received.";
  if (!report.offered) return u"The server did not say which inspections it has; none were received.";
  if (*report.offered <= 0) return u"The server has no inspections for this period.";
  const int came = report.Received() + report.notStored;
  if (came == 0) return Format(u"No inspections were received. The server has %d.", *report.offered);
  Text text;
  if (report.Received() > 0) {
    text = Counted(report.Received(), u"1 inspection was received", u"%d inspections were received") +
           Format(u": %d new, %d already on this device.", report.added, report.updated);
    if (report.notStored > 0)
      text += u" " + Counted(report.notStored, u"1 more came but could not be stored.",
                             u"%d more came but could not be stored.");
  } else {
    text = Counted(report.notStored, u"1 inspection came but could not be stored.",
                   u"%d inspections came but could not be stored.");
  }
  if (came < *report.offered) text += Format(u" The server has %d.", *report.offered);
  return text;
}

Text Sent(const SyncReport& report) {
  if (report.chosen == 0) return {};
  if (!report.isAnnounced) return u"The server does not take inspections now; none were sent.";
  Text text = Counted(report.sent, u"1 inspection was sent", u"%d inspections were sent");
  return text + (report.sent < report.chosen ? Format(u" of %d chosen.", report.chosen) : Text(u"."));
}

void AddLine(Text& text, const Text& line) {
  if (line.empty()) return;
  if (!text.empty()) text += u'\n';
  text += line;
}

}  // namespace

bool SyncReport::IsWhole() const {
  return end == End::Complete && (!hasAsked || offered) && isAnnounced && notStored == 0 && leftOut.empty();
}

Text Described(const SyncReport& report) {
  using End = SyncReport::End;
  Text text = HowItEnded(report);
  if (report.end == End::Complete || report.end == End::Broken || report.end == End::Cancelled) {
    AddLine(text, Received(report));
    AddLine(text, Sent(report));
  }
  for (const Text& why : report.leftOut) AddLine(text, why);
  for (std::size_t n = 0; n < std::min(report.notes.size(), kMostNotes); ++n) AddLine(text, report.notes[n]);
  if (report.notes.size() > kMostNotes)
    AddLine(text, Format(u"There are %d more remarks like these.",
                         static_cast<int>(report.notes.size() - kMostNotes)));
  if (text.empty()) text = u"Nothing was to be received or sent.";
  return text;
}

}  // namespace inspector::exchange
