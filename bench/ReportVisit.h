// A device with visits for the reports to be made of.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "UnattendedPrompts.h"
#include "data/CategoryTable.h"
#include "data/FreshDatabase.h"
#include "data/InspectionTable.h"
#include "data/StartUp.h"
#include "data/StepTable.h"
#include "device/Format.h"
#include "reports/MakeReport.h"

namespace inspector::bench {

using device::Text;

constexpr std::size_t kPictureSize = 1024 * 1024;
constexpr int kFewPictures = 20;
constexpr int kManyPictures = 200;

// A device; at first it has no inspection.
class Visit {
public:
  // `files` may keep what is written in memory.
  explicit Visit(std::filesystem::path folder, device::Files& files)
      : m_Folder(std::move(folder)), m_Files(files) {
    const device::DatabasePaths databases{Text(data::kDefaultTemplatePath),
                                          Text(data::kDefaultInspectionPath)};
    std::filesystem::create_directories(m_Folder / "My Documents");
    Expect(data::CreateFreshDatabase(m_Paths.Resolve(databases.templatePath), data::DatabaseKind::Template,
                                     m_Faults));
    Expect(data::CreateFreshDatabase(m_Paths.Resolve(databases.inspectionPath),
                                     data::DatabaseKind::Inspection, m_Faults));
    m_Workspace = std::make_unique<data::Workspace>(m_Machine, databases);
    Expect(m_Workspace->GetDatabases().Open());
  }

  // Each with a picture in each of its steps.
  void AddInspectionsWithPictures() {
    PutPictures();
    AddInspection(kFewPictures);
    AddInspection(kManyPictures);
  }

  const std::filesystem::path& Folder() const { return m_Folder; }

  data::Workspace& GetWorkspace() { return *m_Workspace; }

  // The inspection's id is the number of its pictures.
  void WriteReport(int inspection, const std::filesystem::path& target, const Text& format = u"inspection",
                   const Text& layout = u"4 Column") {
    const auto outcome = reports::MakeReport(*m_Workspace, {inspection, format, {.layout = layout}, target});
    if (outcome.result != reports::ReportResult::Written || !outcome.notes.empty()) std::exit(1);
  }

  // Eight categories, each with an eighth of the steps.
  void AddPlainInspection(int inspectionID, int steps, const Text& comments) {
    constexpr int kCategories = 8;
    data::Transaction transaction(m_Workspace->InspectionConnection());
    AddHeader(inspectionID);
    for (int n = 0; n < kCategories; ++n) {
      AddCategory(inspectionID, 10 * inspectionID + n, device::Format(u"Category %d", n));
      for (int i = 0; i < steps / kCategories; ++i) AddStep(10 * inspectionID + n, i, comments);
    }
    if (!transaction.Commit()) std::exit(1);
  }

private:
  static void Expect(const Text& problem) {
    if (problem.empty()) return;
    std::fprintf(stderr, "%s\n", device::ToUtf8(problem).c_str());
    std::exit(1);
  }

  void PutPictures() {
    std::minstd_rand random(1);
    std::string bytes(kPictureSize, '\0');
    for (int i = 0; i < kManyPictures; ++i) {
      for (char& byte : bytes) byte = static_cast<char>(random());
      bytes.replace(0, 4, "\xFF\xD8\xFF\xDA");  // as a browser knows a photograph
      std::ofstream(m_Folder / ("p" + std::to_string(i) + ".jpg"), std::ios::binary) << bytes;
    }
  }

  void AddInspection(int pictures) {
    data::Transaction transaction(m_Workspace->InspectionConnection());
    AddHeader(pictures);
    AddCategory(pictures, pictures, u"Roof");
    for (int i = 0; i < pictures; ++i)
      AddStep(pictures, i,
              device::Format(u"The flashing has come loose. ***Path=\\p%d.jpg;Scaling=50***", i));
    if (!transaction.Commit()) std::exit(1);
  }

  void AddHeader(int inspectionID) {
    data::InspectionTable inspection(m_Workspace->GetDatabases());
    inspection.PrepareNew();
    inspection.m_InspectionID = inspectionID;
    inspection.m_InspectionNum = u"H-104";
    inspection.Write();
  }

  void AddCategory(int inspectionID, int categoryID, const Text& title) {
    data::CategoryTable category(m_Workspace->GetDatabases());
    category.PrepareNew();
    category.m_CategoryID = categoryID;
    category.m_InspectionID = inspectionID;
    category.m_CategoryTitle = title;
    category.Write();
  }

  void AddStep(int categoryID, int number, const Text& comments) {
    data::StepTable step(m_Workspace->GetDatabases());
    step.PrepareNew();
    step.m_CategoryID = categoryID;
    step.m_StepNumber = device::Decimal(number);
    step.m_StepTitle = u"Flashing, penetrations and chimney";
    step.m_RatingType = u"Condition";
    step.m_InspectResult = u"Repair";
    step.m_Materials = u"Asphalt;Other:Slate;";
    step.m_Comments = comments;
    step.Write();
  }

  std::filesystem::path m_Folder;
  UnattendedPrompts m_Prompts;
  device::SystemClock m_Clock;
  device::Files& m_Files;
  device::DevicePaths m_Paths{m_Folder};
  device::Registry m_Registry{m_Files, m_Folder / "registry.toml"};
  device::FaultLog m_Faults{m_Prompts, m_Clock, m_Folder / "faults.log"};
  device::Machine m_Machine{m_Paths, m_Files, m_Registry, m_Prompts, m_Clock, m_Faults};
  std::unique_ptr<data::Workspace> m_Workspace;
};

class TemporaryFolder {
public:
  TemporaryFolder() {
    // Beside the working folder rather than in a temporary one, which may be memory instead of a disk.
    std::string pattern = std::filesystem::current_path() / "inspector-bench-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) std::exit(1);
    m_Path = pattern;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_Path, ignored);
  }
  const std::filesystem::path& Path() const { return m_Path; }

private:
  std::filesystem::path m_Path;
};

}  // namespace inspector::bench
