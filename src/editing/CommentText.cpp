#include "editing/CommentText.h"

#include <algorithm>

#include "editing/PictureTags.h"
#include "editing/Placeholders.h"

namespace inspector::editing {

bool HasWords(TextView text) {
  return text.find_first_not_of(u" \r\n\t") != TextView::npos;
}

bool HasGapInComment(TextView text) {
  return text.find(u'^') != TextView::npos && HasUnfilledGap(StripTags(text));
}

TextChange InsertComment(TextView text, const TextSelection& selection, TextView comment,
                         TextView separator) {
  TextChange change;
  change.at = std::min(std::max(selection.begin, selection.end), text.size());
  const TextView before = text.substr(0, change.at);
  const TextView after = text.substr(change.at);
  if (!before.empty() && !before.ends_with(separator)) change.replacement += separator;
  change.replacement += comment;
  if (!after.empty() && !after.starts_with(separator)) change.replacement += separator;
  return change;
}

TextChange AppendTag(TextView text, TextView tag) {
  return {text.size(), 0, Text(tag)};
}

}  // namespace inspector::editing
