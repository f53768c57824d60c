// Opening a category for the first time: its steps, or the fields of a form, come from the templates.
#pragma once

#include <functional>
#include <optional>

#include "data/CategoryTable.h"
#include "data/StepTable.h"

namespace inspector::editing {

inline constexpr std::int32_t kFormCategory = 1;  // Category.Type of a form; any other value has steps

// Fills in more of a new step before it is written; false makes the whole creation fail.
using CompleteStep = std::function<bool(data::StepTable&)>;

// Adds a step for every step template of the category template, in their order. The number of steps; nothing
// when a read or write failed.
std::optional<int> CreateSteps(data::Databases& databases, std::int32_t categoryTemplateID,
                               std::int32_t categoryID, const CompleteStep& complete = {});

// Adds a field for every field template of the category template. The number of fields.
std::optional<int> CreateFields(data::Databases& databases, std::int32_t categoryTemplateID,
                                std::int32_t categoryID);

// Creates steps or fields when the category has none. One transaction; false when it failed or the category
// is not stored any more, which has been reported. A step category whose template has no steps becomes
// complete.
bool OpenCategory(data::Databases& databases, const data::CategoryTable& category);

}  // namespace inspector::editing
