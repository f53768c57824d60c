#include "spell/TextCheck.h"

#include <algorithm>

namespace inspector::spell {

std::vector<MisspeltWord> TextCheck::FindMisspelt(TextView text) const {
  return FindMisspelt(text, 0, text.size());
}

std::vector<MisspeltWord> TextCheck::FindMisspelt(TextView text, std::size_t from, std::size_t to) const {
  std::vector<MisspeltWord> misspelt;
  if (!m_Checker.HasDictionary()) return misspelt;
  // One word more, with which the last one may belong together.
  constexpr std::size_t kBlankAndNext = 2;
  const std::size_t blank = std::min(text.find(u' ', to), text.size());
  const std::size_t end = std::min(blank + kBlankAndNext, text.size());
  const std::vector<ScannedWord> words = m_Scanner.Scan(text, from, end);
  for (std::size_t n = 0; n < words.size() && words[n].range.at < to; ++n) {
    TextRange part = MisspeltPart(text, words[n]);
    if (part.length == 0 || (!misspelt.empty() && misspelt.back().range.End() > part.at)) continue;
    part = WithTornPart(text, words[n], part, n + 1 < words.size() ? &words[n + 1] : nullptr);
    misspelt.push_back({part, Text(text.substr(part.at, part.length))});
  }
  return misspelt;
}

TextRange TextCheck::MisspeltPart(TextView text, const ScannedWord& word) const {
  constexpr TextRange kNone;
  const auto part = [text](std::size_t at, std::size_t length) { return text.substr(at, length); };
  if (m_Checker.Check(part(word.range.at, word.range.length))) return kNone;
  // Words with signs in them ("A/C"), and abbreviations, of which some have their period in the dictionary.
  for (const TextRange& range : {word.range, word.whole}) {
    if (range != word.range && m_Checker.Check(part(range.at, range.length))) return kNone;
    if (range.End() < text.size() && text[range.End()] == u'.' &&
        m_Checker.Check(part(range.at, range.length + 1)))
      return kNone;
  }
  TextRange rest = word.range;
  while (true) {
    const TextView left = part(rest.at, rest.length);
    const std::size_t apostrophe = left.find_first_of(u"'\u2019");
    if (apostrophe == TextView::npos || !m_Checker.Check(left.substr(0, apostrophe + 1))) return rest;
    rest = {rest.at + apostrophe + 1, rest.length - apostrophe - 1};
    if (rest.length == 0 || m_Checker.Check(part(rest.at, rest.length))) return kNone;
  }
}

TextRange TextCheck::WithTornPart(TextView text, const ScannedWord& word, TextRange part,
                                  const ScannedWord* next) const {
  Text joined(text.substr(word.whole.at, word.whole.length));
  if (std::erase(joined, u'-') == 1 && m_Checker.Check(joined)) return word.whole;
  if (part != word.whole || part.End() >= text.size() || text[part.End()] != u' ') return part;
  if (!next || next->range.at != part.End() + 1 || next->range != next->whole) return part;
  joined = text.substr(part.at, part.length);
  joined += text.substr(next->range.at, next->range.length);
  return m_Checker.Check(joined) ? TextRange{part.at, next->range.End() - part.at} : part;
}

}  // namespace inspector::spell
