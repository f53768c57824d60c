// The templates' default materials and ratings, brought to steps. What cannot be read from the templates
// makes the whole action fail.
#pragma once

#include "inspection/InspectorDoc.h"

namespace inspector::editing {

enum class DefaultsResult { Done, Refused, Failed };

// For every category of the current inspection whose template is not excluded: creates missing steps, then
// gives every step without a result its default material and rating. Asks first and says "Done!" at the end.
// One transaction.
DefaultsResult ApplyDefaults(inspection::CInspectorDoc& document);

// The same without question and message. Cancelled in `progress`, and failed, it has changed nothing.
inspection::RunResult ApplyDefaultsSilently(data::Databases& databases, std::int32_t inspectionID,
                                            device::ProgressWindow* progress = nullptr);

// For the steps of one category. Here the default material does not depend on the result, and a result that
// is no choice of its type is replaced.
bool ApplyStepDefaults(data::Databases& databases, std::int32_t categoryID);

}  // namespace inspector::editing
