#include "device/TextMarks.h"

namespace inspector::device {
namespace {

// Most texts have no asterisk at all.
std::size_t FindTagMark(TextView text, std::size_t from) {
  from = FindUnit(
      text, [](char16_t unit) { return unit == u'*'; }, from);
  return from == TextView::npos ? from : text.find(kTagMark, from);
}

}  // namespace

std::optional<TextRange> FindTagRange(TextView text, std::size_t from) {
  const std::size_t begin = FindTagMark(text, from);
  if (begin == TextView::npos) return std::nullopt;
  const std::size_t end = FindTagMark(text, begin + kTagMark.size());
  if (end == TextView::npos) return std::nullopt;
  return TextRange{begin, end + kTagMark.size() - begin};
}

std::optional<TextRange> FindCaretRange(TextView text, std::size_t from) {
  const std::size_t begin = text.find(kCaret, from);
  if (begin == TextView::npos) return std::nullopt;
  const std::size_t end = text.find(kCaret, begin + 1);
  if (end == TextView::npos) return std::nullopt;
  return TextRange{begin, end + 1 - begin};
}

bool IsGapName(TextView between) {
  return between.empty() || between.front() < u'0' || between.front() > u'9';
}

}  // namespace inspector::device
