// The sequences of UniqueID that give keys to rows, and which of their keys are in use.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "data/Connection.h"
#include "data/TableLayout.h"

namespace inspector::data {

struct KeyUse {
  TextView table;
  TextView column;
};

struct KeySequence {
  TextView name;
  DatabaseKind kind;
  // First the rows that the keys are of, then what belongs to such a row: a new row would get it, too.
  std::span<const KeyUse> uses;
};

std::span<const KeySequence> KeySequences();
// Null for a sequence whose keys no row is looked up by.
const KeySequence* FindKeySequence(DatabaseKind kind, TextView name);

// What a sequence begins with.
std::int32_t FirstKey(DatabaseKind kind);
// Far above what anybody writes, and as far below the highest number: a counter above it has gone wrong, and
// keys above it say nothing about where to go on.
inline constexpr std::int32_t kHighestUsualKey = 1 << 30;

// The stored name of a column, quoted. Empty when the table or the column is not there.
std::string StoredName(Connection& connection, TextView table, TextView column);
// The lowest key from `first` to `last` that is in use. Nothing, too, when that could not be read, which has
// been reported. Tables that are missing use none.
std::optional<std::int32_t> FindKeyInUse(Connection& connection, const KeySequence& sequence,
                                         std::int32_t first, std::int32_t last);
// The highest usual key in use, likewise.
std::optional<std::int32_t> FindHighestKey(Connection& connection, const KeySequence& sequence);

}  // namespace inspector::data
