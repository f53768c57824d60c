#include "inspection/UndoLog.h"

#include <algorithm>

namespace inspector::inspection {
namespace {

// Where the key of the owning row stands in each table.
constexpr int kInspectionID = 0;
constexpr int kCategoryID = 0;
constexpr int kInspectionOfCategory = 7;
constexpr int kCategoryOfStep = 3;
constexpr int kCategoryOfField = 1;

}  // namespace

InspectionSnapshot::InspectionSnapshot(std::int32_t inspectionID) : m_InspectionID(inspectionID) {
  m_Tables.emplace_back(u"Inspection", kInspectionID, std::vector{m_InspectionID});
  m_Tables.emplace_back(u"Category", kInspectionOfCategory, std::vector{m_InspectionID});
}

bool InspectionSnapshot::Take(data::Connection& connection) {
  const data::ReadScope reading(connection);
  if (!m_Tables[0].Take(connection) || !m_Tables[1].Take(connection)) return false;
  const std::vector<std::int32_t> categories = m_Tables[1].Numbers(kCategoryID);
  m_Tables.emplace_back(u"Step", kCategoryOfStep, categories);
  m_Tables.emplace_back(u"Field", kCategoryOfField, categories);
  return m_Tables[2].Take(connection) && m_Tables[3].Take(connection);
}

bool InspectionSnapshot::PutBack(data::Connection& connection) const {
  // The categories that it has now may be others, and their steps and fields go with them.
  InspectionSnapshot now(m_InspectionID);
  if (!now.Take(connection)) return false;
  const std::vector<std::int32_t> categories = now.m_Tables[1].Numbers(kCategoryID);
  return data::RowSnapshot(u"Step", kCategoryOfStep, categories).PutBack(connection) &&
         data::RowSnapshot(u"Field", kCategoryOfField, categories).PutBack(connection) &&
         std::all_of(m_Tables.begin(), m_Tables.end(),
                     [&](const data::RowSnapshot& table) { return table.PutBack(connection); });
}

void UndoLog::Before(TextView action, std::int32_t inspectionID) {
  m_Document.FinishDocTypeChange();
  m_Entry.emplace(Entry{Text(action), InspectionSnapshot(inspectionID), std::nullopt});
  if (!m_Entry->before.Take(m_Document.GetWorkspace().InspectionConnection())) Forget();
}

void UndoLog::Done(std::optional<std::int32_t> created) {
  if (!m_Entry) return;
  m_Document.FinishDocTypeChange();
  if (created) {
    // Of an inspection that was not there, what stood before is nothing: taking it back deletes it.
    m_Entry->before = InspectionSnapshot(*created);
  }
  InspectionSnapshot after(m_Entry->before.InspectionID());
  if (!after.Take(m_Document.GetWorkspace().InspectionConnection())) return Forget();
  m_Entry->after = std::move(after);
}

void UndoLog::Forget() {
  m_Entry.reset();
}

const Text& UndoLog::Action() const {
  static const Text kNone;
  return m_Entry && m_Entry->after ? m_Entry->action : kNone;
}

bool UndoLog::Undo() {
  if (!m_Entry || !m_Entry->after) return false;
  m_Document.FinishDocTypeChange();
  data::Workspace& workspace = m_Document.GetWorkspace();
  data::Connection& connection = workspace.InspectionConnection();
  const std::int32_t key = m_Entry->before.InspectionID();
  InspectionSnapshot now(key);
  if (!now.Take(connection)) return false;
  if (!(now == *m_Entry->after) &&
      !device::ConfirmCaution(workspace.GetPrompts(),
                              u"Something was entered in this visit since then, and would be taken back too. "
                              u"Do you wish to proceed?"))
    return false;
  {
    data::Transaction transaction(connection);
    if (!transaction.IsOpen() || !m_Entry->before.PutBack(connection) || !transaction.Commit()) return false;
  }
  Forget();
  m_Document.Reopen();
  m_Document.SelectInspection(key);
  return true;
}

}  // namespace inspector::inspection
