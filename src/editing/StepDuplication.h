// A copy of one step: a second water heater, to be rated on its own.
#pragma once

#include <optional>

#include "data/StepTable.h"
#include "device/Text.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

class StepDuplication {
public:
  // `source` is the row last read of an open query; its columns are taken over.
  StepDuplication(data::Databases& databases, const data::StepTable& source);

  // "Vents #2": numbered after the steps of the category that are called alike. Nothing when those could not
  // be read.
  std::optional<Text> SuggestedName();

  // Adds the step, without findings, and the complete flag follows. Its key; nothing when it failed. One
  // transaction.
  std::optional<std::int32_t> Make(TextView name);

private:
  std::optional<int> CountAlike();
  Text MajorSystemFor(const Text& name) const;

  data::Databases& m_Databases;
  data::StepTable m_Source;
};

}  // namespace inspector::editing
