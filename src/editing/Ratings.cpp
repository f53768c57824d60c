#include "editing/Ratings.h"

#include <algorithm>

#include "data/RatingChoicesTable.h"
#include "data/StepTable.h"
#include "device/Format.h"
#include "inspection/InspectionRows.h"

namespace inspector::editing {
namespace {

using device::Format;

constexpr TextView kChoices =
    u"SELECT RatingChoices.* FROM RatingType INNER JOIN RatingChoices ON RatingType.ID = "
    u"RatingChoices.RatingTypeID WHERE (((RatingType.RatingType)=\"%s\"))";
constexpr TextView kNamedChoice =
    u"SELECT RatingChoices.* FROM RatingType INNER JOIN RatingChoices ON RatingType.ID = "
    u"RatingChoices.RatingTypeID WHERE (((RatingType.RatingType) = \"%s\") AND ((RatingChoices.ChoiceName) = "
    u"\"%s\"));";
constexpr TextView kDefaultChoice =
    u"SELECT RatingChoices.* FROM RatingType INNER JOIN RatingChoices ON RatingType.ID = "
    u"RatingChoices.RatingTypeID WHERE (((RatingType.RatingType) = \"%s\") AND ((RatingChoices.DefaultFlag) "
    u"= TRUE));";

// The first row of a query about choices.
bool ReadFirst(data::RatingChoicesTable& choices, const Text& query, bool* failed) {
  choices.OpenSQL(query);
  const bool found = choices.RecordCount() > 0 && choices.GetRecord(0);
  if (failed && choices.Failed()) *failed = true;
  return found;
}

}  // namespace

std::optional<std::vector<RatingChoice>> ChoicesOf(data::Databases& databases, TextView ratingType) {
  std::vector<RatingChoice> found;
  data::RatingChoicesTable choices(databases);
  choices.OpenSQL(Format(kChoices, ratingType));
  if (choices.Failed()) return std::nullopt;
  for (int n = 0; n < choices.RecordCount(); ++n) {
    if (choices.GetRecord(n)) {
      found.push_back({choices.m_ChoiceName, choices.m_CommentPromptFlag != 0});
    } else if (choices.Failed()) {
      return std::nullopt;
    }
  }
  return found;
}

std::vector<Text> AllChoices(data::Databases& databases) {
  std::vector<Text> names;
  data::RatingChoicesTable choices(databases);
  choices.Open();
  for (int n = 0; n < choices.RecordCount(); ++n)
    if (choices.GetRecord(n) && std::find(names.begin(), names.end(), choices.m_ChoiceName) == names.end())
      names.push_back(choices.m_ChoiceName);
  return names;
}

std::vector<Text> RatingsFor(data::Databases& databases, std::int32_t inspectionID) {
  std::vector<Text> ratings = AllChoices(databases);
  data::StepTable steps(databases);
  steps.OpenSQL(Format(inspection::kStepsOfInspection, inspectionID));
  for (int n = 0; n < steps.RecordCount(); ++n) {
    if (!steps.GetRecord(n)) continue;
    const Text& rating = steps.m_InspectResult;
    if (!rating.empty() && std::find(ratings.begin(), ratings.end(), rating) == ratings.end())
      ratings.push_back(rating);
  }
  return ratings;
}

std::optional<RatingChoice> FindChoice(data::Databases& databases, TextView ratingType, TextView choice,
                                       bool* failed) {
  data::RatingChoicesTable choices(databases);
  if (!ReadFirst(choices, Format(kNamedChoice, ratingType, choice), failed)) return std::nullopt;
  return RatingChoice{choices.m_ChoiceName, choices.m_CommentPromptFlag != 0};
}

std::optional<Text> DefaultChoice(data::Databases& databases, TextView ratingType, bool* failed) {
  data::RatingChoicesTable choices(databases);
  if (!ReadFirst(choices, Format(kDefaultChoice, ratingType), failed)) return std::nullopt;
  return choices.m_ChoiceName;
}

}  // namespace inspector::editing
