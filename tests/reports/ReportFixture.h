// A device in a temporary folder with both databases, and the small visit that the expected reports are
// about.
#pragma once

#include <nlohmann/json.hpp>

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
  ReportDevice();

  std::filesystem::path Home() const { return folder.Path(); }
  data::Workspace& GetWorkspace() { return *m_Workspace; }
  const device::Machine& GetMachine() const { return m_Machine; }
  int Faults() const { return m_Faults.Count(); }
  void RunInLibrary(const std::string& sql) {
    EXPECT_TRUE(m_Workspace->TemplateConnection().ExecuteNative(sql)) << sql;
  }
  void RunInVisits(const std::string& sql) {
    EXPECT_TRUE(m_Workspace->InspectionConnection().ExecuteNative(sql)) << sql;
  }

  TemporaryFolder& folder = m_Folder;
  FaultyFiles& files = m_Files;
  ScriptedPrompts& prompts = m_Prompts;

private:
  std::unique_ptr<data::Workspace> m_Workspace;
};

// The folder with small-inspection.json and the reports that are expected of it.
std::filesystem::path ExpectedFolder();
// The visit with the differences of one of its variants worked in.
nlohmann::json ReadVisit(const nlohmann::json& variant);
// Puts the visit on the device; returns its inspection.
std::int32_t StoreVisit(ReportDevice& device, const nlohmann::json& visit);

device::Text TextOf(const nlohmann::json& value);

}  // namespace inspector::tests
