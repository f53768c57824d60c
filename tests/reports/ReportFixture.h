// A device in a temporary folder with both databases, and the small visit that the expected reports are
// about.
#pragma once

#include <nlohmann/json.hpp>

#include "data/StepTable.h"
#include "data/Workspace.h"
#include "device/Machine.h"
#include "reports/InspectionReport.h"
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
class ReportDevice {
public:
  ReportDevice();

  std::filesystem::path Home() const { return folder.Path(); }
  data::Workspace& GetWorkspace() { return *m_Workspace; }
  const device::Machine& GetMachine() const { return m_Machine; }
  int Faults() const { return m_Faults.Count(); }

  std::int32_t AddInspection(const device::Text& documentNumber);
  std::int32_t AddCategory(std::int32_t inspectionID, const device::Text& number, const device::Text& title);
  void AddStep(std::int32_t categoryID, const device::Text& number, const device::Text& rating,
               const device::Text& comments);

  TemporaryFolder folder;
  FaultyFiles files;
  ScriptedPrompts prompts;

private:
  FixedClock m_Clock;
  device::DevicePaths m_Paths;
  device::Registry m_Registry;
  device::FaultLog m_Faults;
  device::Machine m_Machine;
  std::unique_ptr<data::Workspace> m_Workspace;
  std::int32_t m_LastID = 1000;
};

// The folder with small-inspection.json and the reports that are expected of it.
std::filesystem::path ExpectedFolder();
// The visit with the differences of one of its variants worked in.
nlohmann::json ReadVisit(const nlohmann::json& variant);
// Puts the visit on the device; returns its inspection.
std::int32_t StoreVisit(ReportDevice& device, const nlohmann::json& visit);

device::Text TextOf(const nlohmann::json& value);

}  // namespace inspector::tests
