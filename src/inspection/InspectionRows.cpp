#include "inspection/InspectionRows.h"

#include <algorithm>

#include "data/CategoryTable.h"
#include "data/FieldTable.h"
#include "data/StepTable.h"
#include "data/UniqueIDTable.h"
#include "device/Format.h"

namespace inspector::inspection {
namespace {

using device::Format;

constexpr TextView kCategoriesInOrder =
    u"SELECT * FROM Category WHERE InspectionID = %d ORDER BY CategoryNumber, CategoryTitle";
constexpr TextView kFieldsOfCategory =
    u"SELECT * FROM %s WHERE %s.CategoryID = %d Order By %s.SequenceNumber";
constexpr TextView kDeleteOfCategory = u"DELETE FROM %s WHERE CategoryID = %d";

struct KeyPair {
  std::int32_t source = 0;
  std::int32_t copy = 0;
};

}  // namespace

RunResult DeleteInspectionRows(data::Databases& databases, std::int32_t inspectionID,
                               device::ProgressWindow* progress) {
  data::CategoryTable categories(databases);
  categories.OpenSQL(Format(kCategoriesInOrder, inspectionID));
  if (categories.Failed()) return RunResult::Failed;
  const int count = categories.RecordCount();
  data::StepTable steps(databases);
  data::FieldTable fields(databases);
  if (progress) {
    progress->SetRange(0, count + 1);
    progress->SetStatus(u"Deleting Steps...");
  }
  const auto isCancelled = [progress] { return progress && progress->Cancelled(); };
  for (int i = 0; i < count; ++i) {
    if (isCancelled()) return RunResult::Cancelled;
    if (!categories.GetRecord(i)) return RunResult::Failed;
    for (data::TableRecordset* table :
         {static_cast<data::TableRecordset*>(&steps), static_cast<data::TableRecordset*>(&fields)}) {
      table->OpenSQL(Format(kDeleteOfCategory, table->TableName(), categories.m_CategoryID));
      if (table->Failed()) return RunResult::Failed;
    }
    if (progress) progress->SetPosition(i);
  }
  if (isCancelled()) return RunResult::Cancelled;
  if (progress) {
    progress->SetStatus(u"Deleting Categories...");
    progress->SetPosition(count);
  }
  categories.OpenSQL(Format(u"DELETE FROM %s WHERE InspectionID = %d", categories.TableName(), inspectionID));
  return categories.Failed() ? RunResult::Failed : RunResult::Done;
}

bool DuplicateFields(data::Databases& databases, std::int32_t sourceCategory, std::int32_t targetCategory) {
  data::FieldTable fields(databases);
  fields.OpenSQL(
      Format(kFieldsOfCategory, fields.TableName(), fields.TableName(), sourceCategory, fields.TableName()));
  const int count = fields.RecordCount();
  data::UniqueIDTable uniqueIDs(databases, data::DatabaseKind::Inspection);
  data::KeyRange keys = uniqueIDs.TakeIDs(u"Field", count);
  for (int n = 0; n < count; ++n) {
    if (!fields.GetRecord(n)) return false;
    data::FieldTable copy(databases);
    copy.PrepareNew();
    data::CopyColumns(fields, copy);
    copy.m_ID = keys.Next();
    copy.m_CategoryID = targetCategory;
    if (!copy.Write()) return false;
  }
  return !fields.Failed();
}

RunResult DuplicateInspectionRows(data::Databases& databases, std::int32_t source, std::int32_t target,
                                  device::Prompts& prompts) {
  data::CategoryTable categories(databases);
  categories.OpenSQL(Format(kCategoriesInOrder, source));
  data::StepTable steps(databases);
  steps.OpenSQL(Format(kStepsOfInspection, source));
  if (categories.Failed() || steps.Failed()) return RunResult::Failed;
  const int categoryCount = categories.RecordCount();
  const int stepCount = steps.RecordCount();

  data::UniqueIDTable uniqueIDs(databases, data::DatabaseKind::Inspection);
  data::KeyRange categoryKeys = uniqueIDs.TakeIDs(u"InspectionCategory", categoryCount);
  data::KeyRange stepKeys = uniqueIDs.TakeIDs(u"Step", stepCount);
  const auto progress = prompts.OpenProgress(u"Duplicating Inspection...", true);
  progress->SetRange(0, categoryCount + stepCount);
  progress->SetStatus(u"Duplicating Categories...");
  std::vector<KeyPair> pairs;
  data::CategoryTable categoryCopy(databases);
  for (int i = 0; i < categoryCount; ++i) {
    if (progress->Cancelled()) return RunResult::Cancelled;
    if (!categories.GetRecord(i)) return RunResult::Failed;
    categoryCopy.PrepareNew();
    data::CopyColumns(categories, categoryCopy);
    categoryCopy.m_CategoryID = categoryKeys.Next();
    categoryCopy.m_InspectionID = target;
    pairs.push_back({categories.m_CategoryID, categoryCopy.m_CategoryID});
    if (!categoryCopy.Write() || !DuplicateFields(databases, pairs.back().source, pairs.back().copy))
      return RunResult::Failed;
    progress->SetPosition(i);
  }

  progress->SetStatus(u"Duplicating Steps...");
  data::StepTable stepCopy(databases);
  for (int j = 0; j < stepCount; ++j) {
    if (progress->Cancelled()) return RunResult::Cancelled;
    if (!steps.GetRecord(j)) return RunResult::Failed;
    stepCopy.PrepareNew();
    data::CopyColumns(steps, stepCopy);
    stepCopy.m_StepID = stepKeys.Next();
    const auto pair = std::find_if(pairs.begin(), pairs.end(),
                                   [&](const KeyPair& each) { return each.source == steps.m_CategoryID; });
    if (pair != pairs.end()) stepCopy.m_CategoryID = pair->copy;
    if (!stepCopy.Write()) return RunResult::Failed;
    progress->SetPosition(categoryCount + j);
  }
  return RunResult::Done;
}

}  // namespace inspector::inspection
