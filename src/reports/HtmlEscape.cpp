#include "reports/HtmlEscape.h"

#include <algorithm>

namespace inspector::reports {
namespace {

// Empty for the end of a line.
TextView EntityOf(char16_t special) {
  switch (special) {
    case u'&':
      return u"&amp;";
    case u'<':
      return u"&lt;";
    case u'>':
      return u"&gt;";
    case u'"':
      return u"&quot;";
    default:
      return {};
  }
}

}  // namespace

void AppendEscaped(Text& page, TextView words, TextView lineEnd) {
  constexpr auto kIsSpecial = [](char16_t unit) {
    return (unit == u'&') | (unit == u'<') | (unit == u'>') | (unit == u'"') | (unit == u'\r') |
           (unit == u'\n');
  };
  std::size_t at = 0;
  while (true) {
    const std::size_t special = std::min(device::FindUnit(words, kIsSpecial, at), words.size());
    page.append(words.substr(at, special - at));
    if (special == words.size()) return;
    at = special + 1;
    const TextView entity = EntityOf(words[special]);
    page.append(entity.empty() ? lineEnd : entity);
    if (words[special] == u'\r' && words.substr(at).starts_with(u'\n')) ++at;
  }
}

}  // namespace inspector::reports
