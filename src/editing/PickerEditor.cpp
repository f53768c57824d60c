#include "editing/PickerEditor.h"

#include "data/PickersTable.h"
#include "data/UniqueIDTable.h"
#include "device/Format.h"

namespace inspector::editing {
namespace {

using device::Format;

bool OpenPicker(data::PickersTable& rows, TextView picker) {
  rows.OpenSQL(
      Format(u"SELECT Pickers.* FROM Pickers WHERE PickerName = \"%s\" ORDER BY PickerChoice;", picker));
  return !rows.Failed();
}

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

std::vector<Text> PickerEditor::Choices(TextView picker) {
  std::vector<Text> choices;
  data::PickersTable rows(m_Workspace.GetDatabases());
  OpenPicker(rows, picker);
  for (int n = 0; n < rows.RecordCount(); ++n)
    if (rows.GetRecord(n)) choices.push_back(rows.m_PickerChoice);
  return choices;
}

std::optional<Text> PickerEditor::AddItem(TextView picker) {
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
  return row.Write() && transaction.Commit() ? std::optional(word) : std::nullopt;
}

std::optional<Text> PickerEditor::EditItem(TextView picker, std::size_t choice) {
  return Edit(picker, choice, u"Edit the text for this picker item.", u"Edit Item", true);
}

std::optional<Text> PickerEditor::EditText(TextView picker, std::size_t choice) {
  return Edit(picker, choice, u"Enter the new text for this item.", u"Edit Text", false);
}

std::optional<Text> PickerEditor::Edit(TextView picker, std::size_t choice, const Text& prompt,
                                       const Text& title, bool offersWord) {
  data::Databases& databases = m_Workspace.GetDatabases();
  data::PickersTable row(databases);
  const int n = static_cast<int>(choice);
  if (!OpenPicker(row, picker) || !row.GetRecord(n)) return std::nullopt;
  const std::optional<Text> entered =
      m_Workspace.GetPrompts().AskText({prompt, title, offersWord ? row.m_PickerChoice : Text()});
  const Text word = device::StripLeadingControls(entered.value_or(Text()));
  if (word.empty() || word == row.m_PickerChoice) return std::nullopt;
  data::Transaction transaction(databases.Template());
  if (!transaction.IsOpen() || !row.GetRecord(n)) return std::nullopt;
  row.m_PickerChoice = word;
  return row.Write() && transaction.Commit() ? std::optional(word) : std::nullopt;
}

bool PickerEditor::DeleteItem(TextView picker, std::size_t choice) {
  data::Databases& databases = m_Workspace.GetDatabases();
  data::PickersTable row(databases);
  const int n = static_cast<int>(choice);
  if (!OpenPicker(row, picker) || !row.GetRecord(n)) return false;
  if (!device::ConfirmCaution(
          m_Workspace.GetPrompts(),
          Format(u"Are you sure you want to delete \"%s\" from this picker?", Text(row.m_PickerChoice))))
    return false;
  data::Transaction transaction(databases.Template());
  return transaction.IsOpen() && row.GetRecord(n) && row.DeleteCurrent() && transaction.Commit();
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
