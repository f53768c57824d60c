#include "device/Text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>

namespace inspector::device {
namespace {

constexpr char16_t kReplacement = 0xFFFD;
constexpr std::uint64_t kHighBitOfEachByte = 0x8080808080808080u;
constexpr std::uint64_t kAboveAsciiOfEachUnit = 0xFF80FF80FF80FF80u;

// Widens blocks of `Size` bytes (8 or 16) from `done` on, up to the first that is not all ASCII. The copies
// through local arrays tell the compiler that the memories do not overlap, so that it uses vector
// instructions.
template <std::size_t Size>
std::size_t WidenBlocks(const char* bytes, std::size_t size, std::size_t done, char16_t* out) {
  for (; done + Size <= size; done += Size) {
    unsigned char block[Size];
    std::memcpy(block, bytes + done, Size);
    std::uint64_t words[Size / 8];
    std::memcpy(words, block, Size);
    std::uint64_t all = 0;
    for (const std::uint64_t word : words) all |= word;
    if ((all & kHighBitOfEachByte) != 0) break;
    char16_t wide[Size];
    for (std::size_t i = 0; i < Size; ++i) wide[i] = block[i];
    std::memcpy(out + done, wide, sizeof(wide));
  }
  return done;
}

// Widens ASCII up to the first other byte and returns how many bytes that were.
std::size_t WidenAscii(const char* bytes, std::size_t size, char16_t* out) {
  std::size_t done = WidenBlocks<16>(bytes, size, 0, out);
  done = WidenBlocks<8>(bytes, size, done, out);
  for (; done < size && static_cast<unsigned char>(bytes[done]) < 0x80; ++done) {
    out[done] = static_cast<unsigned char>(bytes[done]);
  }
  return done;
}

// The same the other way.
std::size_t NarrowAscii(const char16_t* units, std::size_t size, char* out) {
  std::size_t done = 0;
  for (; done + 8 <= size; done += 8) {
    char16_t chunk[8];
    std::memcpy(chunk, units + done, sizeof(chunk));
    std::uint64_t halves[2];
    std::memcpy(halves, chunk, sizeof(halves));
    if (((halves[0] | halves[1]) & kAboveAsciiOfEachUnit) != 0) break;
    char narrow[8];
    for (int i = 0; i < 8; ++i) narrow[i] = static_cast<char>(chunk[i]);
    std::memcpy(out + done, narrow, sizeof(narrow));
  }
  for (; done < size && units[done] < 0x80; ++done) out[done] = static_cast<char>(units[done]);
  return done;
}

struct Decoded {
  char32_t point;
  std::size_t length;
};

// Decodes the sequence at `bytes`, which begins with no ASCII byte. The second byte's range keeps out
// overlong forms, surrogates and what lies beyond U+10FFFF.
Decoded DecodeSequence(const unsigned char* bytes, std::size_t size) {
  const unsigned char lead = bytes[0];
  std::size_t length = 0;
  char32_t point = 0;
  unsigned char low = 0x80;
  unsigned char high = 0xBF;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
    point = lead & 0x1Fu;
  } else if ((lead & 0xF0u) == 0xE0) {
    length = 3;
    point = lead & 0x0Fu;
    if (lead == 0xE0) low = 0xA0;
    if (lead == 0xED) high = 0x9F;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    point = lead & 0x07u;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;
  } else {
    return {kReplacement, 1};
  }
  for (std::size_t i = 1; i < length; ++i) {
    if (i == size || bytes[i] < low || bytes[i] > high) return {kReplacement, i};
    point = (point << 6) | (bytes[i] & 0x3Fu);
    low = 0x80;
    high = 0xBF;
  }
  return {point, length};
}

bool IsLowSurrogate(char16_t unit) {
  return (unit & 0xFC00) == 0xDC00;
}

}  // namespace

bool IsHighSurrogate(char16_t unit) {
  return (unit & 0xFC00) == 0xD800;
}

TextView Shortened(TextView text, std::size_t most) {
  if (text.size() <= most) return text;
  return text.substr(0, most > 0 && IsHighSurrogate(text[most - 1]) ? most - 1 : most);
}

void AssignUtf8(Text& out, const char* bytes, std::size_t size) {
  out.resize(size);  // never more units than bytes
  char16_t* const begin = out.data();
  char16_t* end = begin;
  std::size_t at = 0;
  while (true) {
    const std::size_t ascii = WidenAscii(bytes + at, size - at, end);
    at += ascii;
    end += ascii;
    if (at == size) break;
    const Decoded decoded = DecodeSequence(reinterpret_cast<const unsigned char*>(bytes) + at, size - at);
    at += decoded.length;
    if (decoded.point < 0x10000) {
      *end++ = static_cast<char16_t>(decoded.point);
    } else {
      *end++ = static_cast<char16_t>(0xD7C0 + (decoded.point >> 10));
      *end++ = static_cast<char16_t>(0xDC00 + (decoded.point & 0x3FF));
    }
  }
  out.resize(static_cast<std::size_t>(end - begin));
}

