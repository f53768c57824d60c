// Conditions and column names of a parsed statement.
#pragma once

#include <vector>

#include "device/Text.h"

namespace inspector::data {

using device::TextView;

struct SqlExpression {
  enum class Kind { And, Or, Not, Comparison, Column, Value, True, False, Nothing };
  Kind kind = Kind::Nothing;
  TextView table;         // of a column, where it is named
  TextView name;          // of a column; the symbol of a comparison
  std::size_t value = 0;  // index of a value
  std::vector<SqlExpression> operands;
};

}  // namespace inspector::data
