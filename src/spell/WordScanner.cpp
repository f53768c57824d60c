#include "spell/WordScanner.h"

#include <algorithm>
#include <utility>

namespace inspector::spell {
namespace {

bool IsBlank(char16_t unit) {
  return unit <= u' ' || unit == 0xA0 || unit == 0x2028 || unit == 0x2029;
}

bool IsDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}

bool IsApostrophe(char16_t unit) {
  return unit == u'\'' || unit == kTypographicApostropheUnit;
}

// They are in some words, but stand between words everywhere else.
bool PartsWords(char16_t unit) {
  constexpr TextView kSigns = u"-./&,;:+";
  return kSigns.find(unit) != TextView::npos;
}

TextView WithoutPunctuation(TextView token) {
  constexpr TextView kPunctuation = u".,;:!?()[]{}\"'<>\u2018\u2019\u201C\u201D\u00AB\u00BB";
  const std::size_t begin = token.find_first_not_of(kPunctuation);
  if (begin == TextView::npos) return {};
  return token.substr(begin, token.find_last_not_of(kPunctuation) + 1 - begin);
}

// Of a page, a mailbox or a file.
bool IsAddress(TextView token) {
  const Text address = device::Folded(WithoutPunctuation(token));
  const std::size_t at = address.find(u'@');
  if (at != Text::npos && at > 0 && at + 1 < address.size()) return true;
  if (device::Contains(address, u"://") || address.starts_with(u"www.") || address.starts_with(u"mailto:"))
    return true;
  if (token.find(u'\\') != TextView::npos) return true;
  // "brindlecove.example/help", but not the end of a sentence with no blank behind its period.
  constexpr TextView kDomains[] = {u"com", u"org", u"net", u"gov", u"edu", u"info", u"biz", u"example"};
  const TextView host = TextView(address).substr(0, address.find(u'/'));
  const std::size_t dot = host.rfind(u'.');
  return dot != TextView::npos && dot > 0 &&
         std::find(std::begin(kDomains), std::end(kDomains), host.substr(dot + 1)) != std::end(kDomains);
}

// Ascending; they may overlap.
std::vector<TextRange> MarkedRanges(TextView text) {
  std::vector<TextRange> ranges;
  if (text.starts_with(u"[*"))
    if (const std::size_t end = text.find(u']'); end != TextView::npos) ranges.push_back({0, end + 1});
  for (auto tag = device::FindTagRange(text); tag; tag = device::FindTagRange(text, tag->End()))
    ranges.push_back(*tag);
  for (auto gap = device::FindCaretRange(text); gap;) {
    const bool isGap = device::IsGapName(text.substr(gap->at + 1, gap->length - 2));
    if (isGap) ranges.push_back(*gap);
    gap = device::FindCaretRange(text, isGap ? gap->End() : gap->at + 1);
  }
  std::sort(ranges.begin(), ranges.end(),
            [](const TextRange& one, const TextRange& other) { return one.at < other.at; });
  return ranges;
}

}  // namespace

WordScanner::WordScanner(const SpellChecker& checker, const std::vector<Text>& shortcuts)
    : m_Checker(checker) {
  for (const Text& shortcut : shortcuts) m_Shortcuts.insert(device::Folded(shortcut));
}

std::vector<ScannedWord> WordScanner::Scan(TextView text) const {
  return Scan(text, 0, text.size());
}

std::vector<ScannedWord> WordScanner::Scan(TextView text, std::size_t from, std::size_t to) const {
  std::vector<ScannedWord> words;
  to = std::min(to, text.size());
  while (from > 0 && from < text.size() && !IsBlank(text[from - 1])) --from;
  const std::vector<TextRange> marked = MarkedRanges(text);
  auto next = marked.begin();
  for (std::size_t at = from; at < to;) {
    for (; next != marked.end() && next->at <= at; ++next) at = std::max(at, next->End());
    if (at >= to) break;
    if (IsBlank(text[at])) {
      ++at;
      continue;
    }
    const std::size_t limit = next == marked.end() ? text.size() : next->at;
    std::size_t end = at;
    while (end < limit && !IsBlank(text[end])) ++end;
    ScanToken(text, {at, end - at}, words);
    at = end;
  }
  return words;
}

bool WordScanner::IsWordUnit(char16_t unit) const {
  return IsApostrophe(unit) || IsDigit(unit) || (!PartsWords(unit) && m_Checker.IsWordCharacter(unit));
}

bool WordScanner::IsShortcut(TextView token) const {
  return !m_Shortcuts.empty() && (m_Shortcuts.contains(device::Folded(token)) ||
                                  m_Shortcuts.contains(device::Folded(WithoutPunctuation(token))));
}

void WordScanner::ScanToken(TextView text, TextRange token, std::vector<ScannedWord>& words) const {
  const TextView whole = text.substr(token.at, token.length);
  if (IsShortcut(whole) || IsAddress(whole)) return;
  const std::size_t first = words.size();
  for (std::size_t at = token.at; at < token.End();) {
    std::size_t end = at;
    while (end < token.End() && IsWordUnit(text[end])) ++end;
    if (end == at) {
      ++at;
      continue;
    }
    const TextView run = text.substr(at, end - at);
    const std::size_t begin =
        static_cast<std::size_t>(std::find_if_not(run.begin(), run.end(), IsApostrophe) - run.begin());
    std::size_t length = run.size();
    while (length > begin && IsApostrophe(run[length - 1])) --length;
    if (length > begin && std::none_of(run.begin(), run.end(), IsDigit) &&
        !IsShortcut(run.substr(begin, length - begin)))
      words.push_back({{at + begin, length - begin}, {}});
    at = end;
  }
  // From the first word unit of the token to its last one.
  std::size_t begin = token.at;
  std::size_t end = token.End();
  const auto isOuter = [this](char16_t unit) { return !IsWordUnit(unit) || IsApostrophe(unit); };
  while (begin < end && isOuter(text[begin])) ++begin;
  while (end > begin && isOuter(text[end - 1])) --end;
  for (std::size_t n = first; n < words.size(); ++n) words[n].whole = {begin, end - begin};
}

}  // namespace inspector::spell
