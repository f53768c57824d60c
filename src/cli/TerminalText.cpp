#include "cli/TerminalText.h"

#include <algorithm>

namespace inspector::cli {
namespace {

bool IsCommandToTerminal(char16_t unit) {
  return (unit < u' ' && unit != u'\n' && unit != u'\t') || (unit >= 0x7F && unit <= 0x9F);
}

}  // namespace

device::Text ForTerminal(device::Text text) {
  std::replace_if(text.begin(), text.end(), IsCommandToTerminal, u'\uFFFD');
  return text;
}

}  // namespace inspector::cli
