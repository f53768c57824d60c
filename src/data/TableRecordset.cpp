#include "data/TableRecordset.h"

#include <sqlite3.h>

#include <algorithm>

#include "data/FreshDatabase.h"
#include "device/Format.h"

namespace inspector::data {
namespace {

using device::CalendarTime;

std::int32_t* AsInteger(const ColumnDef& column) {
  return std::get<std::int32_t*>(column.member);
}

CalendarTime ReadDate(sqlite3_stmt* statement, int column) {
  switch (sqlite3_column_type(statement, column)) {
    case SQLITE_TEXT: {
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
      const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
      const std::string_view whole(text, size);
      return device::FromIso(whole.substr(0, whole.find('.', 19))).value_or(CalendarTime{});  // no fractions
    }
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:  // a file that was made before dates became text
      return device::FromVariantTime(sqlite3_column_double(statement, column));
    default:
      return {};
  }
}

void ReadText(sqlite3_stmt* statement, int column, Text& text) {
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
  const int size = sqlite3_column_bytes(statement, column);
  if (bytes && size > 0)
    device::AssignUtf8(text, bytes, static_cast<std::size_t>(size));
  else
    text.clear();
}

void ReadBytes(sqlite3_stmt* statement, int column, ByteArray& bytes) {
  if (sqlite3_column_type(statement, column) == SQLITE_NULL) {
    bytes.assign(1, 0);
    return;
  }
  const auto* data = static_cast<const std::uint8_t*>(sqlite3_column_blob(statement, column));
  const int size = sqlite3_column_bytes(statement, column);
  if (data)
    bytes.assign(data, data + size);
  else
    bytes.clear();
}

void CopyMember(const ColumnDef& from, const ColumnDef& to) {
  std::visit(
      [&](auto* source) {
        if (auto* const* target = std::get_if<decltype(source)>(&to.member)) **target = *source;
      },
      from.member);
}

bool IsSameMember(const ColumnDef& left, const ColumnDef& right) {
  return std::visit(
      [&](auto* value) {
        auto* const* other = std::get_if<decltype(value)>(&right.member);
        return other && **other == *value;
      },
      left.member);
}

}  // namespace

TableRecordset::TableRecordset(Databases& databases, const TableLayout& layout,
                               std::span<const BoundMember> members)
    : TableRecordset(databases, layout, layout.name, members) {}

TableRecordset::TableRecordset(Databases& databases, const TableLayout& layout, TextView tableName,
                               std::span<const BoundMember> members)
    : m_TableName(RealTableName(tableName)),
      m_RowsTable(m_TableName),
      m_Databases(databases),
      m_Connection(databases.Get(layout.database)) {
  const std::size_t count = std::min(layout.columns.size(), members.size());
  m_Columns.reserve(count);
  for (std::size_t ordinal = 0; ordinal < count; ++ordinal) {
    const ColumnLayout& column = layout.columns[ordinal];
    m_Columns.push_back({static_cast<int>(ordinal), column.type, members[ordinal], Text(column.sqlType),
                         column.IsPositional() ? Text() : Text(column.name)});
  }
  // The members are not constructed yet: only their addresses are taken.
}

bool TableRecordset::Open() {
  if (m_SQL.empty()) m_SQL = device::Format(u"SELECT * FROM %s", m_TableName);
  return OpenSQL(m_SQL);
}

bool TableRecordset::OpenSQL(TextView sql) {
  Text table;
  Connection::Result result = m_Connection.Query(sql, m_Keys, table);
  if (result == Connection::Result::TableMissing && IsStagingTable(table) &&
      CreateIfMissing(m_Connection, table))
    result = m_Connection.Query(sql, m_Keys, table);
  m_Failed = result != Connection::Result::Done;
  if (m_EditMode == EditMode::Update) m_EditMode = EditMode::None;
  if (!m_Failed) WorkOn(table.empty() ? TextView(m_TableName) : TextView(table));
  return result != Connection::Result::TableMissing;
}

void TableRecordset::WorkOn(TextView table) {
  if (device::EqualIgnoringCase(m_RowsTable, table)) return;
  m_RowsTable = Text(table);
  m_Select = m_Insert = m_Update = nullptr;
}

bool TableRecordset::GetRecord(int n) {
  m_EditMode = EditMode::None;
  if (n >= 0 && n < RecordCount()) {
    m_Failed = false;
    m_CurrentKey = m_Keys[static_cast<std::size_t>(n)];
    sqlite3_stmt* const select = Statement(m_Select, m_SelectGeneration, &TableRecordset::SelectSql);
    if (select) {
      sqlite3_bind_int64(select, 1, m_CurrentKey);
      const int code = sqlite3_step(select);
      if (code == SQLITE_ROW) {
        ReadRow(select);
        m_EditMode = EditMode::Update;
      } else if (code != SQLITE_DONE) {
        m_Connection.ReportFailure();
        m_Failed = true;
      }
      sqlite3_reset(select);
      if (m_EditMode == EditMode::Update) return true;
    } else {
      m_Failed = true;
    }
  }
  ResetMembers({}, true);
  return false;
}

void TableRecordset::ReadRow(sqlite3_stmt* statement) {
  const int stored = sqlite3_column_count(statement);
  for (ColumnDef& column : m_Columns) {
    const int at = column.ordinal;
    const bool isThere = at < stored;
    switch (column.type) {
      case ValueType::Integer:
        *AsInteger(column) = isThere ? sqlite3_column_int(statement, at) : 0;
        break;
      case ValueType::YesNo:
        *AsInteger(column) = isThere && sqlite3_column_double(statement, at) != 0 ? -1 : 0;
        break;
      case ValueType::Double:
        *std::get<double*>(column.member) = isThere ? sqlite3_column_double(statement, at) : 0;
        break;
      case ValueType::Date:
        *std::get<CalendarTime*>(column.member) = isThere ? ReadDate(statement, at) : CalendarTime{};
        m_UnreadDate.clear();
        if (isThere && std::get<CalendarTime*>(column.member)->IsZero() &&
            sqlite3_column_type(statement, at) == SQLITE_TEXT)
          m_UnreadDate = reinterpret_cast<const char*>(sqlite3_column_text(statement, at));
        break;
      case ValueType::String:
        if (isThere)
          ReadText(statement, at, *std::get<Text*>(column.member));
        else
          std::get<Text*>(column.member)->clear();
        break;
      case ValueType::Binary:
        if (isThere)
          ReadBytes(statement, at, *std::get<ByteArray*>(column.member));
        else
          std::get<ByteArray*>(column.member)->assign(1, 0);
        break;
    }
  }
}

void TableRecordset::ResetMembers(const CalendarTime& date, bool withBinary) {
  for (ColumnDef& column : m_Columns) {
    switch (column.type) {
      case ValueType::Integer:
      case ValueType::YesNo:
        *AsInteger(column) = 0;
        break;
      case ValueType::Double:
        *std::get<double*>(column.member) = 0;
        break;
      case ValueType::Date:
        *std::get<CalendarTime*>(column.member) = date;
        break;
      case ValueType::String:
        std::get<Text*>(column.member)->clear();
        break;
      case ValueType::Binary:
        if (withBinary) std::get<ByteArray*>(column.member)->assign(1, 0);
        break;
    }
  }
}

void TableRecordset::PrepareNew() {
  ResetMembers(m_Databases.GetClock().Now(), false);
  m_EditMode = EditMode::New;
}

bool TableRecordset::Write() {
  switch (m_EditMode) {
    case EditMode::New:
      return Insert();
    case EditMode::Update:
      return Update();
    case EditMode::None:
      break;
  }
  return false;
}

bool TableRecordset::Insert() {
  if (IsStagingTable(m_RowsTable) && !CreateIfMissing(m_Connection, m_RowsTable)) return false;
  sqlite3_stmt* const insert = Statement(m_Insert, m_InsertGeneration, &TableRecordset::InsertSql);
  if (!insert) return false;
  BindRow(insert);
  if (!m_Connection.Run(insert)) return false;
  m_CurrentKey = m_Connection.LastRowId();
  m_Keys.push_back(m_CurrentKey);
  return true;
}

bool TableRecordset::Update() {
  sqlite3_stmt* const update = Statement(m_Update, m_UpdateGeneration, &TableRecordset::UpdateSql);
  if (!update) return false;
  BindRow(update);
  sqlite3_bind_int64(update, static_cast<int>(StoredCount()) + 1, m_CurrentKey);
  if (!m_Connection.Run(update)) return false;
  if (m_Connection.ChangedRows() > 0) return true;
  m_Connection.ReportVanishedRow(m_TableName);
  return false;
}

void TableRecordset::BindRow(sqlite3_stmt* statement) {
  const auto stored = static_cast<int>(StoredCount());
  std::string bytes;
  for (const ColumnDef& column : m_Columns) {
    const int place = column.ordinal + 1;
    if (column.ordinal >= stored) continue;
    switch (column.type) {
      case ValueType::Integer:
        sqlite3_bind_int(statement, place, *AsInteger(column));
        break;
      case ValueType::YesNo:
        sqlite3_bind_int(statement, place, *AsInteger(column) != 0 ? 1 : 0);
        break;
      case ValueType::Double:
        sqlite3_bind_double(statement, place, *std::get<double*>(column.member));
        break;
      case ValueType::Date: {
        const CalendarTime& date = *std::get<CalendarTime*>(column.member);
        bytes = date.IsZero() && m_EditMode == EditMode::Update ? m_UnreadDate : device::ToIso(date);
        if (bytes.empty())
          sqlite3_bind_null(statement, place);
        else
          sqlite3_bind_text(statement, place, bytes.data(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
        break;
      }
      case ValueType::String:
        bytes = device::ToUtf8(*std::get<Text*>(column.member));
        sqlite3_bind_text(statement, place, bytes.data(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
        break;
      case ValueType::Binary: {
        const ByteArray& block = *std::get<ByteArray*>(column.member);
        sqlite3_bind_blob(statement, place, block.empty() ? "" : static_cast<const void*>(block.data()),
                          static_cast<int>(block.size()), SQLITE_TRANSIENT);
        break;
      }
      default:
        m_Databases.Faults().Report(u"Error! Invalid type specified.");
        sqlite3_bind_null(statement, place);
    }
  }
}

bool TableRecordset::DeleteCurrent() {
  if (m_EditMode == EditMode::None) return false;
  sqlite3_stmt* const remove =
      m_Connection.Prepare("DELETE FROM " + QuotedName(m_RowsTable) + " WHERE _rowid_ = ?1");
  if (!remove) return false;
  sqlite3_bind_int64(remove, 1, m_CurrentKey);
  if (!m_Connection.Run(remove)) return false;
  std::erase(m_Keys, m_CurrentKey);
  m_EditMode = EditMode::None;
  return true;
}

sqlite3_stmt* TableRecordset::Statement(sqlite3_stmt*& cached, int& generation,
                                        std::string (TableRecordset::*build)()) {
  if (!cached || generation != m_Connection.Generation()) {
    cached = m_Connection.Prepare((this->*build)());
    generation = m_Connection.Generation();
  }
  return cached;
}

bool TableRecordset::IsWhole() const {
  const std::vector<StoredColumn>* const stored = m_Connection.ColumnsOf(m_TableName);
  return stored && stored->size() >= m_Columns.size() && !m_Connection.IsView(m_TableName);
}

std::size_t TableRecordset::StoredCount() {
  const std::vector<StoredColumn>* stored = m_Connection.ColumnsOf(m_RowsTable);
  return std::min(stored ? stored->size() : 0, m_Columns.size());
}

std::string TableRecordset::SelectSql() {
  return "SELECT * FROM " + QuotedName(m_RowsTable) + " WHERE _rowid_ = ?1";
}

std::string TableRecordset::InsertSql() {
  const std::vector<StoredColumn>* stored = m_Connection.ColumnsOf(m_RowsTable);
  std::string names;
  std::string places;
  for (std::size_t i = 0; stored && i < StoredCount(); ++i) {
    names += (i ? ", " : "") + QuotedName((*stored)[i].name);
    places += i ? ", ?" : "?";
  }
  if (names.empty())
    return "INSERT INTO " + QuotedName(m_RowsTable) + " DEFAULT VALUES";  // fails with the reason
  return "INSERT INTO " + QuotedName(m_RowsTable) + " (" + names + ") VALUES (" + places + ")";
}

std::string TableRecordset::UpdateSql() {
  const std::vector<StoredColumn>* stored = m_Connection.ColumnsOf(m_RowsTable);
  std::string places;
  for (std::size_t i = 0; stored && i < StoredCount(); ++i)
    places += (i ? ", " : "") + QuotedName((*stored)[i].name) + " = ?";
  return "UPDATE " + QuotedName(m_RowsTable) + " SET " + places + " WHERE _rowid_ = ?";
}

int TableRecordset::FindRowOf(const TableRecordset& other, int n) const {
  if (n < 0 || n >= other.RecordCount()) return -1;
  const auto found = std::find(m_Keys.begin(), m_Keys.end(), other.m_Keys[static_cast<std::size_t>(n)]);
  return found == m_Keys.end() ? -1 : static_cast<int>(found - m_Keys.begin());
}

void CopyColumns(const TableRecordset& source, TableRecordset& target) {
  const std::size_t count = std::min(source.Columns().size(), target.Columns().size());
  for (std::size_t i = 0; i < count; ++i) CopyMember(source.Columns()[i], target.Columns()[i]);
}

void CopyChanges(const TableRecordset& base, const TableRecordset& mine, TableRecordset& target) {
  for (std::size_t i = 0; i < mine.Columns().size(); ++i)
    if (!IsSameMember(base.Columns()[i], mine.Columns()[i]))
      CopyMember(mine.Columns()[i], target.Columns()[i]);
}

}  // namespace inspector::data
