#include "device/Format.h"

#include <cassert>
#include <charconv>

namespace inspector::device {
namespace {

void AppendNumber(Text& out, std::int64_t number) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof(digits), number).ptr;
  out.append(digits, end);
}

void AppendHexByte(Text& out, std::int64_t number) {
  char digits[16];
  const auto end = std::to_chars(digits, digits + sizeof(digits), static_cast<std::uint32_t>(number), 16).ptr;
  if (end - digits < 2) out.push_back(u'0');
  out.append(digits, end);
}

void AppendQuotedValue(Text& out, TextView value) {
  for (const char16_t unit : value) {
    if (unit == u'"') out.push_back(u'"');
    out.push_back(unit);
  }
}

Text Fill(TextView format, std::initializer_list<FormatArgument> arguments, bool isStatement) {
  Text out;
  std::size_t room = format.size();
  for (const FormatArgument& argument : arguments) room += argument.String().size() + 4;
  out.reserve(room);

  auto next = arguments.begin();
  const auto take = [&](bool wantsText) -> const FormatArgument* {
    const bool fits = next != arguments.end() && next->IsText() == wantsText;
    assert(fits && "Format: an argument is missing or of the wrong kind");
    const FormatArgument* const taken = fits ? next : nullptr;
    if (next != arguments.end()) ++next;
    return taken;
  };

  std::size_t at = 0;
  while (at < format.size()) {
    const std::size_t percent = format.find(u'%', at);
    out.append(format.substr(at, percent - at));
    if (percent == TextView::npos) break;
    const TextView directive = format.substr(percent + 1);
    if (directive.starts_with(u'd')) {
      if (const auto* argument = take(false)) AppendNumber(out, argument->Number());
      at = percent + 2;
    } else if (directive.starts_with(u'c')) {
      if (const auto* argument = take(false)) out.push_back(static_cast<char16_t>(argument->Number()));
      at = percent + 2;
    } else if (directive.starts_with(u's')) {
      const bool quoted =
          isStatement && percent > 0 && format[percent - 1] == u'"' && directive.substr(1).starts_with(u'"');
      if (const auto* argument = take(true)) {
        if (quoted) {
          AppendQuotedValue(out, argument->String());
        } else {
          out.append(argument->String());
        }
      }
      at = percent + 2;
    } else if (directive.starts_with(u"02x")) {
      if (const auto* argument = take(false)) AppendHexByte(out, argument->Number());
      at = percent + 4;
    } else {
      out.push_back(u'%');  // "%%" is one; a stray % stands for itself
      at = percent + (directive.starts_with(u'%') ? 2 : 1);
    }
  }
  return out;
}

}  // namespace

Text FormatList(TextView format, std::initializer_list<FormatArgument> arguments) {
  return Fill(format, arguments, true);
}

Text PhraseList(TextView format, std::initializer_list<FormatArgument> arguments) {
  return Fill(format, arguments, false);
}

}  // namespace inspector::device
