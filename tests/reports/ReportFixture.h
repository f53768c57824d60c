// A device in a temporary folder with both databases, and a file in memory.
#pragma once

#include "data/FreshDatabase.h"
#include "data/StartUp.h"
#include "data/Workspace.h"
#include "device/Machine.h"
#include "reports/MakeReport.h"
#include "support/TestSupport.h"

namespace inspector::tests {

// Keeps what is written.
class MemoryOutput : public device::OutputFile {
public:
  bool Write(std::string_view bytes) override {
    content += bytes;
    return true;
  }
  bool Commit() override { return true; }
  std::string Error() const override { return {}; }

  std::string content;
};

// Empty databases; a test adds what it needs.
class ReportDevice : ScriptedMachine {
public:
  ReportDevice() {
    for (const auto& [name, kind] :
         {std::pair{"My Documents/Template_Data.cdb", data::DatabaseKind::Template},
          std::pair{"My Documents/Inspection_Data.cdb", data::DatabaseKind::Inspection}})
      EXPECT_EQ(data::CreateFreshDatabase(folder / name, kind, m_Faults), u"");
    m_Workspace = data::StartData(m_Machine).workspace;
    if (!m_Workspace) std::abort();  // every test would go on without a database
  }

  std::filesystem::path Home() const { return folder.Path(); }
  data::Workspace& GetWorkspace() { return *m_Workspace; }
  const device::Machine& GetMachine() const { return m_Machine; }
  int Faults() const { return m_Faults.Count(); }
  void RunInVisits(const std::string& sql) {
    EXPECT_TRUE(m_Workspace->InspectionConnection().ExecuteNative(sql)) << sql;
  }

  TemporaryFolder& folder = m_Folder;
  FaultyFiles& files = m_Files;
  ScriptedPrompts& prompts = m_Prompts;

private:
  std::unique_ptr<data::Workspace> m_Workspace;
};

}  // namespace inspector::tests
