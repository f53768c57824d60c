#include "exchange/InspectionMerge.h"

#include <algorithm>

#include "data/CategoryTable.h"
#include "data/InspectionTable.h"
#include "data/StepTable.h"
#include "data/UniqueIDTable.h"
#include "device/Format.h"
#include "inspection/UndoLog.h"

namespace inspector::exchange {
namespace {

using device::Format;

constexpr TextView kTargetFields =
    u"SELECT Field.* FROM Category INNER JOIN Field ON Category.CategoryID = Field.CategoryID WHERE "
    u"(((Category.InspectionID)= %d));";

// Carries a plan out, inside the caller's transaction.
class Merger {
public:
  Merger(data::Databases& databases, std::int32_t target, std::int32_t staged, const MergePlan& plan)
      : m_Databases(databases), m_TargetID(target), m_StagedID(staged), m_Plan(plan) {}

  MergeResult Run(device::ProgressWindow* progress) {
    constexpr int kStatuses = 100;
    const int count = static_cast<int>(m_Plan.categories.size());
    if (progress) {
      progress->SetRange(0, count);
      progress->SetPosition(0);
    }
    m_Staged.OpenSQL(Format(kStagedCategories, m_StagedID));
    m_Target.OpenSQL(Format(kTargetCategories, m_TargetID));
    if (m_Staged.Failed() || m_Target.Failed()) return MergeResult::Failed;
    m_CategoryKeys = m_UniqueIDs.TakeIDs(u"InspectionCategory", m_Plan.addedCategories);
    m_StepKeys = m_UniqueIDs.TakeIDs(u"Step", m_Plan.addedSteps);
    for (int n = 0; n < count; ++n) {
      const MergeResult result = MergeCategory(m_Plan.categories[static_cast<std::size_t>(n)], progress);
      if (result != MergeResult::Merged) return result;
      if (!progress) continue;
      progress->SetPosition(n + 1);
      if ((n + 1) % (count / kStatuses + 1) == 0)
        progress->SetStatus(Format(u"Merging Categories... %d of %d", n + 1, count));
    }
    return DeleteStaged() ? MergeResult::Merged : MergeResult::Failed;
  }

private:
  MergeResult MergeCategory(const CategoryMerge& merge, device::ProgressWindow* progress) {
    if (!m_Staged.GetRecord(merge.staged) || !WriteCategory(merge)) return MergeResult::Failed;
    m_StagedSteps.OpenSQL(Format(kStagedSteps, m_StagedSteps.TableName(), m_Staged.m_CategoryID));
    m_TargetSteps.OpenSQL(Format(kTargetSteps, m_TargetSteps.TableName(), m_Target.m_CategoryID));
    if (m_StagedSteps.Failed() || m_TargetSteps.Failed()) return MergeResult::Failed;
    for (const StepMerge& step : merge.steps) {
      if (progress && progress->Cancelled()) return MergeResult::Cancelled;
      if (step.isTaken && !WriteStep(step)) return MergeResult::Failed;
    }
    if (progress && progress->Cancelled()) return MergeResult::Cancelled;
    m_StagedSteps.OpenSQL(
        Format(u"DELETE FROM %s WHERE CategoryID = %d", m_StagedSteps.TableName(), m_Staged.m_CategoryID));
    return m_StagedSteps.Failed() ? MergeResult::Failed : MergeResult::Merged;
  }

  // Leaves the target's row in m_Target.
  bool WriteCategory(const CategoryMerge& merge) {
    if (merge.isNew)
      m_Target.PrepareNew();
    else if (!m_Target.GetRecord(merge.target))
      return false;
    if (!merge.isTaken) return true;
    const std::int32_t key = merge.isNew ? m_CategoryKeys.Next() : m_Target.m_CategoryID;
    data::CopyColumns(m_Staged, m_Target);
    m_Target.m_CategoryID = key;
    m_Target.m_InspectionID = m_TargetID;
    return m_Target.Write();
  }

  bool WriteStep(const StepMerge& merge) {
    if (!m_StagedSteps.GetRecord(merge.staged)) return false;
    if (merge.isNew)
      m_TargetSteps.PrepareNew();
    else if (!m_TargetSteps.GetRecord(merge.target))
      return false;
    const std::int32_t key = merge.isNew ? m_StepKeys.Next() : m_TargetSteps.m_StepID;
    data::CopyColumns(m_StagedSteps, m_TargetSteps);
    m_TargetSteps.m_StepID = key;
    m_TargetSteps.m_CategoryID = m_Target.m_CategoryID;
    return m_TargetSteps.Write();
  }

