// The command that runs the server until it is told to stop.
#pragma once

#include "server/OfficeCommands.h"
#include "server/Settings.h"

namespace inspector::server {

ExitCode Serve(const Settings& settings, std::ostream& err);

}  // namespace inspector::server
