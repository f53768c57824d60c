#include "editing/RatingDropDown.h"

#include <algorithm>

namespace inspector::editing {

RatingDropDown::RatingDropDown(data::Databases& databases, TextView ratingType) {
  for (RatingChoice& choice : ChoicesOf(databases, ratingType)) m_Entries.push_back(std::move(choice.name));
  m_Choices = m_Entries.size();
  m_Entries.emplace_back(m_Choices == 0 ? kNoRatings : kClearRating);
}

std::optional<std::size_t> RatingDropDown::EntryOf(TextView result) const {
  const auto end = m_Entries.begin() + static_cast<std::ptrdiff_t>(m_Choices);
  const auto found = std::find(m_Entries.begin(), end, result);
  if (result.empty() || found == end) return std::nullopt;
  return static_cast<std::size_t>(found - m_Entries.begin());
}

std::optional<Text> RatingDropDown::Picked(std::size_t entry) const {
  if (entry < m_Choices) return m_Entries[entry];
  if (m_Choices == 0) return std::nullopt;
  return Text();
}

}  // namespace inspector::editing
