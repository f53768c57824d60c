#include "inspection/UndoLog.h"

#include <algorithm>
#include <utility>

#include "device/Format.h"

namespace inspector::inspection {
namespace {

// Where the key of the owning row stands in each table.
constexpr int kInspectionID = 0;
constexpr int kCategoryID = 0;
constexpr int kStepID = 0;
constexpr int kInspectionOfCategory = 7;
constexpr int kCategoryOfStep = 3;
constexpr int kCategoryOfField = 1;

}  // namespace

VisitSnapshot VisitSnapshot::OfInspections(std::vector<std::int32_t> inspections) {
  VisitSnapshot snapshot;
  snapshot.m_Inspections = std::move(inspections);
  snapshot.m_Tables.emplace_back(u"Inspection", kInspectionID, snapshot.m_Inspections);
  snapshot.m_Tables.emplace_back(u"Category", kInspectionOfCategory, snapshot.m_Inspections);
  return snapshot;
}

VisitSnapshot VisitSnapshot::OfStep(std::int32_t stepID, std::int32_t categoryID) {
  VisitSnapshot snapshot;
  snapshot.m_StepID = stepID;
  snapshot.m_CategoryID = categoryID;
  snapshot.m_Tables.emplace_back(u"Step", kStepID, std::vector{stepID});
  snapshot.m_Tables.emplace_back(u"Category", kCategoryID, std::vector{categoryID});
  return snapshot;
}

void VisitSnapshot::Add(std::int32_t inspectionID) {
  m_Inspections.push_back(inspectionID);
  m_Tables[0].AddKey(inspectionID);
  m_Tables[1].AddKey(inspectionID);
}

void VisitSnapshot::AddStaged(std::int32_t inspectionID) {
  m_Staged = inspectionID;
  m_Tables.emplace_back(u"MERGE_Inspection", kInspectionID, std::vector{inspectionID});
  m_Tables.emplace_back(u"MERGE_Category", kInspectionOfCategory, std::vector{inspectionID});
}

VisitSnapshot VisitSnapshot::Untaken() const {
  if (IsOfStep()) return OfStep(m_StepID, m_CategoryID);
  VisitSnapshot untaken = OfInspections(m_Inspections);
  if (m_Staged) untaken.AddStaged(*m_Staged);
  return untaken;
}

bool VisitSnapshot::IsOf(std::int32_t inspectionID) const {
  return std::find(m_Inspections.begin(), m_Inspections.end(), inspectionID) != m_Inspections.end();
}

bool VisitSnapshot::Take(data::Connection& connection) {
  const data::ReadScope reading(connection);
  const auto take = [&](data::RowSnapshot& table) { return table.Take(connection); };
  if (!std::all_of(m_Tables.begin(), m_Tables.end(), take)) return false;
  if (IsOfStep()) return true;
  const auto owned = static_cast<std::ptrdiff_t>(m_Tables.size());
  const std::vector<std::int32_t> categories = m_Tables[1].Numbers(kCategoryID);
  m_Tables.emplace_back(u"Step", kCategoryOfStep, categories);
  m_Tables.emplace_back(u"Field", kCategoryOfField, categories);
  if (m_Staged) m_Tables.emplace_back(u"MERGE_Step", kCategoryOfStep, m_Tables[3].Numbers(kCategoryID));
  return std::all_of(m_Tables.begin() + owned, m_Tables.end(), take);
}

bool VisitSnapshot::PutBack(data::Connection& connection) const {
  if (!IsOfStep()) {
    // The categories that they have now may be others, and their steps and fields go with them.
    VisitSnapshot now = Untaken();
    if (!now.Take(connection)) return false;
    const std::vector<std::int32_t> categories = now.m_Tables[1].Numbers(kCategoryID);
    if (!data::RowSnapshot(u"Step", kCategoryOfStep, categories).PutBack(connection) ||
        !data::RowSnapshot(u"Field", kCategoryOfField, categories).PutBack(connection))
      return false;
  }
  return std::all_of(m_Tables.begin(), m_Tables.end(),
                     [&](const data::RowSnapshot& table) { return table.PutBack(connection); });
}

UndoLog::UndoLog(CInspectorDoc& document) : m_Document(document) {
  m_Document.SetUndoLog(this);
}

UndoLog::~UndoLog() {
  m_Document.SetUndoLog(nullptr);
}

const Text& UndoLog::Action() const {
  static const Text kNone;
  return m_Entry ? m_Entry->action : kNone;
}

void UndoLog::Remember(std::optional<Entry> entry) {
  m_Entry = std::move(entry);
  if (onChanged) onChanged();
}

bool UndoLog::IsElsewhere() const {
  const std::int32_t current = m_Document.Inspection().m_InspectionID;
  if (!m_Entry || m_Entry->currentInspection == current || m_Entry->before.IsOf(current)) return false;
  data::InspectionTable there(m_Document.GetWorkspace().GetDatabases());
  there.OpenSQL(
      device::Format(u"SELECT * FROM Inspection WHERE InspectionID = %d", m_Entry->currentInspection));
  return there.RecordCount() > 0;
}

bool UndoLog::Undo() {
  m_Document.FinishDocTypeChange();  // which may be what is to be taken back
  if (!m_Entry) return false;
  data::Workspace& workspace = m_Document.GetWorkspace();
  data::Connection& connection = workspace.InspectionConnection();
  VisitSnapshot now = m_Entry->before.Untaken();
  if (!now.Take(connection)) return false;
  if (!(now == m_Entry->after) &&
      !device::ConfirmCaution(workspace.GetPrompts(),
                              u"Something was entered in this visit since then, and would be taken back too. "
                              u"Do you wish to proceed?"))
    return false;
  {
    data::Transaction transaction(connection);
    if (!transaction.IsOpen() || !m_Entry->before.PutBack(connection) || !transaction.Commit()) return false;
  }
  const std::int32_t inspectionID = m_Entry->currentInspection;
  const std::int32_t categoryID = m_Entry->currentCategory;
  Remember(std::nullopt);
  GoTo(inspectionID, categoryID);
  return true;
}

void UndoLog::GoTo(std::int32_t inspectionID, std::int32_t categoryID) {
  m_Document.Reopen();
  m_Document.SelectInspection(inspectionID);
  m_Document.SelectCategory(categoryID);
}

UndoRecording::UndoRecording(CInspectorDoc& document, TextView action, VisitSnapshot what)
    : m_Document(document) {
  if (!m_Document.GetUndoLog()) return;
  m_Document.FinishDocTypeChange();
  VisitSnapshot after = what.Untaken();
  m_Entry.emplace(UndoLog::Entry{Text(action), document.Inspection().m_InspectionID,
                                 document.Categories().m_CategoryID, std::move(what), std::move(after)});
  if (!m_Entry->before.Take(document.GetWorkspace().InspectionConnection())) m_Entry.reset();
}

void UndoRecording::Done() {
  UndoLog* const log = m_Document.GetUndoLog();
  if (!log) return;
  if (m_Entry && !m_Entry->after.Take(m_Document.GetWorkspace().InspectionConnection())) m_Entry.reset();
  if (m_Entry && m_Entry->after == m_Entry->before) return;
  // What could be taken back before lies under this action now, also when this one cannot be.
  log->Remember(std::exchange(m_Entry, std::nullopt));
}

void UndoRecording::Made(std::int32_t inspectionID) {
  if (m_Entry) {
    m_Entry->before.Add(inspectionID);
    m_Entry->after = m_Entry->before.Untaken();
  }
  Done();
}

}  // namespace inspector::inspection
