// The drop-down of a step's rating: the choices of its type, then one more entry.
#pragma once

#include <optional>
#include <vector>

#include "data/Databases.h"
#include "editing/Ratings.h"

namespace inspector::editing {

inline constexpr TextView kClearRating = u"<clear>";
inline constexpr TextView kNoRatings = u"<no ratings>";

class RatingDropDown {
public:
  RatingDropDown() = default;
  // An unknown type, and one without choices, only has "<no ratings>".
  RatingDropDown(data::Databases& databases, TextView ratingType);

  const std::vector<Text>& Entries() const { return m_Entries; }
  // Nothing for an empty result, and for one that is no choice (any more).
  std::optional<std::size_t> EntryOf(TextView result) const;
  // The result after this entry was picked: empty after "<clear>". Nothing for "<no ratings>", which is no
  // choice and changes nothing.
  std::optional<Text> Picked(std::size_t entry) const;

private:
  std::vector<Text> m_Entries;
  std::size_t m_Choices = 0;
};

}  // namespace inspector::editing
