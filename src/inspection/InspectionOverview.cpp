#include "inspection/InspectionOverview.h"

#include "data/UniqueIDTable.h"
#include "inspection/InspectionRows.h"

namespace inspector::inspection {

std::vector<InspectionOverview::Row> InspectionOverview::Refill() {
  std::vector<Row> rows;
  data::Databases& databases = m_Document.GetWorkspace().GetDatabases();
  const data::ReadScope reading(databases.Inspection());
  data::InspectionTable inspections(databases);
  inspections.Open();
  for (int n = 0; n < inspections.RecordCount(); ++n) {
    if (!inspections.GetRecord(n)) continue;
    rows.push_back({inspections.m_InspectionID,
                    {inspections.m_ClientName, inspections.m_DwellingAddress, inspections.m_CityStateZip,
                     inspections.m_InspectionNum}});
  }
  return rows;
}

bool InspectionOverview::OnDelete(int selected, int selectedCount) {
  if (selected < 0) return false;
  device::Prompts& prompts = m_Document.GetWorkspace().GetPrompts();
  if (!device::ConfirmCaution(prompts, u"Are you sure you want to delete this Inspection?")) return false;
  return m_Document.SetCurrentInspection(selected) && m_Document.DeleteSelectedInspection(selectedCount);
}

std::optional<std::int32_t> InspectionOverview::OnDuplicate(int selected) {
  if (selected < 0) return std::nullopt;
  data::Workspace& workspace = m_Document.GetWorkspace();
  const std::optional<Text> number = workspace.GetPrompts().AskText(
      {u"Enter the Doc # of the new Inspection:", u"Duplicate Inspection", {}});
  if (!number || !m_Document.SetCurrentInspection(selected)) return std::nullopt;

  data::Databases& databases = workspace.GetDatabases();
  data::Transaction transaction(databases.Inspection());
  if (!transaction.IsOpen()) return std::nullopt;
  data::InspectionTable& source = m_Document.Inspection();
  data::InspectionTable copy(databases);
  copy.PrepareNew();
  data::CopyColumns(source, copy);
  copy.m_InspectionID = data::NextInspectionID(databases, u"Inspection");
  copy.m_InspectionNum = device::StripLeadingControls(*number);
  if (!copy.Write() ||
      !DuplicateInspectionRows(databases, source.m_InspectionID, copy.m_InspectionID,
                               workspace.GetPrompts()) ||
      !transaction.Commit())
    return std::nullopt;
  m_Document.Reopen();
  return copy.m_InspectionID;
}

}  // namespace inspector::inspection
