// The part of every table class that makes its own table and brings an older one up to date.
#include <algorithm>
#include <optional>

#include "data/StoredTypes.h"
#include "data/TableRecordset.h"
#include "device/Format.h"

namespace inspector::data {
namespace {

using device::Format;

constexpr TextView kBackUpAndSupport =
    u"\nPlease back up your data files and contact support at support@brindlecove.example.";
constexpr TextView kSupport = u"\nPlease contact support at support@brindlecove.example.";

void ShowFatal(device::Prompts& prompts, const Text& text) {
  prompts.Show({text, u"Inspector", device::Buttons::Ok, device::Icon::Hand});
}

struct SqlColumn {
  Text name;
  Text type;  // empty for a value type that is none of the six
};

SqlColumn NamedOrGenerated(const ColumnDef& column, int position) {
  if (!column.sqlName.empty() || !column.sqlType.empty()) return {column.sqlName, column.sqlType};
  return {GeneratedName(column.type, position), Text(GeneratedSqlType(column.type))};
}

bool IsKnown(ValueType type) {
  return !GeneratedSqlType(type).empty();
}

}  // namespace

bool TableRecordset::CreateTable() {
  Text statement = Format(u"CREATE TABLE %s (", m_TableName);
  int position = 0;
  for (const ColumnDef& column : m_Columns) {
    const SqlColumn sql = NamedOrGenerated(column, position++);
    statement += sql.name + u" " + sql.type;
    statement += position < static_cast<int>(m_Columns.size()) ? u"," : u");";
  }
  return OpenSQL(statement) && !Failed();
}

TableRecordset::StructureResult TableRecordset::CheckStructure(device::Prompts& prompts) {
  const auto fatal = [&](const Text& text) {
    ShowFatal(prompts, text);
    return StructureResult::Fatal;
  };
  const auto failedStatement = [&] {
    return fatal(
        Format(u"Error creating table: %s \nInspector is unable to recover from this error and will be "
               u"terminated.",
               m_TableName) +
        Text(kBackUpAndSupport));
  };

  // A table that is whole is only looked at, which a program that writes beside does not hinder.
  const std::vector<StoredColumn>* const whole = m_Connection.ColumnsOf(m_TableName);
  std::optional<Transaction> transaction;
  if (!whole || whole->size() < m_Columns.size()) {
    transaction.emplace(m_Connection);
    if (!transaction->IsOpen()) return failedStatement();
  }
  m_SQL.clear();
  if (!Open()) {
    int position = 0;
    for (const ColumnDef& column : m_Columns) {
      if (!IsKnown(column.type)) {
        return fatal(
            Format(u"Invalid column type in table: %s column: %d\n Inspector is unable to recover from this "
                   u"error and will be terminated.",
                   m_TableName, position) +
            Text(kSupport));
      }
      ++position;
    }
    if (!CreateTable()) return failedStatement();
    Open();
  }

  const std::vector<StoredColumn>* found = m_Connection.ColumnsOf(m_TableName);
  if (!found) return failedStatement();
  const std::vector<StoredColumn> stored = *found;
  const auto existing = static_cast<int>(stored.size());
  const auto invalidColumn = [&](int number) {
    return fatal(
        Format(u"Invalid column type in table: %s column: %d\nInspector is unable to recover from this error "
               u"and will be terminated.",
               m_TableName, number) +
        Text(kSupport));
  };

  std::size_t at = 0;
  for (int i = 0; i < existing && at < m_Columns.size(); ++i) {
    const ColumnDef& column = m_Columns[at];
    if (column.ordinal != i) continue;
    ++at;
    // The number reported is shifted by the stored fields on purpose.
    if (!IsKnown(column.type)) return invalidColumn(i + existing);
    if (Accepts(column.type, stored[static_cast<std::size_t>(i)].type)) continue;
    if (column.sqlName == u"ReportIcon") {
      return fatal(
          u"There was an error found in the Template data file.  This file was transferred from a PC "
          u"incorrectly. \nTo correct this error, retransfer the data file from the PC being sure to check "
          u"the 'ReportIcon' field under the 'Options' table.");
    }
    return fatal(
        Format(u"Column type mismatch in table: %s column: %d\nInspector is unable to recover from this "
               u"error and will be terminated.",
               m_TableName, i) +
        Text(kBackUpAndSupport));
  }

  for (int position = existing; position < static_cast<int>(m_Columns.size()); ++position) {
    const ColumnDef& column = m_Columns[static_cast<std::size_t>(position)];
    if (!IsKnown(column.type)) return invalidColumn(position);
    const SqlColumn sql = NamedOrGenerated(column, position);
    if (!OpenSQL(Format(u"ALTER TABLE %s ADD %s %s", m_TableName, sql.name, sql.type)) || Failed())
      return failedStatement();
  }
  return !transaction || transaction->Commit() ? StructureResult::Sound : failedStatement();
}

}  // namespace inspector::data
