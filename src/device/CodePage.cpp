#include "device/CodePage.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace inspector::device {
namespace {

// What the bytes 0x80 to 0x9F stand for; the five without a character stand for themselves. All other
// bytes are the character of the same number.
constexpr char16_t kUpperControls[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                         0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                         0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                         0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr int kNoByte = -1;
constexpr std::uint64_t kAboveAsciiOfEachUnit = 0xFF80FF80FF80FF80u;

int ByteOf(char16_t unit) {
  if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return unit;
  const auto found = std::find(std::begin(kUpperControls), std::end(kUpperControls), unit);
  if (found == std::end(kUpperControls)) return kNoByte;
  return static_cast<int>(0x80 + (found - std::begin(kUpperControls)));
}

// How many units from `at` on are ASCII, in steps of eight.
std::size_t AsciiRun(TextView text, std::size_t at) {
  const std::size_t start = at;
  for (; at + 8 <= text.size(); at += 8) {
    std::uint64_t halves[2];
    std::memcpy(halves, text.data() + at, sizeof(halves));
    if (((halves[0] | halves[1]) & kAboveAsciiOfEachUnit) != 0) break;
  }
  return at - start;
}

}  // namespace

void AppendCodePage(std::string& out, TextView text) {
  const std::size_t before = out.size();
  out.resize(before + text.size());
  char* const bytes = out.data() + before;
  std::size_t at = 0;
  while (at < text.size()) {
    for (const std::size_t end = at + AsciiRun(text, at); at < end; ++at) {
      bytes[at] = static_cast<char>(text[at]);
    }
    for (const std::size_t end = std::min(at + 8, text.size()); at < end; ++at) {
      const int byte = ByteOf(text[at]);
      bytes[at] = byte == kNoByte ? '?' : static_cast<char>(byte);
    }
  }
}

std::string ToCodePage(TextView text) {
  std::string bytes;
  AppendCodePage(bytes, text);
  return bytes;
}

Text FromCodePage(std::string_view bytes) {
  Text text(bytes.size(), u'\0');
  std::transform(bytes.begin(), bytes.end(), text.begin(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 && byte <= 0x9F ? kUpperControls[byte - 0x80] : static_cast<char16_t>(byte);
  });
  return text;
}

bool FitsCodePage(TextView text) {
  return std::all_of(text.begin(), text.end(), [](char16_t unit) { return ByteOf(unit) != kNoByte; });
}

}  // namespace inspector::device
