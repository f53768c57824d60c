// When a category counts as complete, and the words for its status.
#pragma once

#include <optional>

#include "data/CategoryTable.h"
#include "device/Text.h"

namespace inspector::editing {

using device::Text;

// How many steps of the category lack a result. Nothing when they could not be read.
std::optional<int> UnratedSteps(data::Databases& databases, std::int32_t categoryID);

// True when no step of the category lacks a result; so is a category without steps. Nothing when the steps
// could not be read: a question without an answer never completes a category.
std::optional<bool> IsComplete(data::Databases& databases, std::int32_t categoryID);

// Sets the complete flag of the category and writes its row. False when that failed. A step may have lost its
// category to another program; its finding is kept all the same.
bool RecomputeComplete(data::Databases& databases, std::int32_t categoryID);

// "Not Present", "Complete" or "Incomplete".
Text StatusOf(const data::CategoryTable& category);

}  // namespace inspector::editing
