// A tablet with two fresh databases, and its library as rows that a test can compare.
#pragma once

#include <set>

#include "data/RowDump.h"
#include "library/Library.h"
#include "support/Shell.h"
#include "support/StartedMachine.h"

namespace inspector::tests {

using Library = std::map<Text, std::vector<data::RawRow>>;

struct LibraryDevice : StartedMachine {
  data::Connection& Connection() { return m_Workspace->TemplateConnection(); }

  // What is wrong, in UTF-8.
  std::string Import(const std::filesystem::path& folder) {
    return ToUtf8(library::ImportLibrary(*m_Workspace, folder, &m_Copy));
  }
  std::string Export(const std::filesystem::path& folder) {
    return ToUtf8(library::ExportLibrary(*m_Workspace, folder));
  }
  // Puts `content` into a folder of its own and imports it.
  std::string ImportText(std::string_view content) {
    m_Folder.Put("edited/library.toml", content);
    return Import(m_Folder / "edited");
  }
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

  std::filesystem::path m_Copy;  // that the last import kept; empty when it kept none
};

class LibraryTest : public ::testing::Test, protected LibraryDevice {};

inline std::filesystem::path StarterLibrary() {
  return INSPECTOR_SOURCE_DIR "/assets/library";
}

}  // namespace inspector::tests
