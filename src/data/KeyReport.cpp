#include "data/KeyReport.h"

#include <sqlite3.h>

#include <algorithm>

#include "data/KeySequences.h"
#include "device/Format.h"

namespace inspector::data {
namespace {

using device::Format;

// A table that was copied twice has every key twice; the first ones tell as much as all of them.
constexpr int kMostKeysListed = 20;

constexpr DatabaseKind kBoth[] = {DatabaseKind::Template, DatabaseKind::Inspection};

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

void FindRepeatedKeys(Connection& connection, const KeyUse& keys, std::vector<Text>& faults) {
  const TextView table = keys.table;
  const TextView name = keys.column;
  const std::string key = StoredName(connection, table, name);
  if (key.empty()) return;
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

// The names of the two columns of UniqueID, quoted.
struct CounterColumns {
  explicit CounterColumns(Connection& connection)
      : name(StoredName(connection, u"UniqueID", u"TableName")),
        counter(StoredName(connection, u"UniqueID", u"NextID")) {}
  bool AreThere() const { return !name.empty() && !counter.empty(); }

  std::string name;
  std::string counter;
};

void FindCountersOfNoNumber(Connection& connection, const CounterColumns& columns,
                            std::vector<Text>& faults) {
  ForEachRow(connection,
             "SELECT " + columns.name + ", " + columns.counter + " FROM UniqueID WHERE typeof(" +
                 columns.counter + ") <> 'integer' OR " + columns.counter +
                 " NOT BETWEEN -2147483648 AND 2147483647 ORDER BY rowid",
             [&](sqlite3_stmt* row) {
               faults.push_back(Format(u"no whole number in table: UniqueID, the counter of %s holds %s",
                                       TextAt(row, 0), TextAt(row, 1)));
             });
}

// What takes a key reads the first row of the sequence.
std::string FirstRowOf(const KeySequence& sequence, const CounterColumns& columns) {
  return " FROM UniqueID WHERE " + columns.name + " = '" + device::ToUtf8(sequence.name) +
         "' COLLATE BINARY ORDER BY rowid LIMIT 1";
}

struct WrongCounter {
  Text fault;                // empty for no whole number, which is told of every counter
  std::int32_t rightly = 0;  // from there on no key is in use
};

// Nothing when it is right, or when that could not be read, which has been reported.
std::optional<WrongCounter> FindWrongCounter(Connection& connection, const KeySequence& sequence,
                                             const CounterColumns& columns) {
  bool isThere = false;
  bool isNumber = false;
  std::int64_t stored = 0;
  const bool isRead = ForEachRow(
      connection, "SELECT " + columns.counter + FirstRowOf(sequence, columns), [&](sqlite3_stmt* row) {
        isThere = true;
        stored = sqlite3_column_int64(row, 0);
        isNumber =
            sqlite3_column_type(row, 0) == SQLITE_INTEGER && stored == static_cast<std::int32_t>(stored);
      });
  if (!isRead) return std::nullopt;
  const std::optional<std::int32_t> highest = FindHighestKey(connection, sequence);
  const std::int32_t first = FirstKey(sequence.kind);
  const std::int32_t rightly = std::max(highest.value_or(0), first - 1);
  const TextView key = sequence.uses.front().column;
  const Text number = device::FromUtf8(std::to_string(stored));
  if (isThere && !isNumber) return WrongCounter{{}, rightly};
  if (isThere && stored > kHighestUsualKey)
    return WrongCounter{Format(u"counter at its end in table: UniqueID, %s is at %s", sequence.name, number),
                        rightly};
  const bool beginsAgain = !isThere || (sequence.kind == DatabaseKind::Template && stored < 0);
  if (!highest || (beginsAgain ? *highest < first : *highest <= stored)) return std::nullopt;
  return WrongCounter{isThere
                          ? Format(u"counter too low in table: UniqueID, %s is at %s; the highest %s is %d",
                                   sequence.name, number, key, *highest)
                          : Format(u"missing counter in table: UniqueID, %s; the highest %s is %d",
                                   sequence.name, key, *highest),
                      rightly};
}

void AddCounterFaults(Connection& connection, DatabaseKind kind, std::vector<Text>& faults) {
  const CounterColumns columns(connection);
  if (!columns.AreThere()) return;
  FindCountersOfNoNumber(connection, columns, faults);
  for (const KeySequence& sequence : KeySequences()) {
    if (sequence.kind != kind) continue;
    const std::optional<WrongCounter> wrong = FindWrongCounter(connection, sequence, columns);
    if (wrong && !wrong->fault.empty()) faults.push_back(wrong->fault);
  }
}

bool SetCounter(Connection& connection, const KeySequence& sequence, const CounterColumns& columns,
                std::int32_t value) {
  sqlite3_stmt* const update =
      connection.Prepare("UPDATE UniqueID SET " + columns.counter + " = ? WHERE rowid = (SELECT rowid" +
                         FirstRowOf(sequence, columns) + ")");
  if (!update) return false;
  sqlite3_bind_int(update, 1, value);
  if (!connection.Run(update)) return false;
  if (connection.ChangedRows() > 0) return true;
  sqlite3_stmt* const insert = connection.Prepare("INSERT INTO UniqueID (" + columns.name + ", " +
                                                  columns.counter + ") VALUES (?, ?)");
  if (!insert) return false;
  const std::string name = device::ToUtf8(sequence.name);
  sqlite3_bind_text(insert, 1, name.data(), static_cast<int>(name.size()), SQLITE_TRANSIENT);
  sqlite3_bind_int(insert, 2, value);
  return connection.Run(insert);
}

}  // namespace

std::vector<Text> FindKeyFaults(Connection& connection, DatabaseKind kind) {
  std::vector<Text> faults;
  if (kind == DatabaseKind::Inspection)
    for (const KeySequence& sequence : KeySequences())
      if (sequence.kind == kind) FindRepeatedKeys(connection, sequence.uses.front(), faults);
  AddCounterFaults(connection, kind, faults);
  return faults;
}

std::vector<Text> FindOrphans(Connection& connection) {
  struct Belonging {
    TextView table, owner, key, what;
  };
  constexpr Belonging kBelongings[] = {{u"Category", u"Inspection", u"InspectionID", u"inspection"},
                                       {u"Step", u"Category", u"CategoryID", u"category"},
                                       {u"Field", u"Category", u"CategoryID", u"category"}};
  std::vector<Text> lines;
  for (const auto& [table, owner, key, what] : kBelongings) {
    const std::string own = StoredName(connection, table, key);
    const std::string owners = StoredName(connection, owner, key);
    if (own.empty() || owners.empty()) continue;
    ForEachRow(
        connection,
        "SELECT count(*) FROM " + QuotedName(table) + " WHERE " + own + " IS NULL OR " + own +
            " NOT IN (SELECT " + owners + " FROM " + QuotedName(owner) + " WHERE " + owners + " IS NOT NULL)",
        [&, table = table, what = what](sqlite3_stmt* row) {
          if (const int count = sqlite3_column_int(row, 0); count > 0)
            lines.push_back(Format(u"note: in table %s, rows that belong to no %s and are shown nowhere: %d",
                                   table, what, count));
        });
  }
  return lines;
}

std::vector<Text> FindCounterFaults(Databases& databases) {
  std::vector<Text> faults;
  for (const DatabaseKind kind : kBoth) AddCounterFaults(databases.Get(kind), kind, faults);
  return faults;
}

std::optional<std::vector<Text>> RepairCounters(Connection& connection, DatabaseKind kind) {
  std::vector<Text> done;
  const CounterColumns columns(connection);
  if (!columns.AreThere()) return done;
  Transaction transaction(connection);
  if (!transaction.IsOpen()) return std::nullopt;
  for (const KeySequence& sequence : KeySequences()) {
    if (sequence.kind != kind) continue;
    const std::optional<WrongCounter> wrong = FindWrongCounter(connection, sequence, columns);
    if (!wrong) continue;
    if (!SetCounter(connection, sequence, columns, wrong->rightly)) return std::nullopt;
    done.push_back(Format(u"set the counter of %s to %d", sequence.name, wrong->rightly));
  }
  if (!transaction.Commit()) return std::nullopt;
  return done;
}

bool RepairCounters(Databases& databases) {
  return std::all_of(std::begin(kBoth), std::end(kBoth), [&](DatabaseKind kind) {
    return RepairCounters(databases.Get(kind), kind).has_value();
  });
}

}  // namespace inspector::data
