// The house a list belongs to, as it stands above the list.
#pragma once

#include "data/InspectionTable.h"
#include "device/Text.h"

namespace inspector::editing {

using device::Text;

// Dwelling address and city line, joined with ", "; one alone stands without it.
Text AddressCaption(const data::InspectionTable& inspection);

}  // namespace inspector::editing
