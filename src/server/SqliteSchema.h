// The structure of the server's file, version by version.
#pragma once

#include "server/SqliteFile.h"
#include "server/Storage.h"

namespace inspector::server {

// Brings an open file to the structure of this program in one transaction. A file of a later program is a
// fault, and left as it is.
Fault BringUpToDate(SqliteFile& file);

}  // namespace inspector::server
