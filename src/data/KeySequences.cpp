#include "data/KeySequences.h"

#include <sqlite3.h>

#include <algorithm>

namespace inspector::data {
namespace {

// A staged inspection has a key of the same sequence, and its categories would go to another one of that key.
constexpr KeyUse kInspections[] = {{u"Inspection", u"InspectionID"},
                                   {u"Category", u"InspectionID"},
                                   {u"MERGE_Inspection", u"InspectionID"},
                                   {u"MERGE_Category", u"InspectionID"}};
constexpr KeyUse kCategories[] = {
    {u"Category", u"CategoryID"}, {u"Step", u"CategoryID"}, {u"Field", u"CategoryID"}};
constexpr KeyUse kSteps[] = {{u"Step", u"StepID"}};
constexpr KeyUse kStagedCategories[] = {{u"MERGE_Category", u"CategoryID"}, {u"MERGE_Step", u"CategoryID"}};
constexpr KeyUse kStagedSteps[] = {{u"MERGE_Step", u"StepID"}};
constexpr KeyUse kComments[] = {{u"Comments", u"ID"},
                                {u"StepComment", u"CommentID"},
                                {u"CategoryComment", u"CommentID"},
                                {u"MaterialComment", u"CommentID"},
                                {u"InspectionTypeComment", u"CommentID"}};
constexpr KeyUse kPickers[] = {{u"Pickers", u"ID"}};
constexpr KeyUse kShortcuts[] = {{u"ExpandedText", u"ID"}};

constexpr KeySequence kSequences[] = {
    {u"Inspection", DatabaseKind::Inspection, kInspections},
    {u"InspectionCategory", DatabaseKind::Inspection, kCategories},
    {u"Step", DatabaseKind::Inspection, kSteps},
    {u"MERGE_InspectionCategory", DatabaseKind::Inspection, kStagedCategories},
    {u"MERGE_Step", DatabaseKind::Inspection, kStagedSteps},
    {u"Comments", DatabaseKind::Template, kComments},
    {u"Pickers", DatabaseKind::Template, kPickers},
    {u"ExpandedText", DatabaseKind::Template, kShortcuts},
};

// One whole number; nothing for no row.
std::optional<std::int32_t> ReadNumber(Connection& connection, const std::string& sql, std::int32_t low,
                                       std::int32_t high) {
  sqlite3_stmt* const statement = connection.Prepare(sql);
  if (!statement) return std::nullopt;
  sqlite3_bind_int(statement, 1, low);
  sqlite3_bind_int(statement, 2, high);
  std::optional<std::int32_t> number;
  const int code = sqlite3_step(statement);
  if (code == SQLITE_ROW) number = sqlite3_column_int(statement, 0);
  if (code != SQLITE_ROW && code != SQLITE_DONE) connection.ReportFailure();
  sqlite3_reset(statement);
  return number;
}

// Of the keys from `low` to `high` that are in use, one at the end that `order` puts first.
std::optional<std::int32_t> FindKey(Connection& connection, const KeyUse& use, std::int32_t low,
                                    std::int32_t high, const char* order) {
  const std::string column = StoredName(connection, use.table, use.column);
  if (column.empty()) return std::nullopt;
  return ReadNumber(connection,
                    "SELECT " + column + " FROM " + QuotedName(use.table) + " WHERE " + column +
                        " BETWEEN ? AND ? ORDER BY " + column + order + " LIMIT 1",
                    low, high);
}

}  // namespace

std::span<const KeySequence> KeySequences() {
  return kSequences;
}

const KeySequence* FindKeySequence(DatabaseKind kind, TextView name) {
  const auto* const found = std::find_if(std::begin(kSequences), std::end(kSequences), [&](const auto& each) {
    return each.kind == kind && each.name == name;
  });
  return found == std::end(kSequences) ? nullptr : found;
}

std::int32_t FirstKey(DatabaseKind kind) {
  return kind == DatabaseKind::Inspection ? 1000 : 25000;
}

std::string StoredName(Connection& connection, TextView table, TextView column) {
  const auto columns = FindLayout(table)->columns;
  const auto at = static_cast<std::size_t>(
      std::find_if(columns.begin(), columns.end(), [&](const auto& each) { return each.name == column; }) -
      columns.begin());
  const std::vector<StoredColumn>* const stored = connection.ColumnsOf(table);
  return stored && at < stored->size() ? QuotedName((*stored)[at].name) : std::string();
}

std::optional<std::int32_t> FindKeyInUse(Connection& connection, const KeySequence& sequence,
                                         std::int32_t first, std::int32_t last) {
  std::optional<std::int32_t> lowest;
  for (const KeyUse& use : sequence.uses)
    if (const auto key = FindKey(connection, use, first, last, ""))
      lowest = std::min(*key, lowest.value_or(*key));
  return lowest;
}

std::optional<std::int32_t> FindHighestKey(Connection& connection, const KeySequence& sequence) {
  std::optional<std::int32_t> highest;
  for (const KeyUse& use : sequence.uses)
    if (const auto key = FindKey(connection, use, INT32_MIN, kHighestUsualKey, " DESC"))
      highest = std::max(*key, highest.value_or(*key));
  return highest;
}

}  // namespace inspector::data
