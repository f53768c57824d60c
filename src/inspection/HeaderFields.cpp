#include "inspection/HeaderFields.h"

#include "data/PickersTable.h"
#include "device/Format.h"

namespace inspector::inspection {
namespace {

using data::InspectionTable;

constexpr HeaderField kFields[] = {
    {u"number", u"Doc #", &InspectionTable::m_InspectionNum},
    {u"client", u"Client Name", &InspectionTable::m_ClientName},
    {u"phone", u"Client Phone", &InspectionTable::m_ClientPhone},
    {u"address", u"*Dwelling Address", &InspectionTable::m_DwellingAddress},
    {u"citystatezip", u"City/State/Zip", &InspectionTable::m_CityStateZip, u"Label01", u"EvalCityStateZip"},
    {u"clientaddress", u"Client Address", &InspectionTable::m_ClientAddress},
    {u"clientcitystatezip", u"Client City/State/Zip", &InspectionTable::m_ClientCityStateZip, u"Label02",
     u"ClientCityStateZip"},
    {u"agent", u"Client's Agent", &InspectionTable::m_ClientAgent, u"Label03", u"Realtor"},
    {u"listingagent", u"Listing Agent", &InspectionTable::m_ListingAgent, u"Label05", u"ListingAgent"},
    {u"company", u"Real Estate Company", &InspectionTable::m_RealEstateCompany},
    {u"date", u"Date", nullptr},
    {u"general", u"General Information", &InspectionTable::m_GeneralInformation},
    {u"notes", u"Private Notes", &InspectionTable::m_PrivateNotes},
};

}  // namespace

std::span<const HeaderField> HeaderFields() {
  return kFields;
}

const HeaderField* FindHeaderField(TextView name) {
  for (const HeaderField& field : kFields)
    if (device::EqualIgnoringCase(field.name, name)) return &field;
  return nullptr;
}

bool SetHeaderField(InspectionTable& inspection, const HeaderField& field, TextView typed) {
  if (field.text) {
    inspection.*field.text = device::StripLeadingControls(typed);
    return true;
  }
  if (typed.empty()) {
    inspection.m_InspectionDate = {};
    return true;
  }
  const std::optional<device::CalendarTime> date = device::FromIso(device::ToUtf8(typed));
  if (date) inspection.m_InspectionDate = *date;
  return date.has_value();
}

std::vector<Text> PickerChoices(data::Databases& databases, const HeaderField& field) {
  std::vector<Text> choices;
  data::PickersTable pickers(databases);
  for (const TextView list : {field.pickerList, field.fallbackList}) {
    pickers.OpenSQL(device::Format(
        u"SELECT Pickers.* FROM Pickers WHERE PickerName = \"%s\" ORDER BY PickerChoice;", list));
    for (int n = 0; n < pickers.RecordCount(); ++n)
      if (pickers.GetRecord(n)) choices.push_back(pickers.m_PickerChoice);
    if (!choices.empty()) break;
  }
  choices.push_back(u"Edit List...");
  return choices;
}

DocTypeChoice ConfirmDocTypeChange(CInspectorDoc& document, TextView newType) {
  const Text& current = document.Inspection().m_DocType;
  if (current == newType) return DocTypeChoice::Same;
  if (current.empty()) return DocTypeChoice::Change;
  const bool confirmed =
      device::ConfirmDataAlert(document.GetWorkspace().GetPrompts(),
                               u"Warning! Changing the Doc Type will remove all categories and steps for "
                               u"this inspection  Tap OK to continue "
                               u"changing the Doc Type. \r\r Do you wish to proceed?");
  return confirmed ? DocTypeChoice::Change : DocTypeChoice::Refused;
}

bool MakeLackingCategories(CInspectorDoc& document) {
  document.FinishDocTypeChange();
  document.LoadCategories();
  data::Workspace& workspace = document.GetWorkspace();
  const Text type = document.Inspection().m_DocType;
  if (type.empty()) {
    device::Alert(workspace.GetPrompts(),
                  u"This inspection has no Doc Type yet. Choose one in the header; it makes the categories.");
    return false;
  }
  if (document.Categories().Failed()) return false;
  if (document.Categories().RecordCount() > 0) {
    device::Alert(workspace.GetPrompts(), u"This inspection has its categories already.");
    return false;
  }
  if (!HasInspectionType(workspace.GetDatabases(), type)) {
    device::Alert(workspace.GetPrompts(),
                  device::Phrase(u"The library of this device has no Doc Type \"%s\". Choose another one in "
                                 u"the header.",
                                 type));
    return false;
  }
  document.ChangeDocType(type);
  return document.FinishDocTypeChange();
}

}  // namespace inspector::inspection
