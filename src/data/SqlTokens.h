// A statement of the program cut into words, with its values taken out.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "device/Text.h"

namespace inspector::data {

using device::Text;
using device::TextView;

// Numbers and quoted texts leave the statement and are bound when it runs, so statements that differ only
// in their values share one prepared statement. Texts are UTF-8 here.
using SqlValue = std::variant<std::int64_t, double, std::string>;

struct SqlToken {
  enum class Kind { Word, Symbol, Value, End };
  Kind kind = Kind::End;
  TextView text;          // of a word or a symbol, as it stands in the statement
  std::size_t value = 0;  // index into SqlTokens::values
};

struct SqlTokens {
  std::vector<SqlToken> tokens;  // ends with one of kind End
  std::vector<SqlValue> values;
  // Equal for statements that differ only in their values. Whether a value is a number, a text or an empty
  // text is part of it, because those are translated differently.
  std::string shape;
};

// A double-quoted run is a text value, "" in it being one double quote; so is a single-quoted one, with ''.
// Nothing when a quote is not closed. The tokens point into `statement`.
std::optional<SqlTokens> Tokenise(TextView statement);

}  // namespace inspector::data
