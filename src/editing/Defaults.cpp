#include "editing/Defaults.h"

#include <map>

#include "data/CategoryTemplateTable.h"
#include "data/CommentsTable.h"
#include "data/MaterialTemplateTable.h"
#include "device/Format.h"
#include "editing/CategoryOpening.h"
#include "editing/Completeness.h"
#include "editing/RatingDropDown.h"
#include "editing/Ratings.h"
#include "inspection/UndoLog.h"

namespace inspector::editing {
namespace {

using device::Format;
using device::Text;
using device::TextView;
using inspection::RunResult;

constexpr TextView kDefaultMaterial =
    u"SELECT * FROM MaterialTemplate WHERE (StepID = %d) AND (DefaultMaterial = TRUE);";
constexpr TextView kCommentsOfMaterial =
    u"SELECT Comments.* FROM MaterialTemplate INNER JOIN (Comments INNER JOIN MaterialComment ON Comments.ID "
    u"= MaterialComment.CommentID) ON MaterialTemplate.ID = MaterialComment.MaterialID WHERE "
    u"(((MaterialTemplate.ID)=%d));";
constexpr TextView kStepsInOrder = u"SELECT * FROM %s WHERE CategoryID = %d Order By StepNumber";

enum class Taken { Yes, No, Failed };

// Gives a step without materials its default material and that material's first comment.
Taken TakeDefaultMaterial(data::Databases& databases, data::StepTable& step) {
  data::MaterialTemplateTable material(databases);
  material.OpenSQL(Format(kDefaultMaterial, step.m_StepTemplateID));
  if (material.RecordCount() == 0 || !material.GetRecord(0))
    return material.Failed() ? Taken::Failed : Taken::No;
  step.m_Materials = material.m_Material + u";";
  if (material.m_CommentsExist) {
    data::CommentsTable comments(databases);
    comments.OpenSQL(Format(kCommentsOfMaterial, material.m_ID));
    if (comments.RecordCount() > 0 && comments.GetRecord(0)) step.m_Comments += comments.m_Comments;
    if (comments.Failed()) return Taken::Failed;
  }
  return Taken::Yes;
}

// Looks every type up once: most steps of a visit share a handful of types.
class DefaultChoices {
public:
  explicit DefaultChoices(data::Databases& databases) : m_Databases(databases) {}

