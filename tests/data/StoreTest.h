// Two databases in a temporary folder, any table by its name, and a second program beside them.
#pragma once

#include <gtest/gtest.h>

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
#include "support/Shell.h"
#include "support/TestSupport.h"

namespace inspector::tests {

using data::Databases;
using data::TableRecordset;
using device::Text;
using device::TextView;

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
