#include "app/ReportText.h"

#include <algorithm>

#include "device/CodePage.h"
#include "device/Format.h"

namespace inspector::app {
namespace {

constexpr std::ptrdiff_t kManyLines = 3;  // of the footer

// The lines of a report end where the text has a carriage return; one at the end makes no further line.
std::ptrdiff_t LineCount(TextView text) {
  const TextView words = text.substr(0, text.find_last_not_of(u"\r\n ") + 1);
  return words.empty() ? 0 : 1 + std::count(words.begin(), words.end(), u'\r');
}

Text Joined(const Text& first, const Text& second) {
  return first + (first.empty() || second.empty() ? u"" : u"\n") + second;
}

}  // namespace

Text LostCharacters(TextView text) {
  Text lost;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const TextView character = text.substr(at, device::IsHighSurrogate(text[at]) ? 2 : 1);
    at += character.size() - 1;
    if (!device::FitsCodePage(character) && lost.find(character) == Text::npos) lost += character;
  }
  return lost;
}

Text ReportTextRemark(TextView text) {
  Text remark;
  if (const Text lost = LostCharacters(text); !lost.empty())
    remark = device::Format(u"Reports print ? in the place of these characters: %s", lost);
  if (text.find(u'\\') != TextView::npos)
    remark =
        Joined(remark, u"A backslash is a command in a report; it and the word behind it may be missing.");
  return remark;
}

Text DefinitionsRemark(TextView text) {
  const Text common = ReportTextRemark(text);
  if (!text.empty()) return common;
  return u"While this is empty, reports in 3 and 4 columns define nine usual ratings, the others none.";
}

Text FooterRemark(TextView text) {
  const std::ptrdiff_t lines = LineCount(text);
  const Text room = lines > kManyLines ? device::Format(u"%d lines at the foot leave each page less room.",
                                                        static_cast<int>(lines))
                                       : Text();
  return Joined(ReportTextRemark(text), room);
}

}  // namespace inspector::app