  bool DeleteStaged() {
    m_Staged.OpenSQL(Format(u"DELETE FROM %s WHERE InspectionID = %d", m_Staged.TableName(), m_StagedID));
    data::InspectionTable inspection(m_Databases, u"MERGE_Inspection");
    inspection.OpenSQL(Format(u"SELECT * FROM MERGE_Inspection WHERE InspectionID = %d", m_StagedID));
    if (m_Staged.Failed() || inspection.Failed()) return false;
    // Of several with one key none is taken for this one.
    return inspection.RecordCount() != 1 || (inspection.GetRecord(0) && inspection.DeleteCurrent());
  }

  data::Databases& m_Databases;
  const std::int32_t m_TargetID;
  const std::int32_t m_StagedID;
  const MergePlan& m_Plan;
  data::UniqueIDTable m_UniqueIDs{m_Databases, data::DatabaseKind::Inspection};
  data::KeyRange m_CategoryKeys{0};
  data::KeyRange m_StepKeys{0};
  data::CategoryTable m_Staged{m_Databases, u"MERGE_Category"};
  data::CategoryTable m_Target{m_Databases};
  data::StepTable m_StagedSteps{m_Databases, u"MERGE_Step"};
  data::StepTable m_TargetSteps{m_Databases};
};

bool HasInspection(data::Databases& databases, std::int32_t inspectionID) {
  data::InspectionTable found(databases);
  found.OpenSQL(Format(u"SELECT * FROM Inspection WHERE InspectionID = %d", inspectionID));
  return found.RecordCount() > 0;
}

// How many rows undoing would have to hold.
int RowsToKeep(data::Databases& databases, std::int32_t target, const StagedInspection& staged) {
  data::StepTable rows(databases);
  int count = staged.categories + staged.steps;
  for (const TextView query : {inspection::kStepsOfInspection, kTargetCategories, kTargetFields}) {
    rows.OpenSQL(Format(query, target));
    count += rows.RecordCount();
  }
  return count;
}

bool IsTooMuchToUndo(inspection::CInspectorDoc& document, std::int32_t target,
                     const StagedInspection& staged) {
  return document.GetUndoLog() &&
         RowsToKeep(document.GetWorkspace().GetDatabases(), target, staged) > inspection::kMostRowsForUndo;
}

// The staged one, when both are there; else that has been told.
std::optional<StagedInspection> FindBoth(inspection::CInspectorDoc& document, std::int32_t targetInspectionID,
                                         std::int32_t stagedInspectionID) {
  document.FinishDocTypeChange();
  data::Workspace& workspace = document.GetWorkspace();
  data::Databases& databases = workspace.GetDatabases();
  if (!HasInspection(databases, targetInspectionID)) {
    device::ShowError(workspace.GetPrompts(),
                      Format(u"There is no inspection %d to merge into. Choose one from the list of "
                             u"inspections.",
                             targetInspectionID));
    return std::nullopt;
  }
  auto staged = FindStaged(databases, stagedInspectionID);
  if (!staged)
    device::ShowError(
        workspace.GetPrompts(),
        Format(u"There is no imported inspection %d. Import one, or choose another.", stagedInspectionID));
  return staged;
}

MergeResult MergeNow(data::Workspace& workspace, std::int32_t target, std::int32_t staged,
                     std::optional<MergePlan>& plan) {
  const auto progress = workspace.GetPrompts().OpenProgress(u"Merging Inspections...", true);
  if (progress) progress->SetStatus(u"Merging Categories...");
  data::Transaction transaction(workspace.InspectionConnection());
  if (!transaction.IsOpen()) return MergeResult::Failed;
  plan = ReadMergePlan(workspace.GetDatabases(), target, staged);
  if (!plan) return MergeResult::Failed;
  const MergeResult result = Merger(workspace.GetDatabases(), target, staged, *plan).Run(progress.get());
  if (result != MergeResult::Merged) return result;
  return transaction.Commit() ? result : MergeResult::Failed;
}

// The document may show the target.
bool ShowAgain(inspection::CInspectorDoc& document, std::int32_t target) {
  if (document.Inspection().m_InspectionID != target) return false;
  const std::int32_t category = document.Categories().m_CategoryID;
  const int top = document.CategoryTopIndex();
  document.LoadCategories();
  if (category > 0 && document.SelectCategory(category)) document.SetCategoryTopIndex(top);
  return true;
}

Text Counted(int count, TextView one, TextView several) {
  return count == 1 ? Format(u"1 %s", one) : Format(u"%d %s", count, several);
}

void AddNames(std::vector<Text>& sentences, TextView begin, const std::vector<Text>& names,
              std::size_t most) {
  if (names.empty()) return;
  Text sentence(begin);
  for (std::size_t n = 0; n < std::min(names.size(), most); ++n)
    sentence += (n == 0 ? u" " : u"; ") + names[n];
  if (names.size() > most) sentence += Format(u"; and %d more", names.size() - most);
  sentences.push_back(sentence + u".");
}

}  // namespace

std::optional<MergePreview> PreviewMerge(inspection::CInspectorDoc& document, std::int32_t targetInspectionID,
                                         std::int32_t stagedInspectionID) {
  auto staged = FindBoth(document, targetInspectionID, stagedInspectionID);
  if (!staged) return std::nullopt;
  auto plan = ReadMergePlan(document.GetWorkspace().GetDatabases(), targetInspectionID, stagedInspectionID);
  if (!plan) return std::nullopt;
  const bool isTooMuch = IsTooMuchToUndo(document, targetInspectionID, *staged);
  return MergePreview{*std::move(plan), *std::move(staged), isTooMuch};
}

std::vector<Text> Described(const MergePreview& preview, std::size_t mostNames) {
  const MergePlan& plan = preview.plan;
  std::vector<Text> sentences;
  if (plan.addedCategories + plan.addedSteps > 0)
    sentences.push_back(Format(u"Added: %s, %s.", Counted(plan.addedCategories, u"category", u"categories"),
                               Counted(plan.addedSteps, u"step", u"steps")));
  if (plan.filledSteps > 0)
    sentences.push_back(Format(
        u"Filled: %s.", Counted(plan.filledSteps, u"step without findings", u"steps without findings")));
  if (plan.takenCategories > 0)
    sentences.push_back(Format(u"Number, remarks and status taken over: %s.",
                               Counted(plan.takenCategories, u"category", u"categories")));
  if (plan.sameSteps > 0)
    sentences.push_back(Format(u"There already: %s.", Counted(plan.sameSteps, u"step", u"steps")));
  if (sentences.empty()) sentences.push_back(u"Nothing is added or filled.");
  const auto addNames = [&](TextView begin, const std::vector<Text>& names) {
    AddNames(sentences, begin, names, mostNames);
  };
  addNames(u"Replaced by what the import has there, also where that is nothing:", plan.replacedWords);
  addNames(u"Left out, because these steps have findings already:", plan.occupiedSteps);
  addNames(u"Left out, because a step of the same name came before:", plan.repeatedSteps);
  addNames(u"Put together, because they have one title:", plan.repeatedCategories);
  addNames(u"Complete, and so keeping number and remarks:", plan.completeCategories);
  addNames(u"Added without a rating to a category that stays complete:", plan.unratedSteps);
  Text header;
  for (const Text& part :
       {preview.staged.client, preview.staged.address,
        preview.staged.documentNumber.empty() ? Text() : u"Doc # " + preview.staged.documentNumber})
    if (!part.empty()) header += (header.empty() ? u"" : u", ") + part;
  sentences.push_back(u"Left out: the header of the import" +
                      (header.empty() ? Text(u".") : u" (" + header + u")."));
  if (preview.isTooMuchToUndo) sentences.push_back(u"This is too much to be taken back with Undo.");
  return sentences;
}

MergeOutcome MergeInspection(inspection::CInspectorDoc& document, std::int32_t targetInspectionID,
                             std::int32_t stagedInspectionID) {
  MergeOutcome outcome;
  data::Workspace& workspace = document.GetWorkspace();
  auto staged = FindBoth(document, targetInspectionID, stagedInspectionID);
  if (!staged) return outcome;
  inspection::VisitSnapshot changed = inspection::VisitSnapshot::OfInspections({});
  const bool isTooMuch = IsTooMuchToUndo(document, targetInspectionID, *staged);
  if (!isTooMuch) {
    changed.Add(targetInspectionID);
    changed.AddStaged(stagedInspectionID);
  }
  inspection::UndoRecording recording(document, u"Merge", std::move(changed));
  if (isTooMuch) recording.Forgo();
  std::optional<MergePlan> plan;
  outcome.result = MergeNow(workspace, targetInspectionID, stagedInspectionID, plan);
  if (outcome.result == MergeResult::Cancelled)
    device::Alert(workspace.GetPrompts(), u"Cancelled. Nothing was merged.");
  if (outcome.result != MergeResult::Merged) return outcome;
  recording.Done();
  outcome.done = {*std::move(plan), *std::move(staged), isTooMuch};
  outcome.isOpenOne = ShowAgain(document, targetInspectionID);
  return outcome;
}

}  // namespace inspector::exchange
