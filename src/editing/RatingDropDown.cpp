#include "editing/RatingDropDown.h"

#include <algorithm>

namespace inspector::editing {

RatingDropDown::RatingDropDown(const std::vector<RatingChoice>& choices) {
  for (const RatingChoice& choice : choices) m_Entries.push_back(choice.name);
  m_Entries.emplace_back(m_Entries.empty() ? kNoRatings : kClearRating);
}

RatingDropDown::RatingDropDown(data::Databases& databases, TextView ratingType) {
  if (const auto choices = ChoicesOf(databases, ratingType)) *this = RatingDropDown(*choices);
}

std::optional<std::size_t> RatingDropDown::EntryOf(TextView result) const {
  const auto found = std::find(m_Entries.begin(), m_Entries.end(), result);
  if (result.empty() || result == kClearRating || found == m_Entries.end()) return std::nullopt;
  return static_cast<std::size_t>(found - m_Entries.begin());
}

}  // namespace inspector::editing
