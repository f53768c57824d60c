// The one place where the program's statements meet SQLite.
//
// The statements were written for another engine and stay as they stand. They are parsed, never patched:
//  - double-quoted values become bound values, so none is ever mistaken for a column;
//  - columns are found by the names that statements use even in tables with generated names;
//  - parenthesised joins are flattened, because the hidden row id does not reach out of brackets;
//  - a query returns row ids: first by its own order, then by the link table's rows, then by the table's;
//  - "= TRUE" holds for any non-zero value; a NULL text compares as an empty one; a text column compared with
//    a number compares as a number ("02" equals 2);
//  - LIKE takes "%" for any characters and "_" for one, and no notice of the case of A to Z.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "data/SqlTokens.h"
#include "device/Text.h"

namespace inspector::data {

// What a stored column holds, after its declared type (compared without case). The numbers are the field
// type codes that the structure check speaks of.
enum class StoredType {
  Integer = 3,
  Double = 5,
  Date = 7,
  Boolean = 11,
  String = 202,
  LongString = 203,
  LongBinary = 205,
  Unknown = 0
};

StoredType StoredTypeOf(std::string_view declaredType);

struct StoredColumn {
  Text name;
  StoredType type = StoredType::Unknown;
};

// What the database really holds.
class SqlCatalog {
public:
  virtual ~SqlCatalog() = default;
  // Null when the database has no such table.
  virtual const std::vector<StoredColumn>* ColumnsOf(TextView table) = 0;
};

struct SqlTranslation {
  enum class Outcome { Query, Change, TableMissing, NotUnderstood };
  Outcome outcome = Outcome::NotUnderstood;
  std::string sql;                 // UTF-8; a query selects the row ids of `table`
  Text table;                      // whose rows a query finds; the missing table; what was not understood
  bool mustSort = false;           // the query's row ids come in no order; theirs is wanted
  std::vector<std::size_t> binds;  // parameter i takes the value binds[i] of the tokens
};

// SELECT of one table's columns with inner joins, DELETE, and (untouched) CREATE TABLE and ALTER TABLE.
SqlTranslation TranslateSql(const SqlTokens& tokens, TextView statement, SqlCatalog& catalog);

// A name as SQLite takes it, whatever it contains.
std::string QuotedName(TextView name);

}  // namespace inspector::data
