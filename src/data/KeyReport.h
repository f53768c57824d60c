// What is wrong with the keys of a database and with the counters that new ones come from, and how the
// counters are set right.
#pragma once

#include <optional>
#include <vector>

#include "data/Databases.h"
#include "data/TableLayout.h"

namespace inspector::data {

// One line for a person each: keys of inspections, categories and steps that stand in several rows, counters
// that are no whole numbers, and counters below the highest key of their table, from which a new row would
// get a key that is taken. Tables that are missing are passed over, and nothing is altered.
std::vector<Text> FindKeyFaults(Connection& connection, DatabaseKind kind);

// Rows of the Inspection database whose inspection or category is gone, so that nothing shows them: a line
// for each table that has some. Not a fault: everything else works as if they were not there, but that their
// keys are taken.
std::vector<Text> FindOrphans(Connection& connection);

// Only those of the counters, in both databases. What cannot be read is reported and has none.
std::vector<Text> FindCounterFaults(Databases& databases);

// Sets each wrong counter to the highest key that is in use, at least to the one before the first. What was
// set, one line each; nothing when it failed, which has been reported: then no counter was changed.
std::optional<std::vector<Text>> RepairCounters(Connection& connection, DatabaseKind kind);
// In both databases; false when it failed in one of them.
bool RepairCounters(Databases& databases);

}  // namespace inspector::data
