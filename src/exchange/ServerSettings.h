// Where the office's server is and who logs in: the part of the options that the protocol has.
#pragma once

#include "data/Workspace.h"

namespace inspector::exchange {

using device::Text;
using device::TextView;

inline constexpr int kMostAddressLetters = 80;
inline constexpr int kMostPasswordLetters = 16;
inline constexpr int kLowestPort = 10;
inline constexpr int kHighestPort = 10000;

struct ServerSettings {
  Text address;  // dotted, or a name
  Text port;     // as typed
  Text userName;
  Text password;
};

// Digits that give a port which the protocol may use.
bool IsServerPort(const Text& typed);
ServerSettings ReadServerSettings(data::Workspace& workspace);
// What keeps a name and a password from reaching the server as they are; empty when nothing.
Text WhyNotSent(TextView userName, TextView password);
// What a person must correct before they can be written; empty when nothing.
Text WhyNot(const ServerSettings& settings);
// Into the row of the options. False when it could not be written, which has been reported; the options are
// then as before.
bool WriteServerSettings(data::Workspace& workspace, const ServerSettings& settings);

}  // namespace inspector::exchange
