#include "inspection/HeaderForm.h"

#include <utility>

#include "data/InspectionTypeTable.h"
#include "data/PickersTable.h"
#include "device/Format.h"

namespace inspector::inspection {
namespace {

bool HasRows(data::Databases& databases, TextView list) {
  data::PickersTable pickers(databases);
  pickers.OpenSQL(device::Format(
      u"SELECT Pickers.* FROM Pickers WHERE PickerName = \"%s\" ORDER BY PickerChoice;", list));
  return pickers.RecordCount() > 0;
}

}  // namespace

std::vector<const HeaderField*> FieldsOn(HeaderPage page) {
  const std::vector<TextView> names = page == HeaderPage::Dwelling
                                          ? std::vector<TextView>{u"number",
                                                                  u"client",
                                                                  u"phone",
                                                                  u"address",
                                                                  u"citystatezip",
                                                                  u"clientaddress",
                                                                  u"clientcitystatezip",
                                                                  u"general",
                                                                  u"notes"}
                                          : std::vector<TextView>{u"agent", u"listingagent", u"company"};
  std::vector<const HeaderField*> fields;
  for (const TextView name : names) fields.push_back(FindHeaderField(name));
  return fields;
}

bool HeaderForm::MustFill() {
  const std::int32_t current = m_Document.Inspection().m_InspectionID;
  const bool wasForgotten = std::exchange(m_MustFill, false);
  const bool differs = !m_HasShown || m_ShownID != current || wasForgotten;
  if (m_ShownID != current) m_HasUnwritten = false;
  m_HasShown = true;
  m_ShownID = current;
  return differs;
}

std::vector<Text> HeaderForm::DocTypes() {
  data::InspectionTypeTable types(m_Document.GetWorkspace().GetDatabases());
  types.Open();
  std::vector<Text> names;
  for (int n = 0; n < types.RecordCount(); ++n)
    if (types.GetRecord(n)) names.push_back(types.m_InspectionType);
  return names;
}

std::vector<Text> HeaderForm::Choices(const HeaderField& field) {
  return PickerChoices(m_Document.GetWorkspace().GetDatabases(), field);
}

Text HeaderForm::ListToEdit(const HeaderField& field) {
  data::Databases& databases = m_Document.GetWorkspace().GetDatabases();
  const bool fallback = !HasRows(databases, field.pickerList) && HasRows(databases, field.fallbackList);
  return Text(fallback ? field.fallbackList : field.pickerList);
}

// What was typed for an inspection that is no longer the current one was written when it was left.
bool HeaderForm::IsShown() const {
  return m_HasShown && m_Document.HasInspection() && m_ShownID == m_Document.Inspection().m_InspectionID;
}

void HeaderForm::Filled(const EnteredFields& shown) {
  m_Known.clear();
  for (const Entered& one : shown) m_Known[one.field] = one.text;
}

bool HeaderForm::TakeOver(const EnteredFields& entered) {
  if (!IsShown()) return false;
  bool differed = false;
  for (const Entered& one : entered) {
    // A field that nobody touched must not undo what the document has got elsewhere.
    const auto [known, isNew] = m_Known.try_emplace(one.field, one.text);
    if (!isNew && known->second == one.text) continue;
    known->second = one.text;
    Text& stored = m_Document.Inspection().*one.field->text;
    Text text = device::StripLeadingControls(one.text);
    if (stored == text) continue;
    stored = std::move(text);
    differed = true;
  }
  m_HasUnwritten = m_HasUnwritten || differed;
  return differed;
}

bool HeaderForm::TakeOverDate(const device::CalendarTime& date) {
  if (!IsShown() || m_Document.Inspection().m_InspectionDate == date) return false;
  m_Document.Inspection().m_InspectionDate = date;
  m_HasUnwritten = true;
  return true;
}

bool HeaderForm::Save(const EnteredFields& entered) {
  TakeOver(entered);
  if (!m_HasUnwritten) return true;
  if (!m_Document.SaveHeader()) return false;
  m_HasUnwritten = false;
  return true;
}

DocTypeChoice HeaderForm::SelectDocType(const EnteredFields& entered, TextView newType) {
  TakeOver(entered);
  const DocTypeChoice choice = ConfirmDocTypeChange(m_Document, newType);
  if (choice == DocTypeChoice::Change) {
    Save(entered);  // taking the change back must not take back what was typed before it
    m_Document.ChangeDocType(newType);
  }
  return choice;
}

}  // namespace inspector::inspection
