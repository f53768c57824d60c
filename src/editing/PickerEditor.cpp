#include "editing/PickerEditor.h"

#include "data/UniqueIDTable.h"
#include "device/Format.h"

namespace inspector::editing {
namespace {

using device::Format;

}  // namespace

std::vector<Text> PickerEditor::Names() {
  data::Databases& databases = m_Workspace.GetDatabases();
  const data::ReadScope reading(databases.Template());
  std::vector<Text> names;
  data::PickersTable rows(databases);
  rows.OpenSQL(u"SELECT * FROM Pickers ORDER BY PickerName");
  for (int n = 0; n < rows.RecordCount(); ++n)
    if (rows.GetRecord(n) && (names.empty() || names.back() != rows.m_PickerName))
      names.push_back(rows.m_PickerName);
  return names;
}

std::vector<PickerEditor::Item> PickerEditor::Items(TextView picker) {
  std::vector<Item> items;
  data::PickersTable rows(m_Workspace.GetDatabases());
  rows.OpenSQL(
      Format(u"SELECT Pickers.* FROM Pickers WHERE PickerName = \"%s\" ORDER BY PickerChoice;", picker));
  for (int n = 0; n < rows.RecordCount(); ++n)
    if (rows.GetRecord(n)) items.push_back({rows.m_ID, rows.m_PickerChoice});
  return items;
}

std::optional<std::int32_t> PickerEditor::AddItem(TextView picker) {
  const std::optional<Text> entered =
      m_Workspace.GetPrompts().AskText({u"Enter the new text for this picker.", u"New Item", {}});
  const Text word = device::StripLeadingControls(entered.value_or(Text()));
  if (word.empty()) return std::nullopt;
  data::Databases& databases = m_Workspace.GetDatabases();
  data::Transaction transaction(databases.Template());
  if (!transaction.IsOpen()) return std::nullopt;
  data::PickersTable row(databases);
  row.PrepareNew();
  row.m_PickerName = Text(picker);
  row.m_PickerChoice = word;
  row.m_ID = data::UniqueIDTable(databases, data::DatabaseKind::Template).NextID(row.TableName());
  return row.Write() && transaction.Commit() ? std::optional(row.m_ID) : std::nullopt;
}

bool PickerEditor::EditItem(std::int32_t id) {
  return Edit(id, u"Edit the text for this picker item.", u"Edit Item", true);
}

bool PickerEditor::EditText(std::int32_t id) {
  return Edit(id, u"Enter the new text for this item.", u"Edit Text", false);
}

bool PickerEditor::Find(data::PickersTable& row, std::int32_t id) {
  row.OpenSQL(Format(u"SELECT * FROM Pickers WHERE ID = %d", id));
  if (row.GetRecord(0)) return true;
  if (!row.Failed()) row.GetConnection().ReportVanishedRow(row.TableName());
  return false;
}

bool PickerEditor::Edit(std::int32_t id, const Text& prompt, const Text& title, bool offersWord) {
  data::Databases& databases = m_Workspace.GetDatabases();
  data::PickersTable row(databases);
  if (!Find(row, id)) return false;
  const std::optional<Text> entered =
      m_Workspace.GetPrompts().AskText({prompt, title, offersWord ? row.m_PickerChoice : Text()});
  const Text word = device::StripLeadingControls(entered.value_or(Text()));
  if (word.empty() || word == row.m_PickerChoice) return false;
  data::Transaction transaction(databases.Template());
  if (!transaction.IsOpen() || !Find(row, id)) return false;
  row.m_PickerChoice = word;
  return row.Write() && transaction.Commit();
}

bool PickerEditor::DeleteItem(std::int32_t id) {
  data::Databases& databases = m_Workspace.GetDatabases();
  data::PickersTable row(databases);
  if (!Find(row, id)) return false;
  if (!device::ConfirmCaution(m_Workspace.GetPrompts(),
                              device::Phrase(u"Are you sure you want to delete \"%s\" from this picker?",
                                             Text(row.m_PickerChoice))))
    return false;
  data::Transaction transaction(databases.Template());
  return transaction.IsOpen() && Find(row, id) && row.DeleteCurrent() && transaction.Commit();
}

bool PickerEditor::DeletePicker(TextView picker) {
  if (!device::ConfirmCaution(m_Workspace.GetPrompts(),
                              u"Are you sure you want to delete this picker and all its items?"))
    return false;
  data::Databases& databases = m_Workspace.GetDatabases();
  data::Transaction transaction(databases.Template());
  data::PickersTable rows(databases);
  if (!transaction.IsOpen()) return false;
  rows.OpenSQL(Format(u"DELETE FROM %s WHERE PickerName = \"%s\"", rows.TableName(), picker));
  return !rows.Failed() && transaction.Commit();
}

}  // namespace inspector::editing
