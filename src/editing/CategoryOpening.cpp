#include "editing/CategoryOpening.h"

#include <map>

#include "data/FieldTable.h"
#include "data/FieldTemplateTable.h"
#include "data/RatingTypeTable.h"
#include "data/StepTemplateTable.h"
#include "data/UniqueIDTable.h"
#include "device/Format.h"
#include "editing/Completeness.h"

namespace inspector::editing {
namespace {

using device::Format;
using device::Text;
using device::TextView;

constexpr TextView kStepTemplates =
    u"SELECT StepTemplate.* FROM CategoryTemplate INNER JOIN (StepTemplate INNER JOIN CategoryStep ON "
    u"StepTemplate.ID = CategoryStep.StepID) ON CategoryStep.CategoryID = CategoryTemplate.ID WHERE "
    u"(((CategoryTemplate.ID)=%d));";

// Nothing when that cannot be told.
std::optional<bool> IsEmpty(data::Databases& databases, std::int32_t categoryID, bool isForm) {
  data::StepTable steps(databases);
  data::FieldTable fields(databases);
  data::TableRecordset& rows = isForm ? static_cast<data::TableRecordset&>(fields) : steps;
  rows.OpenSQL(Format(u"SELECT * FROM %s WHERE CategoryID = %d Order By %s", rows.TableName(), categoryID,
                      isForm ? u"SequenceNumber" : u"StepNumber"));
  return rows.Failed() ? std::nullopt : std::optional(rows.RecordCount() == 0);
}

// A step's help counts as there when it is longer than this.
constexpr std::size_t kShortestInfo = 2;

// Empty for an id that no type has; nothing when that cannot be told, as the step would stay unrateable.
std::optional<Text> RatingTypeName(data::RatingTypeTable& types, std::int32_t ratingTypeID) {
  types.OpenSQL(Format(u"SELECT * FROM RatingType WHERE RatingType.ID = %d", ratingTypeID));
  if (types.RecordCount() > 0 && types.GetRecord(0)) return types.m_RatingType;
  return types.Failed() ? std::nullopt : std::optional(Text());
}

}  // namespace

std::optional<int> CreateSteps(data::Databases& databases, std::int32_t categoryTemplateID,
                               std::int32_t categoryID, const CompleteStep& complete) {
  data::StepTemplateTable templates(databases);
  templates.OpenSQL(Format(kStepTemplates, categoryTemplateID));
  data::RatingTypeTable ratingTypes(databases);
  std::map<std::int32_t, Text> typeNames;  // most steps of a category share one
  data::UniqueIDTable uniqueIDs(databases, data::DatabaseKind::Inspection);
  data::KeyRange keys = uniqueIDs.TakeIDs(u"Step", templates.RecordCount());
  data::StepTable step(databases);
  for (int n = 0; n < templates.RecordCount(); ++n) {
    if (!templates.GetRecord(n)) return std::nullopt;
    auto typeName = typeNames.find(templates.m_RatingTypeID);
    if (typeName == typeNames.end()) {
      const std::optional<Text> read = RatingTypeName(ratingTypes, templates.m_RatingTypeID);
      if (!read) return std::nullopt;
      typeName = typeNames.emplace(templates.m_RatingTypeID, *read).first;
    }
    step.PrepareNew();
    step.m_StepID = keys.Next();
    step.m_StepTitle = templates.m_Title;
    step.m_StepNumber = templates.m_StepNumber;
    step.m_MajorSystem = templates.m_Keyword.empty() ? Text(u"Other") : templates.m_Keyword;
    step.m_StepTemplateID = templates.m_ID;
    step.m_CategoryID = categoryID;
    step.m_RatingType = typeName->second;
    step.m_StepInfoExists = templates.m_StepInfo.size() > kShortestInfo ? -1 : 0;
    if ((complete && !complete(step)) || !step.Write()) return std::nullopt;
  }
  if (templates.Failed()) return std::nullopt;
  return templates.RecordCount();
}

std::optional<int> CreateFields(data::Databases& databases, std::int32_t categoryTemplateID,
                                std::int32_t categoryID) {
  data::FieldTemplateTable templates(databases);
  const Text& table = templates.TableName();
  templates.OpenSQL(Format(u"SELECT * FROM %s WHERE %s.CategoryID = %d Order By %s.Sequence", table, table,
                           categoryTemplateID, table));
  data::UniqueIDTable uniqueIDs(databases, data::DatabaseKind::Inspection);
  data::KeyRange keys = uniqueIDs.TakeIDs(u"Field", templates.RecordCount());
  data::FieldTable field(databases);
  for (int n = 0; n < templates.RecordCount(); ++n) {
    if (!templates.GetRecord(n)) return std::nullopt;
    field.PrepareNew();
    field.m_ID = keys.Next();
    field.m_CategoryID = categoryID;
    field.m_SequenceNumber = templates.m_Sequence;
    field.m_FieldType = templates.m_Type;
    field.m_FieldLabel = templates.m_Label;
    if (!field.Write()) return std::nullopt;
  }
  if (templates.Failed()) return std::nullopt;
  return templates.RecordCount();
}

bool OpenCategory(data::Databases& databases, const data::CategoryTable& category) {
  const bool isForm = category.m_Type == kFormCategory;
  const std::optional<bool> looksEmpty = IsEmpty(databases, category.m_CategoryID, isForm);
  if (!looksEmpty) return false;
  if (!*looksEmpty) return true;

  const data::ReadScope reading(databases.Template());
  data::Transaction transaction(databases.Inspection());
  if (!transaction.IsOpen()) return false;
  // Now that nobody else writes, it counts: the category may be gone, or have been filled meanwhile.
  data::CategoryTable stored(databases);
  stored.OpenSQL(Format(u"SELECT * FROM Category WHERE CategoryID = %d", category.m_CategoryID));
  const std::optional<bool> empty = IsEmpty(databases, category.m_CategoryID, isForm);
  if (!empty || stored.Failed()) return false;
  if (stored.RecordCount() == 0 || !stored.GetRecord(0)) {
    databases.Inspection().ReportVanishedRow(stored.TableName());
    return false;
  }
  if (!*empty) return true;
  const std::optional<int> created =
      isForm ? CreateFields(databases, stored.m_CategoryTemplateID, stored.m_CategoryID)
             : CreateSteps(databases, stored.m_CategoryTemplateID, stored.m_CategoryID);
  if (!created) return false;
  const bool isComplete = stored.m_CompleteFlag != 0;
  if (!isForm && isComplete != (*created == 0) && !RecomputeComplete(databases, stored.m_CategoryID))
    return false;
  return transaction.Commit();
}

}  // namespace inspector::editing
