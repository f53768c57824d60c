// What reports in readers' formats do with the words of a visit.
#pragma once

#include <vector>

#include "reports/ReportContent.h"

namespace inspector::reports {

// A page may hold line ends and tabs but no other control character.
constexpr bool IsControl(char16_t unit) {
  // Without branches, so that whole blocks of letters are looked at in one go.
  return ((unit < u' ') & (unit != u'\t') & (unit != u'\r') & (unit != u'\n')) |
         ((unit >= 0x7F) & (unit <= 0x9F)) | (unit >= 0xFFFE);
}
// Something for the eye, or for the voice that reads a page.
bool HasWords(TextView words);
// A title as it stands, "(no name)" for one that has no words.
TextView NameOrNone(TextView title);
// `between` only where neither is empty.
Text Joined(const Text& first, TextView between, const Text& second);
// "12.03 Flashing".
Text NameOf(const ReportStep& step);
// What a report says of house and client, in this order; with empty values where nothing is known.
struct HeaderField {
  Text label;
  Text value;           // an address in two lines
  bool isUsual = true;  // expected in every report
};
std::vector<HeaderField> HeaderFields(const ReportContent& content);
// The comments without their tags, and without blanks and empty lines around them.
Text WordsOf(const ReportStep& step);

}  // namespace inspector::reports
