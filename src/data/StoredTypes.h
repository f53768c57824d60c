// Which stored field types serve a column of the program.
#pragma once

#include "data/SqlDialect.h"
#include "data/TableLayout.h"

namespace inspector::data {

inline bool Accepts(ValueType type, StoredType stored) {
  switch (type) {
    case ValueType::Integer:
      return stored == StoredType::Integer;
    case ValueType::Double:
      return stored == StoredType::Double;
    case ValueType::Date:
      return stored == StoredType::Date;
    case ValueType::String:
      return stored == StoredType::String || stored == StoredType::LongString;
    case ValueType::YesNo:
      return stored == StoredType::Boolean;
    case ValueType::Binary:
      return stored == StoredType::LongBinary;
  }
  return false;
}

}  // namespace inspector::data
