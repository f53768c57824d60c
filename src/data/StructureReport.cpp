#include "data/StructureReport.h"

#include <sqlite3.h>

#include <algorithm>

#include "data/StartUp.h"
#include "data/StoredTypes.h"
#include "device/Format.h"

namespace inspector::data {

std::vector<Text> FindMissingStructure(Connection& connection, DatabaseKind kind) {
  std::vector<Text> faults;
  for (const TableLayout& layout : AllLayouts()) {
    if (layout.database != kind) continue;
    const std::vector<StoredColumn>* stored = connection.ColumnsOf(layout.name);
    if (!stored) {
      const bool isMadeOnUse = layout.name.starts_with(u"MERGE_") || layout.name == u"InspectionCategory" ||
                               layout.name == u"VoidComments";
      if (!isMadeOnUse) faults.push_back(device::Format(u"missing table: %s", layout.name));
      continue;
    }
    // Its rows have no keys, so that it reads as empty and nothing can be stored in it.
    if (connection.IsView(layout.name))
      faults.push_back(device::Format(u"a view in place of the table: %s", layout.name));
    for (std::size_t i = stored->size(); i < layout.columns.size(); ++i)
      faults.push_back(device::Format(u"missing column in table: %s column: %d", layout.name, i));
  }
  return faults;
}

Text DescribeOtherKind(Connection& connection, DatabaseKind kind) {
  const auto has = [&connection](const TableLayout& layout) {
    return connection.ColumnsOf(layout.name) != nullptr;
  };
  const auto layouts = AllLayouts();
  // Counters of keys are in both.
  const auto hasAny = [&](bool own) {
    return std::any_of(layouts.begin(), layouts.end(), [&](const TableLayout& layout) {
      return layout.name != u"UniqueID" && (layout.database == kind) == own && has(layout);
    });
  };
  if (!hasAny(false) || hasAny(true)) return {};
  return kind == DatabaseKind::Template ? u"this file holds inspections, and no templates."
                                        : u"this file holds templates, and no inspections.";
}

Text FindGap(Connection& connection, DatabaseKind kind) {
  for (const TableLayout& layout : AllLayouts()) {
    const std::vector<StoredColumn>* stored =
        layout.database == kind ? connection.ColumnsOf(layout.name) : nullptr;
    for (std::size_t i = 0; stored && i < std::min(stored->size(), layout.columns.size()); ++i) {
      const auto isIt = [&](const ColumnLayout& column) {
        return device::EqualIgnoringCase(column.name, (*stored)[i].name);
      };
      if (!isIt(layout.columns[i]) &&
          std::any_of(layout.columns.begin() + static_cast<std::ptrdiff_t>(i), layout.columns.end(), isIt))
        return device::Format(u"%s.%s", layout.name, layout.columns[i].name);
    }
  }
  return {};
}

std::vector<Text> FindStructureFaults(Connection& connection, DatabaseKind kind) {
  std::vector<Text> faults = FindMissingStructure(connection, kind);
  for (const TableLayout& layout : AllLayouts()) {
    const std::vector<StoredColumn>* stored =
        layout.database == kind ? connection.ColumnsOf(layout.name) : nullptr;
    for (std::size_t i = 0; stored && i < std::min(stored->size(), layout.columns.size()); ++i)
      if (!Accepts(layout.columns[i].type, (*stored)[i].type))
        faults.push_back(device::Format(u"column type mismatch in table: %s column: %d", layout.name, i));
  }
  return faults;
}

std::vector<Text> FindVersionFaults(Connection& connection) {
  constexpr std::size_t kDataVersionAt = 8;
  const std::vector<StoredColumn>* const stored = connection.ColumnsOf(u"Options");
  if (!stored || stored->size() <= kDataVersionAt) return {};  // that is missing, and named as such
  sqlite3_stmt* const statement = connection.Prepare("SELECT " + QuotedName((*stored)[kDataVersionAt].name) +
                                                     " FROM Options ORDER BY rowid LIMIT 1");
  if (!statement) return {};
  std::vector<Text> faults;
  const int code = sqlite3_step(statement);
  if (code == SQLITE_ROW) {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
    const Text version = device::FromUtf8(bytes ? bytes : "");
    if (!device::EqualIgnoringCase(version, kDataVersion))
      faults.push_back(device::Format(u"DataVersion is %s, not %s",
                                      version.empty() ? u"empty" : TextView(version), kDataVersion));
  } else if (code == SQLITE_DONE) {
    faults.push_back(u"missing row in table: Options");
  } else {
    connection.ReportFailure();
  }
  sqlite3_reset(statement);
  return faults;
}

bool IsEmptyLibrary(Connection& connection) {
  std::vector<std::int64_t> keys;
  Text table;
  for (const TableLayout& layout : AllLayouts()) {
    if (layout.database != DatabaseKind::Template || layout.name == u"UniqueID" || layout.name == u"Options")
      continue;
    const auto result = connection.Query(device::Format(u"SELECT * FROM %s", layout.name), keys, table);
    if (result == Connection::Result::Failed || !keys.empty()) return false;
  }
  return true;
}

}  // namespace inspector::data
