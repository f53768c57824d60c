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
  // Without choices, there is only "<no ratings>".
  explicit RatingDropDown(const std::vector<RatingChoice>& choices);
  // The choices of a type, none for an unknown one. Without any entry when they could not be read.
  RatingDropDown(data::Databases& databases, TextView ratingType);

  const std::vector<Text>& Entries() const { return m_Entries; }
  // Nothing for an empty result, and for one that is no entry (any more).
  std::optional<std::size_t> EntryOf(TextView result) const;
  // The result after this entry was picked: empty after "<clear>". "<no ratings>" is stored as it stands:
  // with it a step that nobody can rate counts as done.
  Text Picked(std::size_t entry) const { return ResultOf(m_Entries[entry]); }
  static Text ResultOf(TextView entry) { return entry == kClearRating ? Text() : Text(entry); }

private:
  std::vector<Text> m_Entries;
};

}  // namespace inspector::editing
