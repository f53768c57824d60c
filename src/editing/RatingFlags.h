// How a rated step is shown: the flags of a choice, looked up by the exact pair of rating type and choice.
#pragma once

#include <optional>
#include <set>
#include <utility>

#include "data/Workspace.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

// Three lists of (rating type, choice) pairs, each loaded from the choices on first use. Make a new one when
// the choices may have changed.
class RatingFlags {
public:
  explicit RatingFlags(data::Workspace& workspace) : m_Workspace(workspace) {}

  bool IsBold(TextView ratingType, TextView choice);
  bool IsRed(TextView ratingType, TextView choice);
  bool IsSummary(TextView ratingType, TextView choice);

  // A list could not be read, a missing table included: what the lookups answered is then not known.
  bool Failed() const { return m_Failed; }

private:
  using Pairs = std::set<std::pair<Text, Text>>;

  bool IsIn(std::optional<Pairs>& pairs, TextView query, TextView ratingType, TextView choice);
  Pairs Load(TextView query);

  data::Workspace& m_Workspace;
  std::optional<Pairs> m_Bold;
  std::optional<Pairs> m_Red;
  std::optional<Pairs> m_Summary;
  bool m_Failed = false;
};

}  // namespace inspector::editing
