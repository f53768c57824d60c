#include "editing/Shortcuts.h"

#include <algorithm>

#include "data/ExpandedTextTable.h"

namespace inspector::editing {
namespace {

bool IsBlank(char16_t unit) {
  return unit <= u' ' || unit == 0xA0 || unit == 0x2029;
}

}  // namespace

Shortcuts::Shortcuts(data::Databases& databases) {
  const data::ReadScope reading(databases.Template());
  data::ExpandedTextTable shortcuts(databases);
  shortcuts.Open();
  for (int n = 0; n < shortcuts.RecordCount(); ++n)
    if (shortcuts.GetRecord(n) && !shortcuts.m_ShortCut.empty())
      m_Expanded.try_emplace(device::Folded(shortcuts.m_ShortCut), shortcuts.m_Expanded);
}

std::vector<Text> Shortcuts::Names() const {
  std::vector<Text> names;
  for (const auto& [name, expanded] : m_Expanded) names.push_back(name);
  return names;
}

bool Shortcuts::EndsWord(char16_t unit) {
  constexpr TextView kPunctuation = u".,;:!?()[]{}\"'/\\-+*=<>&";
  return IsBlank(unit) || kPunctuation.find(unit) != TextView::npos;
}

const Text* Shortcuts::Find(TextView word) const {
  const auto found = m_Expanded.find(device::Folded(word));
  return found == m_Expanded.end() ? nullptr : &found->second;
}

std::optional<TextChange> Shortcuts::Expand(TextView text, std::size_t wordEnd) const {
  const TextView before = text.substr(0, std::min(wordEnd, text.size()));
  const auto wordFrom = [&](auto&& ends) {
    const auto found = std::find_if(before.rbegin(), before.rend(), ends);
    return static_cast<std::size_t>(before.rend() - found);
  };
  // A shortcut may hold a sign ("w/o"), so all that stands between blanks is tried first.
  for (const std::size_t begin : {wordFrom(IsBlank), wordFrom(EndsWord)}) {
    const TextView word = before.substr(begin);
    if (word.empty()) continue;
    if (const Text* expanded = Find(word)) return TextChange{begin, word.size(), *expanded};
  }
  return std::nullopt;
}

}  // namespace inspector::editing
