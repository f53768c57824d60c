#include "reports/ReportWords.h"

#include <algorithm>

#include "editing/PictureTags.h"

namespace inspector::reports {
namespace {

// A blank of some width, or a mark that only tells how to set others.
bool IsInvisible(char16_t unit) {
  return unit <= u' ' || IsControl(unit) || unit == 0xA0 || unit == 0xAD ||
         (unit >= 0x2000 && unit <= 0x200F) || (unit >= 0x2028 && unit <= 0x202F) ||
         (unit >= 0x205F && unit <= 0x206F) || unit == 0x3000 || unit == 0xFEFF;
}

}  // namespace

bool HasWords(TextView words) {
  return std::any_of(words.begin(), words.end(),
                     [](char16_t unit) { return unit > u' ' && !IsControl(unit); });
}

TextView NameOrNone(TextView title) {
  return std::all_of(title.begin(), title.end(), IsInvisible) ? u"(no name)" : title;
}

Text Joined(const Text& first, TextView between, const Text& second) {
  if (first.empty() || second.empty()) return first + second;
  return Text(first).append(between).append(second);
}

Text NameOf(const ReportStep& step) {
  return Joined(step.number, u" ", step.title);
}

std::vector<HeaderField> HeaderFields(const ReportContent& content) {
  const ReportHeader& header = content.header;
  const ReportLabels& labels = content.labels;
  const auto inLines = [](const std::array<Text, 2>& address) {
    return Joined(address[0], u"\r\n", address[1]);
  };
  return {{labels.documentNumber, header.documentNumber},
          {u"Inspector", header.inspector},
          {labels.date, header.date},
          {labels.dwellingAddress, inLines(header.dwellingAddress)},
          {labels.clientName, header.clientName},
          {labels.clientAddress, inLines(header.clientAddress), false},
          {labels.clientAgent, header.clientAgent, false},
          {labels.realEstateCompany, header.realEstateCompany, false}};
}

Text WordsOf(const ReportStep& step) {
  constexpr TextView kBlanks = u" \r\n\t";
  Text words = editing::StripTags(step.comments);
  words.resize(words.find_last_not_of(kBlanks) + 1);
  words.erase(0, words.find_first_not_of(kBlanks));
  return words;
}

}  // namespace inspector::reports
