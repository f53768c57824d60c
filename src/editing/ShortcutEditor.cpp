#include "editing/ShortcutEditor.h"

#include <algorithm>

#include "data/ExpandedTextTable.h"
#include "data/UniqueIDTable.h"
#include "device/Format.h"

namespace inspector::editing {
namespace {

using device::Format;

constexpr std::size_t kLongestShortcut = 80;  // of the column

bool IsOneWord(TextView word) {
  return !word.empty() && word.size() <= kLongestShortcut &&
         std::none_of(word.begin(), word.end(), [](char16_t unit) { return unit <= u' ' || unit == 0xA0; });
}

bool ComesBefore(const ShortcutEditor::Shortcut& left, const ShortcutEditor::Shortcut& right) {
  const auto smaller = [](char16_t a, char16_t b) { return device::FoldCase(a) < device::FoldCase(b); };
  return std::lexicographical_compare(left.shortCut.begin(), left.shortCut.end(), right.shortCut.begin(),
                                      right.shortCut.end(), smaller);
}

bool FindRow(data::ExpandedTextTable& row, std::int32_t id) {
  row.OpenSQL(Format(u"SELECT * FROM ExpandedText WHERE ID = %d", id));
  return row.GetRecord(0);
}

}  // namespace

std::vector<ShortcutEditor::Shortcut> ShortcutEditor::All() {
  data::Databases& databases = m_Workspace.GetDatabases();
  const data::ReadScope reading(databases.Template());
  std::vector<Shortcut> all;
  data::ExpandedTextTable rows(databases);
  rows.Open();
  for (int n = 0; n < rows.RecordCount(); ++n)
    if (rows.GetRecord(n)) all.push_back({rows.m_ID, rows.m_ShortCut, rows.m_Expanded});
  std::stable_sort(all.begin(), all.end(), ComesBefore);
  return all;
}

ShortcutEditor::Result ShortcutEditor::Add(TextView shortCut, TextView expanded) {
  return Write(std::nullopt, shortCut, expanded);
}

ShortcutEditor::Result ShortcutEditor::Change(std::int32_t id, TextView shortCut, TextView expanded) {
  return Write(id, shortCut, expanded);
}

ShortcutEditor::Result ShortcutEditor::Write(std::optional<std::int32_t> id, TextView shortCut,
                                             TextView expanded) {
  if (!IsOneWord(shortCut)) return Result::NotOneWord;
  const Text words = device::StripLeadingControls(expanded);
  if (words.empty()) return Result::NothingToExpand;
  for (const Shortcut& other : All())
    if (other.id != id && device::EqualIgnoringCase(other.shortCut, shortCut)) return Result::Taken;
  data::Databases& databases = m_Workspace.GetDatabases();
  data::Transaction transaction(databases.Template());
  if (!transaction.IsOpen()) return Result::Failed;
  data::ExpandedTextTable row(databases);
  if (id) {
    if (!FindRow(row, *id)) {
      if (!row.Failed()) databases.Template().ReportVanishedRow(row.TableName());
      return Result::Failed;
    }
  } else {
    row.PrepareNew();
    row.m_ID = data::UniqueIDTable(databases, data::DatabaseKind::Template).NextID(row.TableName());
  }
  row.m_ShortCut = Text(shortCut);
  row.m_Expanded = words;
  return row.Write() && transaction.Commit() ? Result::Done : Result::Failed;
}

bool ShortcutEditor::Delete(std::int32_t id) {
  if (!device::ConfirmCaution(m_Workspace.GetPrompts(), u"Are you sure you want to delete this shortcut?"))
    return false;
  data::Databases& databases = m_Workspace.GetDatabases();
  data::Transaction transaction(databases.Template());
  data::ExpandedTextTable row(databases);
  return transaction.IsOpen() && FindRow(row, id) && row.DeleteCurrent() && transaction.Commit();
}

}  // namespace inspector::editing
