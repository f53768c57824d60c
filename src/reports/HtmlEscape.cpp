#include "reports/HtmlEscape.h"

namespace inspector::reports {

void AppendEscaped(Text& page, TextView words, TextView lineEnd) {
  for (std::size_t at = 0; at < words.size(); ++at) {
    switch (words[at]) {
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
        if (at + 1 < words.size() && words[at + 1] == u'\n') ++at;
        break;
      case u'\n':
        page += lineEnd;
        break;
      default:
        page += words[at];
    }
  }
}

}  // namespace inspector::reports
