// Two databases in a temporary folder, any table by its name, and a second program beside them.
#pragma once

#include "data/StartUp.h"
#include "data/TableRecordset.h"
#include "support/Shell.h"
#include "support/TestSupport.h"

namespace inspector::tests {

using data::DatabaseKind;
using data::Databases;
using data::StartUpResult;
using data::TableRecordset;

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
  data::Connection& Inspection() { return Data().Inspection(); }
  std::unique_ptr<TableRecordset> Table(TextView name, DatabaseKind kind = DatabaseKind::Inspection);
  // Runs SQL as another program would; returns what it finds.
  std::string InLibrary(const std::string& sql) { return Shell(TemplateFile()).Ask(sql); }
  std::string InVisits(const std::string& sql) { return Shell(InspectionFile()).Ask(sql); }

  std::unique_ptr<Databases> m_Databases;
};

// Both databases are there and open.
class OpenStoreTest : public StoreTest {
protected:
  void SetUp() override {
    CreateFresh();
    OpenBoth();
  }
};

}  // namespace inspector::tests
