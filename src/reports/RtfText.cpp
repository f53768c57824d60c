#include "reports/RtfText.h"

namespace inspector::reports {

Text EscapeText(TextView text) {
  constexpr auto kIsSpecial = [](char16_t unit) {
    return (unit == u'{') | (unit == u'}') | (unit == u'\r') | (unit == u'\u00ac');
  };
  Text escaped;
  escaped.reserve(text.size());
  std::size_t at = device::FindUnit(text, kIsSpecial);
  while (at != TextView::npos && at > 0) {
    escaped.append(text.substr(0, at));
    const char16_t special = text[at];
    if (special == u'{' || special == u'}') {
      escaped.append({u'\\', special});
    } else {
      escaped.append(u"\\par ");
    }
    text.remove_prefix(at + 1);
    at = device::FindUnit(text, kIsSpecial);
  }
  return escaped.append(text);
}

}  // namespace inspector::reports
