// A device in a temporary folder with both databases, and a file in memory.
#pragma once

#include "reports/MakeReport.h"
#include "support/StartedMachine.h"

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
class ReportDevice : StartedMachine {
public:
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
};

}  // namespace inspector::tests
