// What belongs to an inspection beyond its own row: categories, steps and the fields of form categories.
#pragma once

#include "data/Databases.h"
#include "device/Prompts.h"

namespace inspector::inspection {

using device::Text;
using device::TextView;

// All steps of an inspection, in no order of theirs; to be filled with its key.
inline constexpr TextView kStepsOfInspection =
    u"SELECT Step.* FROM (Category INNER JOIN Inspection ON Category.InspectionID = Inspection.InspectionID) "
    u"INNER JOIN Step ON Category.CategoryID = Step.CategoryID WHERE (((Inspection.InspectionID)= %d));";

// Cancelled and Failed, which was reported, leave it to the caller's transaction to take back what was done.
enum class RunResult { Done, Cancelled, Failed };

// Deletes steps, then categories. With `progress`, moves its bar from 0 to the number of categories + 1, and
// can be cancelled there. Runs inside the caller's transaction.
RunResult DeleteInspectionRows(data::Databases& databases, std::int32_t inspectionID,
                               device::ProgressWindow* progress);

// Copies the fields of one form category to another one.
bool DuplicateFields(data::Databases& databases, std::int32_t sourceCategory, std::int32_t targetCategory);

// Copies the categories, fields and steps of one inspection to another one that has none. The person can
// cancel. Runs inside the caller's transaction.
RunResult DuplicateInspectionRows(data::Databases& databases, std::int32_t source, std::int32_t target,
                                  device::Prompts& prompts);

}  // namespace inspector::inspection
