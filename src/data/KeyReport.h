// What is wrong with the keys of a database and with the counters that new ones come from, without altering
// it.
#pragma once

#include <vector>

#include "data/Connection.h"
#include "data/TableLayout.h"

namespace inspector::data {

// One line for a person each: keys of inspections, categories and steps that stand in several rows, counters
// that are no whole numbers, and counters below the highest key of their table, from which a new row would
// get a key that is taken. Tables that are missing are passed over.
std::vector<Text> FindKeyFaults(Connection& connection, DatabaseKind kind);

}  // namespace inspector::data
