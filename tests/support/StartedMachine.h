// A machine with two fresh databases, started as the programs start.
#pragma once

#include <cstdlib>

#include "data/FreshDatabase.h"
#include "data/StartUp.h"
#include "support/TestSupport.h"

namespace inspector::tests {

struct StartedMachine : ScriptedMachine {
  StartedMachine() {
    for (const auto& [name, kind] : {std::pair{"Template_Data.cdb", data::DatabaseKind::Template},
                                     {"Inspection_Data.cdb", data::DatabaseKind::Inspection}})
      EXPECT_EQ(data::CreateFreshDatabase(m_Folder / "My Documents" / name, kind, m_Faults), u"");
    Start();
  }
  // Starts again on the same files.
  void Start() {
    m_Workspace.reset();
    m_Workspace = data::StartData(m_Machine).workspace;
    if (m_Workspace) return;
    ADD_FAILURE() << "The databases do not start.";
    std::abort();  // every test would go on without a database
  }
  // In another program's words; a table may be gone afterwards.
  void Run(data::DatabaseKind kind, const std::string& sql) {
    data::Connection& connection = m_Workspace->GetDatabases().Get(kind);
    EXPECT_TRUE(connection.ExecuteNative(sql)) << sql;
    connection.SchemaChanged();
  }
  void RunInLibrary(const std::string& sql) { Run(data::DatabaseKind::Template, sql); }
  void RunInVisits(const std::string& sql) { Run(data::DatabaseKind::Inspection, sql); }

  std::unique_ptr<data::Workspace> m_Workspace;
};

}  // namespace inspector::tests
