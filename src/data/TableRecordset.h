// The base of one class per table: rows reached by their position in an open query, columns by ordinal.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "data/ColumnDef.h"
#include "data/Connection.h"
#include "data/Databases.h"

namespace inspector::data {

// Keeps only the row keys of the open query and fetches one row at a time into the bound members. Not to be
// used from another thread than its databases.
//
// Failures: a query that fails reads as empty (Failed tells), and every failure but a missing table has been
// reported by the connection. A NULL reads as the neutral value of its type; a NULL date as the zero date.
class TableRecordset {
public:
  virtual ~TableRecordset() = default;
  TableRecordset(const TableRecordset&) = delete;
  TableRecordset& operator=(const TableRecordset&) = delete;

  const Text& TableName() const { return m_TableName; }
  Connection& GetConnection() const { return m_Connection; }

  // The text of the next Open; empty means the whole table.
  void SetSQL(Text sql) { m_SQL = std::move(sql); }
  // False only when the table is missing. A missing staging table is created instead.
  bool Open();
  // Runs any statement. A query's rows become the open ones; anything else leaves none.
  bool OpenSQL(TextView sql);
  // The last Open, OpenSQL or GetRecord could not do its work, a missing table included: that there are no
  // rows is then not known.
  bool Failed() const { return m_Failed; }

  int RecordCount() const { return static_cast<int>(m_Keys.size()); }
  // Row n of the open query into the members; the next Write updates it. False when there is no such row
  // (any more): the members then hold neutral values and the next Write does nothing.
  bool GetRecord(int n);
  // Neutral values, dates now; the next Write adds a row. Binary members stay as they are.
  void PrepareNew();
  // Adds or updates; a second Write without GetRecord or PrepareNew repeats the same kind. A row that was
  // added becomes the last of the open ones. Both work on the table that the open rows belong to.
  bool Write();
  // The row that was read has a date that is none. It reads as the zero date, and stays as it is.
  bool HasUnreadDate() const { return !m_UnreadDate.empty(); }
  // The table is one, and has a column for each member.
  bool IsWhole() const;
  // Deletes the row last read or written, and takes it out of the open ones.
  bool DeleteCurrent();

  // CREATE TABLE with the column definitions. False when the statement failed.
  virtual bool CreateTable();
  enum class StructureResult { Sound, Fatal };
  // Creates what is missing, compares what is there. Fatal: a message box has been shown, and the program
  // must end.
  StructureResult CheckStructure(device::Prompts& prompts);

  std::span<const ColumnDef> Columns() const { return m_Columns; }

  // The open row that is row n of another recordset on the same table; -1 when it is not among them.
  int FindRowOf(const TableRecordset& other, int n) const;

protected:
  // `layout` gives the columns, `members` their members in the same order. A table name of its own serves
  // tables that share a layout.
  TableRecordset(Databases& databases, const TableLayout& layout, std::span<const BoundMember> members);
  TableRecordset(Databases& databases, const TableLayout& layout, TextView tableName,
                 std::span<const BoundMember> members);
  void AddColumn(ColumnDef column) { m_Columns.push_back(std::move(column)); }
  Databases& GetDatabases() const { return m_Databases; }

private:
  bool Insert();
  bool Update();
  void BindRow(sqlite3_stmt* statement);
  void ReadRow(sqlite3_stmt* statement);
  void ResetMembers(const device::CalendarTime& date, bool withBinary);
  sqlite3_stmt* Statement(sqlite3_stmt*& cached, int& generation, std::string (TableRecordset::*build)());
  void WorkOn(TextView table);
  std::string SelectSql();
  std::string InsertSql();
  std::string UpdateSql();
  std::size_t StoredCount();

  enum class EditMode { None, New, Update };

  Text m_SQL;
  std::vector<ColumnDef> m_Columns;
  Text m_TableName;
  Text m_RowsTable;  // whose rows are open; m_TableName but for a statement about another table
  Databases& m_Databases;
  Connection& m_Connection;
  EditMode m_EditMode = EditMode::None;
  bool m_Failed = false;
  std::vector<std::int64_t> m_Keys;
  std::int64_t m_CurrentKey = 0;
  std::string m_UnreadDate;  // of the row read: another program's writing of a date, to be left as it is
  sqlite3_stmt* m_Select = nullptr;
  sqlite3_stmt* m_Insert = nullptr;
  sqlite3_stmt* m_Update = nullptr;
  int m_SelectGeneration = 0;
  int m_InsertGeneration = 0;
  int m_UpdateGeneration = 0;
};

// Copies the members of every column that both tables have, by ordinal. Staging tables have one fewer.
void CopyColumns(const TableRecordset& source, TableRecordset& target);
// Copies from `mine` to `target` only what differs from `base`: what was changed since both were alike.
void CopyChanges(const TableRecordset& base, const TableRecordset& mine, TableRecordset& target);

}  // namespace inspector::data
