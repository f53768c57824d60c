#include "data/KeyReport.h"

#include <sqlite3.h>

#include "device/Format.h"

namespace inspector::data {
namespace {

using device::Format;

// A sequence of keys and the table that they are the keys of, in its first column.
struct Sequence {
  TextView name;
  TextView table;
};

constexpr Sequence kSequences[] = {
    {u"Inspection", u"Inspection"}, {u"InspectionCategory", u"Category"}, {u"Step", u"Step"}};

// A table that was copied twice has every key twice; the first ones tell as much as all of them.
constexpr int kMostKeysListed = 20;

Text TextAt(sqlite3_stmt* statement, int column) {
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
  return bytes ? device::FromUtf8(bytes) : Text(u"nothing");
}

// `visit` gets the statement at each row. False on a failure, which has been reported.
template <typename Visit>
bool ForEachRow(Connection& connection, const std::string& sql, Visit visit) {
  sqlite3_stmt* const statement = connection.Prepare(sql);
  if (!statement) return false;
  int code = SQLITE_ROW;
  while ((code = sqlite3_step(statement)) == SQLITE_ROW) visit(statement);
  if (code != SQLITE_DONE) connection.ReportFailure();
  sqlite3_reset(statement);
  return code == SQLITE_DONE;
}

// The stored name of a column, quoted. Empty when the table or the column is not there.
std::string ColumnName(Connection& connection, TextView table, std::size_t ordinal) {
  const std::vector<StoredColumn>* const stored = connection.ColumnsOf(table);
  return stored && ordinal < stored->size() ? QuotedName((*stored)[ordinal].name) : std::string();
}

void FindRepeatedKeys(Connection& connection, TextView table, std::vector<Text>& faults) {
  const std::string key = ColumnName(connection, table, 0);
  if (key.empty()) return;
  const TextView name = FindLayout(table)->columns[0].name;
  int found = 0;
  ForEachRow(connection,
             "SELECT " + key + ", count(*) FROM " + QuotedName(table) + " WHERE " + key +
                 " IS NOT NULL GROUP BY " + key + " HAVING count(*) > 1 LIMIT " +
                 std::to_string(kMostKeysListed + 1),
             [&](sqlite3_stmt* row) {
               if (++found > kMostKeysListed)
                 faults.push_back(Format(u"further repeated keys in table: %s", table));
               else
                 faults.push_back(Format(u"repeated key in table: %s, %s %s stands in %d rows", table, name,
                                         TextAt(row, 0), sqlite3_column_int(row, 1)));
             });
}

void FindCountersOfNoNumber(Connection& connection, const std::string& name, const std::string& counter,
                            std::vector<Text>& faults) {
  ForEachRow(connection,
             "SELECT " + name + ", " + counter + " FROM UniqueID WHERE typeof(" + counter +
                 ") <> 'integer' OR " + counter + " NOT BETWEEN -2147483648 AND 2147483647 ORDER BY rowid",
             [&](sqlite3_stmt* row) {
               faults.push_back(Format(u"no whole number in table: UniqueID, the counter of %s holds %s",
                                       TextAt(row, 0), TextAt(row, 1)));
             });
}

// What takes a key reads the first row of the sequence.
void FindCounterBelowKeys(Connection& connection, const Sequence& sequence, const std::string& name,
                          const std::string& counter, std::vector<Text>& faults) {
  const std::string key = ColumnName(connection, sequence.table, 0);
  std::optional<std::int32_t> highest;
  // The index ends with the highest number; behind it there could only be texts.
  const bool isRead =
      !key.empty() && ForEachRow(connection,
                                 "SELECT " + key + " FROM " + QuotedName(sequence.table) + " WHERE " + key +
                                     " <= 2147483647 ORDER BY " + key + " DESC LIMIT 1",
                                 [&](sqlite3_stmt* row) { highest = sqlite3_column_int(row, 0); });
  if (!isRead || !highest) return;
  std::optional<std::int64_t> stored;
  bool isNumber = false;
  const bool isCounterRead =
      ForEachRow(connection,
                 "SELECT " + counter + " FROM UniqueID WHERE " + name + " = '" +
                     device::ToUtf8(sequence.name) + "' COLLATE BINARY ORDER BY rowid LIMIT 1",
                 [&](sqlite3_stmt* row) {
                   isNumber = sqlite3_column_type(row, 0) == SQLITE_INTEGER;
                   stored = sqlite3_column_int64(row, 0);
                 });
  const TextView keyName = FindLayout(sequence.table)->columns[0].name;
  constexpr std::int32_t kFirstKey = 1000;
  if (!isCounterRead || (stored && !isNumber)) return;
  if (!stored && *highest >= kFirstKey) {
    faults.push_back(Format(u"missing counter in table: UniqueID, %s; the highest %s is %d", sequence.name,
                            keyName, *highest));
  } else if (stored && *stored < *highest) {
    faults.push_back(Format(u"counter too low in table: UniqueID, %s is at %s; the highest %s is %d",
                            sequence.name, device::FromUtf8(std::to_string(*stored)), keyName, *highest));
  }
}

}  // namespace

std::vector<Text> FindKeyFaults(Connection& connection, DatabaseKind kind) {
  std::vector<Text> faults;
  const bool isInspection = kind == DatabaseKind::Inspection;
  if (isInspection)
    for (const Sequence& sequence : kSequences) FindRepeatedKeys(connection, sequence.table, faults);
  const std::string name = ColumnName(connection, u"UniqueID", 0);
  const std::string counter = ColumnName(connection, u"UniqueID", 1);
  if (name.empty() || counter.empty()) return faults;
  FindCountersOfNoNumber(connection, name, counter, faults);
  if (isInspection)
    for (const Sequence& sequence : kSequences)
      FindCounterBelowKeys(connection, sequence, name, counter, faults);
  return faults;
}

}  // namespace inspector::data
