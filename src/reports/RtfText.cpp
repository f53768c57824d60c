#include "reports/RtfText.h"

namespace inspector::reports {

Text EscapeText(TextView text) {
  constexpr TextView kSpecial = u"{}\r\u00ac";
  Text escaped;
  escaped.reserve(text.size());
  std::size_t at = text.find_first_of(kSpecial);
  while (at != TextView::npos && at > 0) {
    escaped.append(text.substr(0, at));
    const char16_t special = text[at];
    if (special == u'{' || special == u'}') {
      escaped.append({u'\\', special});
    } else {
      escaped.append(u"\\par ");
    }
    text.remove_prefix(at + 1);
    at = text.find_first_of(kSpecial);
  }
  return escaped.append(text);
}

}  // namespace inspector::reports
