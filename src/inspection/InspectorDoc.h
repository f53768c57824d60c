// The document: the current inspection, its categories and steps, and the worker that applies an inspection
// type.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "data/CategoryTable.h"
#include "data/InspectionTable.h"
#include "data/StepTable.h"
#include "data/Workspace.h"
#include "inspection/DocTypeChange.h"
#include "inspection/InspectionRows.h"

namespace inspector::inspection {

class UndoLog;
class UndoRecording;

// Lives on the thread of the screens. Opening it on a database without inspections adds an empty one.
//
// While the worker changes the type, the database is its own. Whatever the document does finishes a running
// change first; logic that changes rows without the document calls FinishDocTypeChange before.
class CInspectorDoc {
public:
  explicit CInspectorDoc(data::Workspace& workspace);
  ~CInspectorDoc();  // waits for the worker
  CInspectorDoc(const CInspectorDoc&) = delete;
  CInspectorDoc& operator=(const CInspectorDoc&) = delete;

  // False when the inspections could not be read; that has been reported.
  bool IsOpen() const { return m_IsOpen; }
  data::Workspace& GetWorkspace() { return m_Workspace; }
  data::InspectionTable& Inspection() { return m_Inspection; }
  data::CategoryTable& Categories() { return m_Categories; }
  data::StepTable& Steps() { return m_Steps; }

  // Reads the inspections again; row 0 becomes current.
  bool Reopen();
  // Makes row n current and loads its categories; the current category becomes 0.
  bool SetCurrentInspection(int row);
  // The first row with this key, by looking from row 0 on.
  bool SelectInspection(std::int32_t inspectionID);
  // False after the last one was deleted; Inspection() then holds neutral values.
  bool HasInspection() const { return m_CurrentRow < m_Inspection.RecordCount(); }
  // Writes the columns of Inspection() that were changed since they were read, with what a running change of
  // type adds to them. The others take over what another program has written.
  bool SaveHeader();
  // Takes over what another program has written, as far as nothing was changed here.
  void RefreshHeader();
  // What was entered and could not be written is given up.
  void DropHeaderChanges();
  // Reads the categories again, and the row of the current one.
  void LoadCategories();
  // Reads row n of the categories. "No Category records in current selection." when there is none.
  bool SetCurrentCategory(int row);
  // Makes the category with this key the current one; false when the inspection has none such.
  bool SelectCategory(std::int32_t categoryID);
  // The topmost row of the category list when a category was last opened; 0 for another inspection.
  int CategoryTopIndex() const { return m_CategoryTopIndex; }
  void SetCategoryTopIndex(int row) { m_CategoryTopIndex = row; }

  // Asks, then creates an empty inspection and makes it current.
  std::optional<std::int32_t> NewInspection();
  // The same without asking. `fill` may set columns before the row is written; with `type`, the type is
  // applied in the same transaction.
  using FillInspection = std::function<void(data::InspectionTable&)>;
  std::optional<std::int32_t> CreateInspection(const FillInspection& fill = {}, TextView type = {});

  // Starts the worker on the current inspection; it also writes the inspection's row. One at a time: a second
  // change waits for the first.
  void ChangeDocType(TextView newType);
  bool IsChangingDocType() const { return m_WorkerRuns; }
  // A change was begun and FinishDocTypeChange has not been called since.
  bool IsDocTypeChangeOpen() const { return m_Worker.joinable(); }
  // Waits for the worker and takes over what it changed; what was typed meanwhile stays. False when nothing
  // was changed because a read or write failed, which has been reported, or when there was no change to
  // finish.
  bool FinishDocTypeChange();

  // Deletes the current inspection's categories and steps; the row stays. With progress it can be cancelled,
  // and all of it stays.
  RunResult DeleteInspectionData(bool showProgress);
  // Asks with the inspection's details, then deletes data and row. `selectedCount` is the number of rows
  // selected in the list; only one may be. False when nothing was deleted, after Cancel as well, which has
  // been told.
  bool DeleteSelectedInspection(int selectedCount);
  // Asks, deletes every inspection from the last one on, and leaves one fresh empty one. The person can
  // cancel between two of them: what was deleted until then stays so. False when nothing was deleted.
  bool DeleteAllInspections();

  // Where actions are recorded, to be taken back; null, as in the beginning, for nowhere. Not owned.
  void SetUndoLog(UndoLog* log) { m_UndoLog = log; }
  UndoLog* GetUndoLog() const { return m_UndoLog; }

private:
  bool MergeStoredRow();
  bool ReopenAt(std::int32_t inspectionID);
  RunResult DeleteCurrentWhole();
  struct DeletedPart {
    int deleted = 0;
    int count = 0;
  };
  std::optional<DeletedPart> DeleteUntilCancelled();
  std::vector<std::int32_t> AllInspections();
  bool FewEnoughToKeep();
  bool WriteNewInspection(const FillInspection& fill, TextView type);
  void RunWorker(const Text& newType, DocTypeState state);

  data::Workspace& m_Workspace;
  data::InspectionTable m_Inspection;
  data::InspectionTable m_AsStored;  // the current row as it was last read or written
  data::CategoryTable m_Categories;
  data::StepTable m_Steps;
  int m_CurrentRow = 0;
  int m_CurrentCategory = 0;
  int m_CategoryTopIndex = 0;
  bool m_IsOpen = false;
  UndoLog* m_UndoLog = nullptr;

  std::mutex m_ChangeDocTypeMutex;
  std::thread m_Worker;
  std::atomic<bool> m_WorkerRuns = false;
  Text m_TextBeforeWorker;                     // the general information that the worker started from
  std::optional<DocTypeState> m_WorkerResult;  // read after the worker was joined
  std::unique_ptr<UndoRecording> m_DocTypeRecording;
};

}  // namespace inspector::inspection
