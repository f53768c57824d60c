// Two databases in a temporary folder, any table by its name, and a second program beside them.
#pragma once

#include <memory>
#include <string>
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
  // Adds rows in SQL's words, their columns told by ordinal: "0, 3", "(1, 'Roof'), (2, NULL)".
  void Insert(TextView table, std::string ordinals, const std::string& rows);
  // The first integer column of each row that the statement finds.
  std::vector<int> Find(TextView sql);

  std::unique_ptr<Databases> m_Databases;
};

}  // namespace inspector::tests
