// Prepared comments, by where they belong.
#pragma once

#include <optional>
#include <vector>

#include "data/Databases.h"
#include "device/Text.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

struct LibraryComment {
  std::int32_t id = 0;
  Text text;
  Text rating;  // the choice it was written for, or empty
  Text group;
};

// "<<Roof>>". What belongs to no group and comes after one has a heading as well, or it would seem to belong
// there.
Text GroupHeading(TextView group);

// Each in the order of the library; the comments of a step by group. Nothing when they could not all be read,
// which has been reported.
std::optional<std::vector<LibraryComment>> CommentsOfStep(data::Databases& databases,
                                                          std::int32_t stepTemplateID);
std::optional<std::vector<LibraryComment>> CommentsOfMaterial(data::Databases& databases,
                                                              std::int32_t materialID);

}  // namespace inspector::editing
