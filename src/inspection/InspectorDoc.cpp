#include "inspection/InspectorDoc.h"

#include <initializer_list>
#include <utility>

#include "data/FieldTable.h"
#include "data/StepTable.h"
#include "data/UniqueIDTable.h"
#include "device/Format.h"
#include "device/Threads.h"
#include "inspection/UndoLog.h"

namespace inspector::inspection {
namespace {

using device::Format;

constexpr int kStatusesOfDeleteAll = 100;  // painting one takes longer than deleting a visit

bool WriteDocType(data::Databases& databases, const DocTypeState& state) {
  data::InspectionTable row(databases);
  row.OpenSQL(Format(u"SELECT * FROM Inspection WHERE InspectionID = %d", state.inspectionID));
  if (row.RecordCount() == 0 || !row.GetRecord(0)) {
    if (!row.Failed()) databases.Inspection().ReportVanishedRow(row.TableName());
    return false;
  }
  row.m_InspectionTypeID = state.inspectionTypeID;
  row.m_DocType = state.docType;
  row.m_GeneralInformation = state.generalInformation;
  return row.Write();
}

}  // namespace

CInspectorDoc::CInspectorDoc(data::Workspace& workspace)
    : m_Workspace(workspace),
      m_Inspection(workspace.GetDatabases()),
      m_AsStored(workspace.GetDatabases()),
      m_Categories(workspace.GetDatabases()),
      m_Steps(workspace.GetDatabases()) {
  m_IsOpen = m_Inspection.Open() && !m_Inspection.Failed();
  if (m_IsOpen && m_Inspection.RecordCount() == 0)
    m_IsOpen = WriteNewInspection({}, {}) && Reopen();
  else if (m_IsOpen)
    SetCurrentInspection(0);
}

CInspectorDoc::~CInspectorDoc() {
  if (m_Worker.joinable()) m_Worker.join();
}

bool CInspectorDoc::Reopen() {
  FinishDocTypeChange();
  const bool opened = m_Inspection.Open() && !m_Inspection.Failed();
  SetCurrentInspection(0);
  return opened;
}

bool CInspectorDoc::ReopenAt(std::int32_t inspectionID) {
  return Reopen() && SelectInspection(inspectionID);
}

bool CInspectorDoc::SetCurrentInspection(int row) {
  FinishDocTypeChange();
  m_CurrentCategory = 0;
  m_CategoryTopIndex = 0;
  m_CurrentRow = row;
  const bool found = m_Inspection.GetRecord(row);
  data::CopyColumns(m_Inspection, m_AsStored);
  LoadCategories();  // of no inspection: those of a deleted one must not stay
  return found;
}

bool CInspectorDoc::SelectInspection(std::int32_t inspectionID) {
  // The index finds the row; among rows of one key the first counts, as if they were read one after the
  // other.
  data::InspectionTable found(m_Workspace.GetDatabases());
  found.OpenSQL(Format(u"SELECT * FROM Inspection WHERE InspectionID = %d", inspectionID));
  const int row = m_Inspection.FindRowOf(found, 0);
  return row >= 0 && SetCurrentInspection(row);
}

void CInspectorDoc::LoadCategories() {
  m_Categories.OpenSQL(
      Format(u"SELECT * FROM Category WHERE InspectionID = %d ORDER BY CategoryNumber, CategoryTitle",
             m_Inspection.m_InspectionID));
  m_Categories.GetRecord(m_CurrentCategory);
}

// False, and nothing changed here, when the row could not be read.
bool CInspectorDoc::MergeStoredRow() {
  data::InspectionTable mine(m_Workspace.GetDatabases());
  data::CopyColumns(m_Inspection, mine);
  const bool isThere = m_Inspection.GetRecord(m_CurrentRow);
  if (isThere) {
    data::InspectionTable base(m_Workspace.GetDatabases());
    data::CopyColumns(m_AsStored, base);
    data::CopyColumns(m_Inspection, m_AsStored);
    data::CopyChanges(base, mine, m_Inspection);
  } else {
    data::CopyColumns(mine, m_Inspection);
  }
  return isThere;
}

bool CInspectorDoc::SaveHeader() {
  FinishDocTypeChange();
  data::Transaction transaction(m_Workspace.InspectionConnection());
  if (!transaction.IsOpen()) return false;
  if (!MergeStoredRow()) {
    if (!m_Inspection.Failed()) m_Inspection.GetConnection().ReportVanishedRow(m_Inspection.TableName());
    return false;
  }
  if (!m_Inspection.Write() || !transaction.Commit()) return false;
  data::CopyColumns(m_Inspection, m_AsStored);
  return true;
}

void CInspectorDoc::DropHeaderChanges() {
  data::CopyColumns(m_AsStored, m_Inspection);
}

void CInspectorDoc::RefreshHeader() {
  FinishDocTypeChange();
  MergeStoredRow();
}

bool CInspectorDoc::SetCurrentCategory(int row) {
  if (!m_Categories.GetRecord(row)) {
    device::Alert(m_Workspace.GetPrompts(), u"No Category records in current selection.");
    return false;
  }
  m_CurrentCategory = row;
  return true;
}

bool CInspectorDoc::SelectCategory(std::int32_t categoryID) {
  LoadCategories();
  for (int row = 0; row < m_Categories.RecordCount(); ++row)
    if (m_Categories.GetRecord(row) && m_Categories.m_CategoryID == categoryID)
      return SetCurrentCategory(row);
  m_Categories.GetRecord(m_CurrentCategory);
  return false;
}

bool CInspectorDoc::WriteNewInspection(const FillInspection& fill, TextView type) {
  data::Databases& databases = m_Workspace.GetDatabases();
  const std::lock_guard lock(m_ChangeDocTypeMutex);
  data::Transaction transaction(databases.Inspection());
  if (!transaction.IsOpen()) return false;
  const std::int32_t key = data::NextInspectionID(databases, u"Inspection");
  m_Inspection.PrepareNew();
  m_Inspection.m_InspectionID = key;
  m_Inspection.m_DocType.clear();
  m_Inspection.m_InspectionTypeID = kNoType;
  if (fill) fill(m_Inspection);
  if (!type.empty()) {
    DocTypeState state{key, kNoType, {}, m_Inspection.m_GeneralInformation};
    if (!ApplyDocType(databases, state, type)) return false;
    m_Inspection.m_InspectionTypeID = state.inspectionTypeID;
    m_Inspection.m_DocType = state.docType;
    m_Inspection.m_GeneralInformation = state.generalInformation;
  }
  return m_Inspection.Write() && transaction.Commit();
}

std::optional<std::int32_t> CInspectorDoc::CreateInspection(const FillInspection& fill, TextView type) {
  FinishDocTypeChange();
  const std::int32_t former = m_Inspection.m_InspectionID;
  if (!WriteNewInspection(fill, type)) {
    ReopenAt(former);
    return std::nullopt;
  }
  const std::int32_t key = m_Inspection.m_InspectionID;
  m_Inspection.Open();
  SelectInspection(key);
  return key;
}

std::optional<std::int32_t> CInspectorDoc::NewInspection() {
  if (!device::ConfirmWarning(m_Workspace.GetPrompts(), u"Are you sure you want to create a new inspection?"))
    return std::nullopt;
  return CreateInspection();
}

void CInspectorDoc::ChangeDocType(TextView newType) {
  FinishDocTypeChange();
  if (!HasInspection()) {
    device::Alert(m_Workspace.GetPrompts(), u"There is no inspection to change. Create one first.");
    return;
  }
  m_DocTypeRecording = std::make_unique<UndoRecording>(*this, u"Doc Type", m_Inspection.m_InspectionID);
  m_TextBeforeWorker = m_Inspection.m_GeneralInformation;
  DocTypeState state{m_Inspection.m_InspectionID, m_Inspection.m_InspectionTypeID, m_Inspection.m_DocType,
                     m_Inspection.m_GeneralInformation};
  m_WorkerResult.reset();
  m_WorkerRuns = true;
  m_Worker = std::thread(&CInspectorDoc::RunWorker, this, Text(newType), std::move(state));
}

void CInspectorDoc::RunWorker(const Text& newType, DocTypeState state) {
  device::LowerThreadPriority();
  const std::lock_guard lock(m_ChangeDocTypeMutex);
  const std::unique_ptr<data::Databases> databases = m_Workspace.MakeDatabases();
  if (const Text problem = databases->Open(); !problem.empty()) {
    databases->Faults().Report(problem);
  } else if (databases->Inspection().PrepareForWriting()) {
    data::Transaction transaction(databases->Inspection());
    if (transaction.IsOpen() && ApplyDocType(*databases, state, newType) && WriteDocType(*databases, state) &&
        transaction.Commit())
      m_WorkerResult = std::move(state);
  }
  m_WorkerRuns = false;
}

bool CInspectorDoc::FinishDocTypeChange() {
  if (!m_Worker.joinable()) return false;
  m_Worker.join();
  m_Workspace.GetMachine().faults.ShowPending();
  const std::optional<DocTypeState> result = std::exchange(m_WorkerResult, std::nullopt);
  const std::unique_ptr<UndoRecording> recording = std::move(m_DocTypeRecording);
  if (!result) return false;
  m_Inspection.m_InspectionTypeID = result->inspectionTypeID;
  m_Inspection.m_DocType = result->docType;
  m_AsStored.m_InspectionTypeID = result->inspectionTypeID;
  m_AsStored.m_DocType = result->docType;
  m_AsStored.m_GeneralInformation = result->generalInformation;
  // The type's comments stand behind the text that the worker knew; the person may have typed since.
  m_Inspection.m_GeneralInformation += result->generalInformation.substr(m_TextBeforeWorker.size());
  m_CurrentCategory = 0;
  LoadCategories();
  recording->Done();
  return true;
}

RunResult CInspectorDoc::DeleteInspectionData(bool showProgress) {
  FinishDocTypeChange();
  std::unique_ptr<device::ProgressWindow> progress;
  if (showProgress) progress = m_Workspace.GetPrompts().OpenProgress(u"Deleting Inspection...", true);
  data::Transaction transaction(m_Workspace.InspectionConnection());
  if (!transaction.IsOpen()) return RunResult::Failed;
  const RunResult result =
      DeleteInspectionRows(m_Workspace.GetDatabases(), m_Inspection.m_InspectionID, progress.get());
  if (result != RunResult::Done) return result;
  return transaction.Commit() ? RunResult::Done : RunResult::Failed;
}

bool CInspectorDoc::DeleteSelectedInspection(int selectedCount) {
  device::Prompts& prompts = m_Workspace.GetPrompts();
  if (selectedCount != 1) {
    device::Alert(prompts, u"Only one inspection can be deleted at a time.");
    return false;
  }
  const Text question = Format(
      u"Are you sure you want to delete this inspection?\n\nClient Name: %s\nDwelling Address: %s\nCity "
      u"State Zip: %s\nDoc #: %s",
      m_Inspection.m_ClientName, m_Inspection.m_DwellingAddress, m_Inspection.m_CityStateZip,
      m_Inspection.m_InspectionNum);
  if (!device::ConfirmWarning(prompts, question)) return false;
  const std::int32_t key = m_Inspection.m_InspectionID;
  UndoRecording recording(*this, u"Delete", key);
  const RunResult result = DeleteCurrentWhole();
  const bool deleted = result == RunResult::Done;
  if (deleted) recording.Done();
  deleted ? Reopen() : ReopenAt(key);
  if (result == RunResult::Cancelled) device::Alert(prompts, u"Cancelled. Nothing was deleted.");
  return deleted;
}

bool CInspectorDoc::DeleteAllInspections() {
  device::Prompts& prompts = m_Workspace.GetPrompts();
  if (!device::ConfirmWarning(prompts, u"Would you like to delete all inspections.")) return false;
  FinishDocTypeChange();
  const std::int32_t former = m_Inspection.m_InspectionID;
  const bool canUndo = m_UndoLog && FewEnoughToKeep();
  if (m_UndoLog && !canUndo &&
      !device::ConfirmWarning(prompts,
                              u"There is too much to keep it for Undo: what is deleted now "
                              u"cannot be brought back. Do you wish to delete all inspections?"))
    return false;
  UndoRecording recording(
      *this, u"Delete All",
      VisitSnapshot::OfInspections(canUndo ? AllInspections() : std::vector<std::int32_t>()));
  if (!canUndo) recording.Forgo();
  const std::optional<DeletedPart> part = DeleteUntilCancelled();
  if (!part) {
    ReopenAt(former);
    return false;
  }
  const bool isDone = part->deleted == part->count;
  if (isDone) {
    recording.Made(m_Inspection.m_InspectionID);
    Reopen();
    device::Alert(prompts, u"Done deleting all inspections.");
  } else {
    if (part->deleted > 0) recording.Done();
    // First: while the box is up, the program may end, and remembers where the person was.
    if (!SelectInspection(former)) Reopen();
    device::Alert(prompts,
                  Format(u"Cancelled. %d of %d inspections were deleted.", part->deleted, part->count));
  }
  return part->deleted > 0;
}

// Undo holds the rows before and after in memory: some kilobytes for each.
bool CInspectorDoc::FewEnoughToKeep() {
  data::InspectionTable inspections(m_Workspace.GetDatabases());
  data::CategoryTable categories(m_Workspace.GetDatabases());
  data::StepTable steps(m_Workspace.GetDatabases());
  data::FieldTable fields(m_Workspace.GetDatabases());
  int rows = 0;
  for (data::TableRecordset* table :
       std::initializer_list<data::TableRecordset*>{&inspections, &categories, &steps, &fields}) {
    if (!table->Open()) continue;  // what cannot be read is not deleted either
    if (table->RecordCount() > kMostRowsForUndo - rows) return false;
    rows += table->RecordCount();
  }
  return true;
}

std::vector<std::int32_t> CInspectorDoc::AllInspections() {
  const data::ReadScope reading(m_Workspace.InspectionConnection());
  std::vector<std::int32_t> keys;
  data::InspectionTable all(m_Workspace.GetDatabases());
  all.Open();
  for (int row = 0; row < all.RecordCount(); ++row)
    if (all.GetRecord(row)) keys.push_back(all.m_InspectionID);
  return keys;
}

// Each in a function of its own: what failed must be rolled back before the table is read again.
RunResult CInspectorDoc::DeleteCurrentWhole() {
  data::Transaction transaction(m_Workspace.InspectionConnection());
  if (!transaction.IsOpen()) return RunResult::Failed;
  if (const RunResult result = DeleteInspectionData(true); result != RunResult::Done) return result;
  return m_Inspection.DeleteCurrent() && transaction.Commit() ? RunResult::Done : RunResult::Failed;
}

// One transaction for all: a sync to disk for each would make ten thousand of them take minutes.
std::optional<CInspectorDoc::DeletedPart> CInspectorDoc::DeleteUntilCancelled() {
  data::Transaction transaction(m_Workspace.InspectionConnection());
  // Read again: of a row that another program deleted there is nothing to delete.
  if (!transaction.IsOpen() || !m_Inspection.Open() || m_Inspection.Failed()) return std::nullopt;
  DeletedPart part{0, m_Inspection.RecordCount()};
  const auto progress = m_Workspace.GetPrompts().OpenProgress(u"Deleting Inspection...", true);
  progress->SetRange(0, part.count);
  for (; part.deleted < part.count && !progress->Cancelled(); ++part.deleted) {
    if (part.deleted % (1 + part.count / kStatusesOfDeleteAll) == 0)
      progress->SetStatus(Format(u"%d of %d", part.deleted + 1, part.count));
    if (!m_Inspection.GetRecord(part.count - part.deleted - 1) ||
        DeleteInspectionRows(m_Workspace.GetDatabases(), m_Inspection.m_InspectionID, nullptr) !=
            RunResult::Done ||
        !m_Inspection.DeleteCurrent())
      return std::nullopt;
    progress->Step();
  }
  const bool isWhole = part.deleted < part.count || WriteNewInspection({}, {});
  return isWhole && transaction.Commit() ? std::optional(part) : std::nullopt;
}

}  // namespace inspector::inspection
