// New database files, with every table under the names that statements use.
#pragma once

#include "data/Connection.h"
#include "data/TableLayout.h"
#include "device/Machine.h"

namespace inspector::data {

// Creates the file whole or not at all: built under another name beside it, synced, renamed. Never replaces
// one. Returns why not, or an empty text.
Text CreateFreshDatabase(const std::filesystem::path& file, DatabaseKind kind, device::FaultLog& faults);

// Non-unique indexes on the columns that statements look rows up by; those that are there stay.
bool CreateIndexes(Connection& connection, DatabaseKind kind);

// Creates one of the program's tables under full names, with its indexes; nothing when it is there.
// Recordsets do it for a staging table when it is first used.
bool CreateIfMissing(Connection& connection, TextView table);

}  // namespace inspector::data
