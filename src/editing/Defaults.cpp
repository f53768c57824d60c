#include "editing/Defaults.h"

#include <map>

#include "data/CategoryTemplateTable.h"
#include "data/CommentsTable.h"
#include "data/MaterialTemplateTable.h"
#include "device/Format.h"
#include "editing/CategoryOpening.h"
#include "editing/Completeness.h"
#include "editing/Ratings.h"

namespace inspector::editing {
namespace {

using device::Format;
using device::Text;
using device::TextView;

constexpr TextView kDefaultMaterial =
    u"SELECT * FROM MaterialTemplate WHERE (StepID = %d) AND (DefaultMaterial = TRUE);";
constexpr TextView kCommentsOfMaterial =
    u"SELECT Comments.* FROM MaterialTemplate INNER JOIN (Comments INNER JOIN MaterialComment ON Comments.ID "
    u"= "
    u"MaterialComment.CommentID) ON MaterialTemplate.ID = MaterialComment.MaterialID WHERE "
    u"(((MaterialTemplate.ID)=%d));";
constexpr TextView kStepsInOrder = u"SELECT * FROM %s WHERE CategoryID = %d Order By StepNumber";

// Gives a step without materials its default material and that material's first comment. True when it did.
bool TakeDefaultMaterial(data::Databases& databases, data::StepTable& step) {
  data::MaterialTemplateTable material(databases);
  material.OpenSQL(Format(kDefaultMaterial, step.m_StepTemplateID));
  if (material.RecordCount() == 0 || !material.GetRecord(0)) return false;
  step.m_Materials = material.m_Material + u";";
  if (material.m_CommentsExist) {
    data::CommentsTable comments(databases);
    comments.OpenSQL(Format(kCommentsOfMaterial, material.m_ID));
    if (comments.RecordCount() > 0 && comments.GetRecord(0)) step.m_Comments += comments.m_Comments;
  }
  return true;
}

// Looks every type up once: most steps of a visit share a handful of types.
class DefaultChoices {
public:
  explicit DefaultChoices(data::Databases& databases) : m_Databases(databases) {}

  const std::optional<Text>& Of(const Text& ratingType) {
    const auto known = m_Known.find(ratingType);
    if (known != m_Known.end()) return known->second;
    return m_Known.emplace(ratingType, DefaultChoice(m_Databases, ratingType)).first->second;
  }

private:
  data::Databases& m_Databases;
  std::map<Text, std::optional<Text>> m_Known;
};

bool OpenSteps(data::StepTable& steps, std::int32_t categoryID) {
  return steps.OpenSQL(Format(kStepsInOrder, steps.TableName(), categoryID)) && !steps.Failed();
}

bool IsExcluded(data::Databases& databases, std::int32_t categoryTemplateID) {
  data::CategoryTemplateTable category(databases);
  category.OpenSQL(Format(u"SELECT * FROM CategoryTemplate WHERE ID = %d", categoryTemplateID));
  return category.RecordCount() > 0 && category.GetRecord(0) && category.m_ExcludeFromApplyDefault;
}

bool ApplyToCategory(data::Databases& databases, DefaultChoices& choices, data::CategoryTable& category) {
  data::StepTable steps(databases);
  if (!OpenSteps(steps, category.m_CategoryID)) return false;
  if (steps.RecordCount() == 0 &&
      (!CreateSteps(databases, category.m_CategoryTemplateID, category.m_CategoryID) ||
       !OpenSteps(steps, category.m_CategoryID)))
    return false;
  for (int n = 0; n < steps.RecordCount(); ++n) {
    if (!steps.GetRecord(n)) return false;
    if (!steps.m_InspectResult.empty()) continue;
    if (steps.m_Materials.empty()) TakeDefaultMaterial(databases, steps);
    if (!steps.m_RatingType.empty()) steps.m_InspectResult = choices.Of(steps.m_RatingType).value_or(Text());
    if (!steps.Write()) return false;
  }
  const std::optional<bool> complete = IsComplete(databases, category.m_CategoryID);
  if (!complete) return false;
  category.m_CompleteFlag = *complete ? -1 : 0;
  return category.Write();
}

}  // namespace

bool ApplyDefaultsSilently(data::Databases& databases, std::int32_t inspectionID) {
  const data::ReadScope reading(databases.Template());
  data::Transaction transaction(databases.Inspection());
  if (!transaction.IsOpen()) return false;
  data::CategoryTable categories(databases);
  categories.OpenSQL(
      Format(u"SELECT * FROM Category WHERE InspectionID = %d ORDER BY CategoryNumber, CategoryTitle",
             inspectionID));
  if (categories.Failed()) return false;
  DefaultChoices choices(databases);
  for (int n = 0; n < categories.RecordCount(); ++n) {
    if (!categories.GetRecord(n)) return false;
    if (IsExcluded(databases, categories.m_CategoryTemplateID)) continue;
    if (!ApplyToCategory(databases, choices, categories)) return false;
  }
  return transaction.Commit();
}

DefaultsResult ApplyDefaults(inspection::CInspectorDoc& document) {
  data::Workspace& workspace = document.GetWorkspace();
  if (!device::ConfirmCaution(workspace.GetPrompts(),
                              u"Please confirm the applying of all defaults. This action can not be undone."))
    return DefaultsResult::Refused;
  const bool applied = ApplyDefaultsSilently(workspace.GetDatabases(), document.Inspection().m_InspectionID);
  document.LoadCategories();
  if (!applied) return DefaultsResult::Failed;
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
    if (steps.m_Materials.empty() && TakeDefaultMaterial(databases, steps) && !steps.Write()) return false;
    if (FindChoice(databases, steps.m_RatingType, steps.m_InspectResult)) continue;
    steps.m_InspectResult = defaults.Of(steps.m_RatingType).value_or(Text());
    if (!steps.Write()) return false;
  }
  return RecomputeComplete(databases, categoryID) && transaction.Commit();
}

}  // namespace inspector::editing
