// What is wrong with a database's structure, without altering it.
#pragma once

#include <vector>

#include "data/Connection.h"
#include "data/TableLayout.h"

namespace inspector::data {

// Missing tables and columns, one line each, for a person. Staging tables are made when they are first used
// and may be missing.
std::vector<Text> FindMissingStructure(Connection& connection, DatabaseKind kind);

// Of a file that has tables of the other database, and none of its own; else empty.
Text DescribeOtherKind(Connection& connection, DatabaseKind kind);

// A column that is missing between others, so that those behind it would be read and written one place off:
// told by the names, where a table has the program's own. "Step.Reserve8"; empty when there is none.
Text FindGap(Connection& connection, DatabaseKind kind);

// What FindMissingStructure finds, and columns of another type than declared.
std::vector<Text> FindStructureFaults(Connection& connection, DatabaseKind kind);

// The structure version is not today's, or there is no row that holds one. For the Template database.
std::vector<Text> FindVersionFaults(Connection& connection);

// No row in any table that a library fills. Options and key counters are not looked at.
bool IsEmptyLibrary(Connection& connection);

}  // namespace inspector::data
