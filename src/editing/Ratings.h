// Rating types and their choices.
#pragma once

#include <optional>
#include <vector>

#include "data/Databases.h"
#include "device/Text.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

struct RatingChoice {
  Text name;
  bool promptsForComment = false;  // the step should explain itself in a comment
};

// The choices of a type, by its name, in their stored order. Nothing when they could not be read: that is not
// the same as a type without any.
std::optional<std::vector<RatingChoice>> ChoicesOf(data::Databases& databases, TextView ratingType);
// The names of all choices of all types, each once, in their stored order.
std::vector<Text> AllChoices(data::Databases& databases);
// The same, and behind them what else the steps of the inspection are rated with: a choice may have been
// renamed since.
std::vector<Text> RatingsFor(data::Databases& databases, std::int32_t inspectionID);
// `failed`, where it is given, becomes true when the choices could not be read: nothing is known then.
std::optional<RatingChoice> FindChoice(data::Databases& databases, TextView ratingType, TextView choice,
                                       bool* failed = nullptr);
// The first default choice of the type; nothing when it has none.
std::optional<Text> DefaultChoice(data::Databases& databases, TextView ratingType, bool* failed = nullptr);

}  // namespace inspector::editing