  // Empty for a type that has none.
  const Text& Of(const Text& ratingType) {
    const auto known = m_Known.find(ratingType);
    if (known != m_Known.end()) return known->second;
    const std::optional<Text> choice = DefaultChoice(m_Databases, ratingType, &m_Failed);
    return m_Known.emplace(ratingType, choice.value_or(Text())).first->second;
  }
  // A default could not be read.
  bool Failed() const { return m_Failed; }

private:
  data::Databases& m_Databases;
  std::map<Text, Text> m_Known;
  bool m_Failed = false;
};

bool OpenSteps(data::StepTable& steps, std::int32_t categoryID) {
  return steps.OpenSQL(Format(kStepsInOrder, steps.TableName(), categoryID)) && !steps.Failed();
}

// Nothing when that cannot be told: an excluded category must not get defaults by accident.
std::optional<bool> IsExcluded(data::Databases& databases, std::int32_t categoryTemplateID) {
  data::CategoryTemplateTable category(databases);
  category.OpenSQL(Format(u"SELECT * FROM CategoryTemplate WHERE ID = %d", categoryTemplateID));
  if (category.RecordCount() > 0 && category.GetRecord(0)) return category.m_ExcludeFromApplyDefault != 0;
  return category.Failed() ? std::nullopt : std::optional(false);
}

// Material and rating of a step without a result.
bool TakeDefaults(data::Databases& databases, DefaultChoices& choices, data::StepTable& step) {
  if (step.m_Materials.empty() && TakeDefaultMaterial(databases, step) == Taken::Failed) return false;
  if (!step.m_RatingType.empty()) step.m_InspectResult = choices.Of(step.m_RatingType);
  return !choices.Failed();
}

bool ApplyToCategory(data::Databases& databases, DefaultChoices& choices, data::CategoryTable& category) {
  data::StepTable steps(databases);
  if (!OpenSteps(steps, category.m_CategoryID)) return false;
  if (steps.RecordCount() == 0) {
    // New steps get their defaults before they are written, which is half the writing.
    const auto complete = [&](data::StepTable& step) { return TakeDefaults(databases, choices, step); };
    if (!CreateSteps(databases, category.m_CategoryTemplateID, category.m_CategoryID, complete)) return false;
  }
  for (int n = 0; n < steps.RecordCount(); ++n) {
    if (!steps.GetRecord(n)) return false;
    if (!steps.m_InspectResult.empty()) continue;
    if (!TakeDefaults(databases, choices, steps) || !steps.Write()) return false;
  }
  const std::optional<bool> complete = IsComplete(databases, category.m_CategoryID);
  if (!complete) return false;
  category.m_CompleteFlag = *complete ? -1 : 0;
  return category.Write();
}

}  // namespace

RunResult ApplyDefaultsSilently(data::Databases& databases, std::int32_t inspectionID,
                                device::ProgressWindow* progress) {
  const data::ReadScope reading(databases.Template());
  data::Transaction transaction(databases.Inspection());
  if (!transaction.IsOpen()) return RunResult::Failed;
  data::CategoryTable categories(databases);
  categories.OpenSQL(
      Format(u"SELECT * FROM Category WHERE InspectionID = %d ORDER BY CategoryNumber, CategoryTitle",
             inspectionID));
  if (categories.Failed()) return RunResult::Failed;
  DefaultChoices choices(databases);
  if (progress) progress->SetRange(0, categories.RecordCount());
  for (int n = 0; n < categories.RecordCount(); ++n) {
    if (progress && progress->Cancelled()) return RunResult::Cancelled;
    if (!categories.GetRecord(n)) return RunResult::Failed;
    if (progress) progress->SetStatus(categories.m_CategoryTitle);
    const std::optional<bool> excluded = IsExcluded(databases, categories.m_CategoryTemplateID);
    if (!excluded) return RunResult::Failed;
    if (!*excluded && !ApplyToCategory(databases, choices, categories)) return RunResult::Failed;
    if (progress) progress->Step();
  }
  return transaction.Commit() ? RunResult::Done : RunResult::Failed;
}

DefaultsResult ApplyDefaults(inspection::CInspectorDoc& document) {
  data::Workspace& workspace = document.GetWorkspace();
  if (!device::ConfirmCaution(workspace.GetPrompts(),
                              u"Please confirm the applying of all defaults. This action can not be undone."))
    return DefaultsResult::Refused;
  const std::int32_t inspectionID = document.Inspection().m_InspectionID;
  inspection::UndoRecording recording(document, u"Defaults", inspectionID);
  auto progress = workspace.GetPrompts().OpenProgress(u"Defaults", true);
  const RunResult result = ApplyDefaultsSilently(workspace.GetDatabases(), inspectionID, progress.get());
  progress.reset();  // before a box asks for a tap
  document.LoadCategories();
  if (result == RunResult::Cancelled)
    device::Alert(workspace.GetPrompts(), u"Cancelled. Nothing was changed.");
  if (result != RunResult::Done) return DefaultsResult::Failed;
  recording.Done();
  device::Alert(workspace.GetPrompts(), u"Done!");
  return DefaultsResult::Done;
}

bool ApplyStepDefaults(data::Databases& databases, std::int32_t categoryID) {
  const data::ReadScope reading(databases.Template());
  data::Transaction transaction(databases.Inspection());
  data::StepTable steps(databases);
  if (!transaction.IsOpen() || !OpenSteps(steps, categoryID)) return false;
  DefaultChoices defaults(databases);
  for (int n = 0; n < steps.RecordCount(); ++n) {
    if (!steps.GetRecord(n)) return false;
    const Taken material = steps.m_Materials.empty() ? TakeDefaultMaterial(databases, steps) : Taken::No;
    if (material == Taken::Failed || (material == Taken::Yes && !steps.Write())) return false;
    bool failed = false;
    if (FindChoice(databases, steps.m_RatingType, steps.m_InspectResult, &failed)) continue;
    const RatingDropDown offered(databases, steps.m_RatingType);
    if (offered.EntryOf(steps.m_InspectResult)) continue;
    failed = failed || offered.Entries().empty();
    steps.m_InspectResult = defaults.Of(steps.m_RatingType);
    // A rating that merely could not be looked up must not be replaced.
    if (failed || defaults.Failed() || !steps.Write()) return false;
  }
  return RecomputeComplete(databases, categoryID) && transaction.Commit();
}

}  // namespace inspector::editing
