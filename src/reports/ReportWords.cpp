#include "reports/ReportWords.h"

#include "editing/PictureTags.h"

namespace inspector::reports {

Text Joined(const Text& first, TextView between, const Text& second) {
  if (first.empty() || second.empty()) return first + second;
  return Text(first).append(between).append(second);
}

Text WordsOf(const ReportStep& step) {
  constexpr TextView kBlanks = u" \r\n\t";
  Text words = editing::StripTags(step.comments);
  words.resize(words.find_last_not_of(kBlanks) + 1);
  words.erase(0, words.find_first_not_of(kBlanks));
  return words;
}

}  // namespace inspector::reports
