#include <map>
#include <optional>
#include <system_error>
#include <vector>

#include "data/KeyReport.h"
#include "data/RowDump.h"
#include "data/Upgrade.h"
#include "device/Format.h"
#include "library/Library.h"
#include "library/LibraryFolder.h"
#include "library/LibraryReader.h"
#include "library/LibraryTables.h"

namespace inspector::library {
namespace {

using device::Format;
using device::FromUtf8;

using TableRows = std::map<const data::TableLayout*, std::vector<data::RawRow>>;

struct FileRows {
  Text name;
  std::vector<LibraryRow> rows;
};

Text ReadFolder(device::Files& files, const std::filesystem::path& folder, std::vector<FileRows>& library) {
  std::vector<std::filesystem::path> names;
  if (Text problem = FindLibraryFiles(files, folder, names); !problem.empty()) return problem;
  if (names.empty())
    return Format(u"The folder %s holds no .toml files, so there is no library to read.",
                  FromUtf8(folder.string()));
  std::uint64_t total = 0;
  for (const std::filesystem::path& name : names) {
    FileRows file;
    file.name = FromUtf8(name.generic_string());
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(folder / name, error);
    if (!error && (size > kLargestFile || (total += size) > kLargestLibrary))
      return Format(u"%s is too large for a file of a library.", file.name);
    const std::optional<std::string> content = device::ReadWhole(files, folder / name, kLargestFile);
    if (!content) return Format(u"%s cannot be read. Check its permissions.", file.name);
    if (Text problem = ReadLibraryFile(*content, file.name, file.rows); !problem.empty()) return problem;
    library.push_back(std::move(file));
  }
  return {};
}

// What the file names goes over what the database holds, row by row; there is one row as a rule.
void MergeOptions(const LibraryRow& row, const std::vector<data::RawRow>& stored,
                  std::vector<data::RawRow>& merged) {
  data::RawRow values = merged.size() < stored.size() ? stored[merged.size()] : data::NeutralRow(*row.table);
  for (std::size_t at = 0; at < values.size(); ++at)
    if (row.isNamed[at]) values[at] = row.values[at];
  merged.push_back(std::move(values));
}

Text Arrange(const std::vector<FileRows>& library, const TableRows& stored, TableRows& content) {
  const data::TableLayout* const options = FindLibraryTable(kOptions);
  const data::TableLayout* const counters = FindLibraryTable(kUniqueID);
  const FileRows* optionsFile = nullptr;
  for (const FileRows& file : library) {
    for (const LibraryRow& row : file.rows) {
      if (row.table != options) {
        content[row.table].push_back(row.values);
        continue;
      }
      if (optionsFile && optionsFile != &file) {
        return Format(u"%s, line %d: [[Options]] stands in %s already, and only one of them could count.",
                      file.name, row.line, optionsFile->name);
      }
      optionsFile = &file;
      MergeOptions(row, stored.at(options), content[options]);
    }
  }
  // Lost counters would give new rows the keys of old ones.
  for (const data::TableLayout* kept : {options, counters})
    if (!content.contains(kept)) content[kept] = stored.at(kept);
  return {};
}

bool Store(data::Connection& connection, const TableRows& content) {
  data::Transaction transaction(connection);
  if (!transaction.IsOpen()) return false;
  for (const data::TableLayout* table : LibraryTables()) {
    const auto found = content.find(table);
    if (!data::ReplaceRawRows(connection, *table,
                              found == content.end() ? std::vector<data::RawRow>() : found->second))
      return false;
  }
  // A library written by hand may have rows that its counters do not know of.
  return data::RepairCounters(connection, data::DatabaseKind::Template) && transaction.Commit();
}

}  // namespace

Text ImportLibrary(data::Workspace& workspace, const std::filesystem::path& folder,
                   std::filesystem::path* copy) {
  if (copy) copy->clear();
  const auto unchanged = [](const Text& problem) { return problem + u" Nothing was changed."; };
  data::Connection& connection = workspace.TemplateConnection();
  const Text database = FromUtf8(connection.File().string());

  std::vector<FileRows> library;
  if (const Text problem = ReadFolder(workspace.GetMachine().files, folder, library); !problem.empty())
    return unchanged(problem);
  TableRows stored;
  for (const data::TableLayout* table : LibraryTables())
    if (!data::ReadRawRows(connection, *table, stored[table]))
      return unchanged(Format(u"The library in the database %s cannot be read.", database));
  TableRows content;
  if (const Text problem = Arrange(library, stored, content); !problem.empty()) return unchanged(problem);

  std::filesystem::path kept;
  if (copy) {
    if (Text problem = data::KeepCopy(connection, workspace.GetMachine().files, ".before-import", &kept);
        !problem.empty())
      return problem;
  }
  if (!Store(connection, content)) {
    std::error_code ignored;
    if (!kept.empty()) std::filesystem::remove(kept, ignored);
    return unchanged(Format(u"The library cannot be stored in the database %s.", database));
  }
  if (copy) *copy = kept;
  workspace.ForgetOptions();
  return {};
}

}  // namespace inspector::library
