// What a session with the server did, for the person to read at its end.
#pragma once

#include <optional>
#include <vector>

#include "device/Text.h"

namespace inspector::exchange {

using device::Text;
using device::TextView;

struct SyncReport {
  enum class End {
    Complete,
    NoSocket,     // this device has none to give
    UnknownHost,  // the address leads nowhere
    NotReached,   // nobody answers there
    Refused,      // user name or password
    Broken,       // in the middle; what was done until then counts
    Cancelled     // by the person, likewise
  };

  End end = End::Complete;
  Text server;  // "192.168.1.10:4850"
  Text reason;  // the system's words for why it was not reached, or broke off

  bool hasAsked = false;       // for inspections
  bool isAnswered = false;     // whatever the server said to that
  std::optional<int> offered;  // that the server said it has for the period
  int added = 0;
  int updated = 0;
  int notStored = 0;  // came whole, but could not be written

  int chosen = 0;             // by the person, to be sent
  bool isAnnounced = true;    // false: the server does not want any
  int sent = 0;               // whole, and answered
  std::vector<Text> leftOut;  // why one is not among those to be sent, a sentence each
  std::vector<Text> notes;    // on what was received or sent otherwise than one might think, likewise

  int Received() const { return added + updated; }
  // Everything that was asked for is done.
  bool IsWhole() const;
};

// Sentences, one to a line: what was received and sent, what was not and why.
Text Described(const SyncReport& report);

}  // namespace inspector::exchange
