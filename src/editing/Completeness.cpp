#include "editing/Completeness.h"

#include "data/StepTable.h"
#include "device/Format.h"

namespace inspector::editing {

std::optional<int> UnratedSteps(data::Databases& databases, std::int32_t categoryID) {
  data::StepTable steps(databases);
  const Text& table = steps.TableName();
  steps.OpenSQL(device::Format(
      u"SELECT %s.* FROM %s INNER JOIN Category ON %s.CategoryID = Category.CategoryID WHERE (( "
      u"((%s.InspectResult)<\" \") )AND ((Category.CategoryID)=%d)) ORDER BY StepNumber;",
      table, table, table, table, categoryID));
  if (steps.Failed()) return std::nullopt;
  return steps.RecordCount();
}

std::optional<bool> IsComplete(data::Databases& databases, std::int32_t categoryID) {
  const std::optional<int> unrated = UnratedSteps(databases, categoryID);
  return unrated ? std::optional(*unrated == 0) : std::nullopt;
}

bool RecomputeComplete(data::Databases& databases, std::int32_t categoryID) {
  const std::optional<bool> complete = IsComplete(databases, categoryID);
  if (!complete) return false;
  data::CategoryTable category(databases);
  category.OpenSQL(device::Format(u"SELECT * FROM Category WHERE CategoryID = %d", categoryID));
  if (category.RecordCount() == 0) return !category.Failed();
  if (!category.GetRecord(0)) return false;
  category.m_CompleteFlag = *complete ? -1 : 0;
  return category.Write();
}

Text StatusOf(const data::CategoryTable& category) {
  if (category.m_NotPresentFlag) return u"Not Present";
  return category.m_CompleteFlag ? u"Complete" : u"Incomplete";
}

}  // namespace inspector::editing
