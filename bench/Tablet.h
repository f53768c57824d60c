// A tablet to measure on, with the starter library, and the engine alone beside it.
#pragma once

#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "UnattendedPrompts.h"
#include "data/FreshDatabase.h"
#include "data/StartUp.h"
#include "inspection/InspectorDoc.h"
#include "library/Library.h"

namespace inspector::bench {

using device::Text;
using device::TextView;

inline void MustBe(bool done, const char* what) {
  if (!done) Fail(std::string(what) + " failed");
}

// A tablet with the starter library, in a folder that goes with it.
class Tablet {
public:
  Tablet() {
    std::string pattern = std::filesystem::temp_directory_path() / "inspector-bench-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) Fail("no temporary folder");
    m_Folder = pattern;
    m_Paths = std::make_unique<device::DevicePaths>(m_Folder);
    m_Registry = std::make_unique<device::Registry>(m_Files, m_Folder / "registry.toml");
    for (const auto& [file, kind] : {std::pair{TemplateFile(), data::DatabaseKind::Template},
                                     std::pair{InspectionFile(), data::DatabaseKind::Inspection}})
      if (const Text problem = data::CreateFreshDatabase(file, kind, m_Faults); !problem.empty())
        Fail(device::ToUtf8(problem));
    const device::Machine machine{*m_Paths, m_Files, *m_Registry, m_Prompts, m_Clock, m_Faults};
    m_Workspace = data::StartData(machine).workspace;
    if (!m_Workspace) Fail("the databases do not start");
    const Text problem = library::ImportLibrary(*m_Workspace, INSPECTOR_ASSETS "/library");
    if (!problem.empty()) Fail(device::ToUtf8(problem));
    m_Document = std::make_unique<inspection::CInspectorDoc>(*m_Workspace);
  }
  ~Tablet() {
    Close();
    std::error_code ignored;
    std::filesystem::remove_all(m_Folder, ignored);
  }
  Tablet(const Tablet&) = delete;
  Tablet& operator=(const Tablet&) = delete;

  // Lets go of the databases, for a program that opens them.
  void Close() {
    m_Document.reset();
    m_Workspace.reset();
  }

  data::Workspace& GetWorkspace() { return *m_Workspace; }
  inspection::CInspectorDoc& Document() { return *m_Document; }
  std::filesystem::path TemplateFile() const { return m_Folder / "My Documents/Template_Data.cdb"; }
  std::filesystem::path InspectionFile() const { return m_Folder / "My Documents/Inspection_Data.cdb"; }
  const std::filesystem::path& Folder() const { return m_Folder; }

private:
  std::filesystem::path m_Folder;
  UnattendedPrompts m_Prompts;
  device::SystemClock m_Clock;
  device::HostFiles m_Files;
  device::FaultLog m_Faults{m_Prompts, m_Clock, "/dev/null"};
  std::unique_ptr<device::DevicePaths> m_Paths;
  std::unique_ptr<device::Registry> m_Registry;
  std::unique_ptr<data::Workspace> m_Workspace;
  std::unique_ptr<inspection::CInspectorDoc> m_Document;
};

// The engine alone, with the journal and the syncing that the program asks for.
class Engine {
public:
  explicit Engine(const std::filesystem::path& file) {
    if (sqlite3_open(file.c_str(), &m_Database) != SQLITE_OK) Fail("no engine");
    Run("PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL");
  }
  ~Engine() { sqlite3_close(m_Database); }
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;

  void Run(const std::string& sql) {
    char* problem = nullptr;
    if (sqlite3_exec(m_Database, sql.c_str(), nullptr, nullptr, &problem) != SQLITE_OK)
      Fail(sql + ": " + problem);
  }
  int Number(const std::string& sql) {
    int number = 0;
    const auto take = [](void* into, int, char** values, char**) {
      *static_cast<int*>(into) = std::atoi(values[0]);
      return 0;
    };
    if (sqlite3_exec(m_Database, sql.c_str(), take, &number, nullptr) != SQLITE_OK) Fail(sql);
    return number;
  }

private:
  sqlite3* m_Database = nullptr;
};

// `copies` more of the inspection, with its categories and steps, made by the engine: key after key.
inline void CopyInspection(Engine& engine, std::int32_t key, int copies) {
  engine.Run(
      "BEGIN; CREATE TEMP TABLE I AS SELECT * FROM Inspection WHERE InspectionID = " + std::to_string(key) +
      "; CREATE TEMP TABLE C AS SELECT * FROM Category WHERE InspectionID = " + std::to_string(key) +
      "; CREATE TEMP TABLE S AS SELECT * FROM Step WHERE CategoryID IN (SELECT CategoryID FROM C)");
  for (int n = 0; n < copies; ++n) {
    engine.Run(
        "UPDATE I SET InspectionID = InspectionID + 1; INSERT INTO Inspection SELECT * FROM I;"
        "UPDATE C SET InspectionID = InspectionID + 1, CategoryID = CategoryID + 1000; INSERT INTO Category "
        "SELECT * FROM C;"
        "UPDATE S SET StepID = StepID + 1000, CategoryID = CategoryID + 1000; INSERT INTO Step SELECT * FROM "
        "S");
  }
  engine.Run("COMMIT; PRAGMA wal_checkpoint(TRUNCATE)");
}

}  // namespace inspector::bench
