// Two databases in a temporary folder, any table by its name, and a second program beside them.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "data/Databases.h"
#include "data/StartUp.h"
#include "data/TableRecordset.h"
#include "device/DevicePaths.h"
#include "device/FaultLog.h"
#include "device/Machine.h"
#include "device/Registry.h"
#include "support/TestSupport.h"

namespace inspector::tests {

using data::Databases;
using data::TableRecordset;
using device::Text;
using device::TextView;

// Another program that has one of the databases open: SQLite and nothing of this project.
class Shell {
public:
  explicit Shell(const std::filesystem::path& file) { sqlite3_open(file.c_str(), &m_Database); }
  ~Shell() { sqlite3_close(m_Database); }
  Shell(const Shell&) = delete;
  Shell& operator=(const Shell&) = delete;

  // Empty when it went well, else what SQLite says.
  std::string Try(const std::string& sql);
  void Run(const std::string& sql) { EXPECT_EQ(Try(sql), "") << sql; }
  // Fields joined with '|', rows with '\n'.
  std::string Ask(const std::string& sql);

private:
  sqlite3* m_Database = nullptr;
};

using Cell = std::variant<int, Text>;

class StoreTest : public ::testing::Test, protected ScriptedMachine {
protected:
  std::filesystem::path TemplateFile() const { return m_Folder / "My Documents/Template_Data.cdb"; }
  std::filesystem::path InspectionFile() const { return m_Folder / "My Documents/Inspection_Data.cdb"; }

  // Both with full names; an options row of version "5.0".
  void CreateFresh();
  // Both as the program itself makes its tables: with generated names.
  void CreateGenerated();
  // Opens both for writing.
  void OpenBoth();

  data::StartUp Start() { return data::StartData(m_Machine); }
  Databases& Data() { return *m_Databases; }
  std::unique_ptr<TableRecordset> Table(TextView name,
                                        data::DatabaseKind kind = data::DatabaseKind::Inspection);
  // Adds a row with these values by ordinal, through the table's class.
  void Add(TextView table, std::initializer_list<std::pair<int, Cell>> cells);
  // Stores something that the program would not: `value` in SQLite's words where the first integer column is
  // `id`.
  void Store(TextView table, int id, int ordinal, const std::string& value);
  // The first integer column of each row that the statement finds.
  std::vector<int> Find(TextView table, TextView sql);

  std::unique_ptr<Databases> m_Databases;
};

}  // namespace inspector::tests
