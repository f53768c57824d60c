#include "inspection/InspectionOverview.h"

#include "data/UniqueIDTable.h"
#include "device/Format.h"
#include "inspection/InspectionFilter.h"
#include "inspection/InspectionRows.h"
#include "inspection/UndoLog.h"

namespace inspector::inspection {

void InspectionOverview::Refill() {
  m_List.Open();
}

std::optional<InspectionOverview::Row> InspectionOverview::RowAt(int index) {
  if (!m_List.GetRecord(index)) return std::nullopt;
  return Row{m_List.m_InspectionID,
             {m_List.m_ClientName, m_List.m_DwellingAddress, m_List.m_CityStateZip, m_List.m_InspectionNum}};
}

int InspectionOverview::RowOf(std::int32_t inspectionID) const {
  data::InspectionTable found(m_Document.GetWorkspace().GetDatabases());
  found.OpenSQL(device::Format(u"SELECT * FROM Inspection WHERE InspectionID = %d", inspectionID));
  return m_List.FindRowOf(found, 0);
}

// By the row itself: the document's rows may have been read at another time, so that positions differ.
// Who takes the current inspection again is still at the same category.
bool InspectionOverview::MakeCurrent(int selected) {
  const std::int32_t former = m_Document.Inspection().m_InspectionID;
  const std::int32_t category = m_Document.Categories().m_CategoryID;
  const int top = m_Document.CategoryTopIndex();
  m_Document.Reopen();
  if (m_Document.SetCurrentInspection(m_Document.Inspection().FindRowOf(m_List, selected))) {
    if (m_Document.Inspection().m_InspectionID == former && category > 0 &&
        m_Document.SelectCategory(category))
      m_Document.SetCategoryTopIndex(top);
    return true;
  }
  m_Document.Reopen();
  if (!m_Document.Inspection().Failed()) m_List.GetConnection().ReportVanishedRow(m_List.TableName());
  return false;
}

bool InspectionOverview::OnDelete(int selected, int selectedCount) {
  if (selected < 0) return false;
  device::Prompts& prompts = m_Document.GetWorkspace().GetPrompts();
  if (!device::ConfirmCaution(prompts, u"Are you sure you want to delete this Inspection?")) return false;
  return MakeCurrent(selected) && m_Document.DeleteSelectedInspection(selectedCount);
}

std::optional<std::int32_t> InspectionOverview::OnDuplicate(int selected) {
  if (selected < 0) return std::nullopt;
  data::Workspace& workspace = m_Document.GetWorkspace();
  const std::optional<Text> number = workspace.GetPrompts().AskText(
      {u"Enter the Doc # of the new Inspection:", u"Duplicate Inspection", {}});
  if (!number || !MakeCurrent(selected)) return std::nullopt;

  UndoRecording recording(m_Document, u"Duplicate Inspection", VisitSnapshot::OfInspections({}));
  std::int32_t key = 0;
  const RunResult result = CopyCurrent(*number, key);
  if (result == RunResult::Cancelled)
    device::Alert(workspace.GetPrompts(), u"Cancelled. Nothing was duplicated.");
  if (result != RunResult::Done) return std::nullopt;
  recording.Made(key);
  m_Document.Reopen();
  return key;
}

RunResult InspectionOverview::CopyCurrent(TextView number, std::int32_t& key) {
  data::Workspace& workspace = m_Document.GetWorkspace();
  data::Databases& databases = workspace.GetDatabases();
  data::Transaction transaction(databases.Inspection());
  if (!transaction.IsOpen()) return RunResult::Failed;
  data::InspectionTable& source = m_Document.Inspection();
  data::InspectionTable copy(databases);
  copy.PrepareNew();
  data::CopyColumns(source, copy);
  key = data::NextInspectionID(databases, u"Inspection");
  copy.m_InspectionID = key;
  copy.m_InspectionNum = device::StripLeadingControls(number);
  if (!copy.Write()) return RunResult::Failed;
  const RunResult result =
      DuplicateInspectionRows(databases, source.m_InspectionID, key, workspace.GetPrompts());
  if (result != RunResult::Done) return result;
  return transaction.Commit() ? RunResult::Done : RunResult::Failed;
}

std::optional<std::int32_t> InspectionOverview::OnMerge(int selected) {
  if (const std::optional<Row> row = RowAt(selected)) return row->inspectionID;
  device::ShowError(m_Document.GetWorkspace().GetPrompts(),
                    u"You must select an inspection before pressing the button.");
  return std::nullopt;
}

}  // namespace inspector::inspection
