// Reads the tokens of a SELECT or DELETE into their parts.
#pragma once

#include <optional>
#include <vector>

#include "data/SqlExpression.h"
#include "data/SqlTokens.h"

namespace inspector::data {

struct SqlStatement {
  enum class Kind { Select, Delete };
  Kind kind = Kind::Select;
  TextView selected;                 // the table whose columns are asked for
  std::vector<TextView> tables;      // in the order of the FROM clause, brackets removed
  std::vector<SqlExpression> joins;  // the ON conditions
  std::optional<SqlExpression> where;
  std::vector<SqlExpression> order;
};

// Nothing when the statement is not of this kind.
std::optional<SqlStatement> ParseSql(const SqlTokens& tokens);

// CREATE TABLE and ALTER TABLE.
bool IsDefinition(const SqlTokens& tokens);

}  // namespace inspector::data
