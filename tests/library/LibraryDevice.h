// A tablet with two fresh databases, and its library as rows that a test can compare.
#pragma once

#include <map>
#include <set>
#include <vector>

#include "data/RowDump.h"
#include "library/Library.h"
#include "support/Shell.h"
#include "support/StartedMachine.h"

namespace inspector::tests {

using device::Text;
using device::TextView;

using Library = std::map<Text, std::vector<data::RawRow>>;

class LibraryDevice : StartedMachine {
public:
  data::Workspace& GetWorkspace() { return *m_Workspace; }
  data::Connection& Connection() { return m_Workspace->TemplateConnection(); }
  const TemporaryFolder& Folder() const { return m_Folder; }
  FaultyFiles& Files() { return m_Files; }
  int FaultCount() const { return m_Faults.Count(); }

  Text Import(const std::filesystem::path& folder) {
    return library::ImportLibrary(*m_Workspace, folder, &m_Copy);
  }
  Text Export(const std::filesystem::path& folder) { return library::ExportLibrary(*m_Workspace, folder); }
  // Puts `content` into a folder of its own and imports it.
  Text ImportText(std::string_view content) {
    m_Folder.Put("edited/library.toml", content);
    return Import(m_Folder / "edited");
  }
  // The copy that the last import kept; empty when it kept none.
  const std::filesystem::path& Copy() const { return m_Copy; }

  void Run(const std::string& sql) { EXPECT_TRUE(Connection().ExecuteNative(sql)) << sql; }

  // What another program finds in the Template database.
  std::string Ask(const std::string& sql) { return Shell(Connection().File()).Ask(sql); }
  // Every table of the Template database.
  Library Everything() {
    Library all;
    for (const data::TableLayout& layout : data::AllLayouts()) {
      if (layout.database != data::DatabaseKind::Template) continue;
      EXPECT_TRUE(data::ReadRawRows(Connection(), layout, all[Text(layout.name)]));
    }
    return all;
  }

private:
  std::filesystem::path m_Copy;
};

inline std::filesystem::path StarterLibrary() {
  return INSPECTOR_SOURCE_DIR "/assets/library";
}

}  // namespace inspector::tests
