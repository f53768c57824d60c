#include "reports/HtmlEscape.h"

#include <algorithm>

namespace inspector::reports {

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
    switch (words[special]) {
      case u'&':
        page += u"&amp;";
        break;
      case u'<':
        page += u"&lt;";
        break;
      case u'>':
        page += u"&gt;";
        break;
      case u'"':
        page += u"&quot;";
        break;
      case u'\r':
        page += lineEnd;
        if (words.substr(at).starts_with(u'\n')) ++at;
        break;
      case u'\n':
        page += lineEnd;
        break;
      default:
        break;
    }
  }
}

}  // namespace inspector::reports
