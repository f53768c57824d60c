#include <algorithm>
#include <map>
#include <optional>
#include <unordered_map>

#include "data/RowDump.h"
#include "device/Format.h"
#include "library/Library.h"
#include "library/LibraryFolder.h"
#include "library/LibraryTables.h"
#include "library/LibraryWriter.h"

namespace inspector::library {
namespace {

using device::Format;
using device::FromUtf8;
using device::ToUtf8;

using TableRows = std::map<const data::TableLayout*, std::vector<data::RawRow>>;
// Per row of the owning table, the keys that its rows of the link table name.
using LinksOfRows = std::vector<std::vector<std::int32_t>>;

std::string FileName(const data::TableLayout& table) {
  return ToUtf8(table.name) + ".toml";
}

// The rows of a link table as lists on the rows of their owners. Nothing when the lists would not read back
// as the same rows in the same order: strays, links out of order, a link text of its own.
std::optional<LinksOfRows> LinksAsLists(const data::TableLayout& links, const std::vector<data::RawRow>& rows,
                                        const std::vector<data::RawRow>& owners) {
  std::unordered_map<std::int32_t, std::size_t> placeOfOwner;
  for (std::size_t at = 0; at < owners.size(); ++at)
    if (const auto* id = std::get_if<std::int32_t>(&owners[at][0])) placeOfOwner.emplace(*id, at);
  LinksOfRows lists(owners.size());
  std::size_t last = 0;
  for (const data::RawRow& row : rows) {
    const auto* const linked = std::get_if<std::int32_t>(&row[0]);
    const auto* const id = std::get_if<std::int32_t>(&row[1]);
    if (!linked || !id || row != MakeLink(links, *linked, *id)) return std::nullopt;
    const auto owner = placeOfOwner.find(*id);
    if (owner == placeOfOwner.end() || owner->second < last) return std::nullopt;
    last = owner->second;
    lists[last].push_back(*linked);
  }
  return lists;
}

class Exporter {
public:
  explicit Exporter(const TableRows& content) : m_Content(content) {
    for (const LinkShorthand& shorthand : LinkShorthands()) {
      const data::TableLayout& links = *FindLibraryTable(shorthand.links);
      auto lists = LinksAsLists(links, content.at(&links), content.at(FindLibraryTable(shorthand.owner)));
      if (lists) m_Lists.emplace(shorthand.key, std::move(*lists));
    }
  }

  std::string LinesOf(const data::TableLayout& table) const {
    for (const LinkShorthand& shorthand : LinkShorthands()) {
      if (shorthand.links != table.name || !m_Lists.contains(shorthand.key)) continue;
      return "# " + ToUtf8(table.name) + ": these links stand with the rows of " + ToUtf8(shorthand.owner) +
             ", as " + ToUtf8(shorthand.key) + ".\n";
    }
    const std::vector<data::RawRow>& rows = m_Content.at(&table);
    std::string lines =
        "# " + ToUtf8(table.name) + (rows.empty() ? ": no rows.\n" : ": the rows in their order.\n");
    for (std::size_t at = 0; at < rows.size(); ++at)
      WriteLibraryRow(table, rows[at], ListsOf(table, at), lines);
    return lines;
  }

private:
  std::vector<LinkList> ListsOf(const data::TableLayout& table, std::size_t row) const {
    std::vector<LinkList> lists;
    for (const LinkShorthand& shorthand : LinkShorthands()) {
      if (shorthand.owner != table.name) continue;
      if (const auto found = m_Lists.find(shorthand.key); found != m_Lists.end())
        lists.emplace_back(shorthand.key, found->second[row]);
    }
    return lists;
  }

  const TableRows& m_Content;
  std::map<TextView, LinksOfRows> m_Lists;
};

Text RefuseStrangeFiles(device::Files& files, const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> found;
  if (Text problem = FindLibraryFiles(files, folder, found); !problem.empty()) return problem;
  for (const std::filesystem::path& name : found) {
    const auto& tables = LibraryTables();
    if (std::any_of(tables.begin(), tables.end(),
                    [&](const auto* table) { return name == FileName(*table); }))
      continue;
    return Format(
        u"The folder %s holds %s, which would be read together with the exported files. Nothing was "
        u"written. Choose an empty folder.",
        FromUtf8(folder.string()), FromUtf8(name.generic_string()));
  }
  return {};
}

}  // namespace

Text ExportLibrary(data::Workspace& workspace, const std::filesystem::path& folder) {
  device::Files& files = workspace.GetMachine().files;
  if (Text problem = RefuseStrangeFiles(files, folder); !problem.empty()) return problem;

  data::Connection& connection = workspace.TemplateConnection();
  TableRows content;
  {
    const data::ReadScope reading(connection);
    for (const data::TableLayout* table : LibraryTables()) {
      Text misfit;
      if (!data::ReadRawRows(connection, *table, content[table], &misfit)) {
        return Format(u"The library in the database %s cannot be read. Nothing was written.",
                      FromUtf8(connection.File().string()));
      }
      if (!misfit.empty()) {
        return Format(
            u"The database %s holds a value that a library cannot hold (%s). Nothing was written. Correct "
            u"the value there.",
            FromUtf8(connection.File().string()), misfit);
      }
    }
  }

  const Exporter exporter(content);
  std::map<const data::TableLayout*, std::string> lines;
  std::uint64_t total = 0;
  for (const data::TableLayout* table : LibraryTables()) {
    const std::string& text = lines[table] = exporter.LinesOf(*table);
    if (text.size() > kLargestFile || (total += text.size()) > kLargestLibrary) {
      return Format(
          u"The table %s is too large for a library folder: it could not be read again. Nothing was written.",
          table->name);
    }
  }
  for (const data::TableLayout* table : LibraryTables()) {
    const std::filesystem::path path = folder / FileName(*table);
    const auto file = files.Create(path);
    if (!file->Write(lines[table]) || !file->Commit()) {
      return Format(u"The file %s cannot be written: %s. The folder is not complete.",
                    FromUtf8(path.string()), FromUtf8(file->Error()));
    }
  }
  return {};
}

}  // namespace inspector::library