void AssignUtf8(std::string& out, TextView text) {
  out.resize(text.size());
  std::size_t at = NarrowAscii(text.data(), text.size(), out.data());
  if (at == text.size()) return;
  out.resize(at + (text.size() - at) * 3);  // never more than three bytes per unit
  char* end = out.data() + at;
  while (at < text.size()) {
    const char16_t unit = text[at++];
    if (unit < 0x800) {
      *end++ = static_cast<char>(0xC0 | (unit >> 6));
    } else {
      char32_t point = unit;
      if (IsHighSurrogate(unit) && at < text.size() && IsLowSurrogate(text[at])) {
        point = 0x10000 + ((unit - 0xD800u) << 10) + (text[at++] - 0xDC00u);
        *end++ = static_cast<char>(0xF0 | (point >> 18));
        *end++ = static_cast<char>(0x80 | ((point >> 12) & 0x3F));
      } else {
        if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) point = kReplacement;
        *end++ = static_cast<char>(0xE0 | (point >> 12));
      }
      *end++ = static_cast<char>(0x80 | ((point >> 6) & 0x3F));
      *end++ = static_cast<char>(0x80 | (point & 0x3F));
      const std::size_t more = NarrowAscii(text.data() + at, text.size() - at, end);
      at += more;
      end += more;
      continue;
    }
    *end++ = static_cast<char>(0x80 | (unit & 0x3F));
    const std::size_t ascii = NarrowAscii(text.data() + at, text.size() - at, end);
    at += ascii;
    end += ascii;
  }
  out.resize(static_cast<std::size_t>(end - out.data()));
}

Text FromUtf8(std::string_view bytes) {
  Text text;
  AssignUtf8(text, bytes.data(), bytes.size());
  return text;
}

std::string ToUtf8(TextView text) {
  std::string bytes;
  AssignUtf8(bytes, text);
  return bytes;
}

bool EqualIgnoringCase(TextView left, TextView right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char16_t a, char16_t b) { return a == b || FoldCase(a) == FoldCase(b); });
}

Text Folded(TextView text) {
  Text folded(text);
  std::transform(folded.begin(), folded.end(), folded.begin(), FoldCase);
  return folded;
}

bool Contains(TextView text, TextView part) {
  return text.find(part) != TextView::npos;
}

Text ReplaceAll(Text text, TextView what, TextView with) {
  if (what.empty()) return text;
  std::size_t found = text.find(what);
  if (found == Text::npos) return text;
  Text result;
  result.reserve(text.size());
  std::size_t at = 0;
  for (; found != Text::npos; found = text.find(what, at)) {
    result.append(text, at, found - at);
    result.append(with);
    at = found + what.size();
  }
  result.append(text, at);
  return result;
}

std::vector<Text> Split(TextView text, char16_t separator) {
  std::vector<Text> parts;
  while (true) {
    const std::size_t found = text.find(separator);
    parts.emplace_back(text.substr(0, found));
    if (found == TextView::npos) return parts;
    text.remove_prefix(found + 1);
  }
}

int LeadingInteger(TextView text) {
  std::size_t at = 0;
  while (at < text.size() && (text[at] == u' ' || (text[at] >= u'\t' && text[at] <= u'\r'))) ++at;
  bool negative = false;
  if (at < text.size() && (text[at] == u'-' || text[at] == u'+')) negative = text[at++] == u'-';
  constexpr std::int64_t kLowest = std::numeric_limits<int>::min();
  constexpr std::int64_t kHighest = std::numeric_limits<int>::max();
  std::int64_t value = 0;
  for (; at < text.size() && text[at] >= u'0' && text[at] <= u'9'; ++at) {
    const int digit = text[at] - u'0';
    value = std::clamp(value * 10 + (negative ? -digit : digit), kLowest, kHighest);
  }
  return static_cast<int>(value);
}

Text Decimal(int value) {
  char digits[16];
  const auto end = std::to_chars(digits, digits + sizeof(digits), value).ptr;
  return Text(digits, end);
}

Text StripLeadingControls(TextView text) {
  const auto first = std::find_if(text.begin(), text.end(), [](char16_t unit) { return unit >= u' '; });
  return Text(first, text.end());
}

}  // namespace inspector::device
