#include "device/PictureHeader.h"

#include <algorithm>
#include <cstdlib>

namespace inspector::device {
namespace {

constexpr std::int64_t kLongestSide = 0xFFFF;

// Numbers of 1 to 4 bytes; one that is not there whole reads as 0, which is no size.
class Numbers {
public:
  explicit Numbers(std::string_view bytes) : m_Bytes(bytes) {}

  std::int64_t LowFirst(std::size_t at, std::size_t size) const {
    std::int64_t number = 0;
    for (std::size_t n = size; n-- > 0 && IsThere(at, size);) number = number << 8 | Byte(at + n);
    return number;
  }
  std::int64_t HighFirst(std::size_t at, std::size_t size) const {
    std::int64_t number = 0;
    for (std::size_t n = 0; n < size && IsThere(at, size); ++n) number = number << 8 | Byte(at + n);
    return number;
  }

private:
  bool IsThere(std::size_t at, std::size_t size) const { return at + size <= m_Bytes.size(); }
  unsigned char Byte(std::size_t at) const { return static_cast<unsigned char>(m_Bytes[at]); }

  std::string_view m_Bytes;
};

struct Sides {
  std::int64_t width = 0;
  std::int64_t height = 0;
};

Sides OfBitmap(const Numbers& numbers) {
  constexpr std::int64_t kOldHeader = 12;
  if (numbers.LowFirst(14, 4) == kOldHeader) return {numbers.LowFirst(18, 2), numbers.LowFirst(20, 2)};
  // Rows that are stored from the top have a height below 0.
  return {static_cast<std::int32_t>(numbers.LowFirst(18, 4)),
          std::abs(std::int64_t{static_cast<std::int32_t>(numbers.LowFirst(22, 4))})};
}

// Three ways of storing: with loss, without, and with more than one picture or colours that are seen through.
Sides OfWebP(std::string_view begin, const Numbers& numbers) {
  constexpr std::int64_t kFourteenBits = 0x3FFF;
  const std::string_view kind = begin.substr(12, 4);
  if (kind == "VP8 ")
    return {numbers.LowFirst(26, 2) & kFourteenBits, numbers.LowFirst(28, 2) & kFourteenBits};
  if (kind == "VP8X") return {numbers.LowFirst(24, 3) + 1, numbers.LowFirst(27, 3) + 1};
  if (kind != "VP8L" || begin.size() < 25) return {};
  const std::int64_t bits = numbers.LowFirst(21, 4);
  return {(bits & kFourteenBits) + 1, (bits >> 14 & kFourteenBits) + 1};
}

Sides SidesOf(std::string_view begin) {
  const Numbers numbers(begin);
  if (begin.starts_with("\x89PNG\r\n\x1A\n")) return {numbers.HighFirst(16, 4), numbers.HighFirst(20, 4)};
  if (begin.starts_with("GIF8")) return {numbers.LowFirst(6, 2), numbers.LowFirst(8, 2)};
  if (begin.starts_with("BM")) return OfBitmap(numbers);
  if (begin.size() >= 30 && begin.starts_with("RIFF") && begin.substr(8, 4) == "WEBP")
    return OfWebP(begin, numbers);
  return {};
}

bool IsSide(std::int64_t pixels) {
  return pixels >= 1 && pixels <= kLongestSide;
}

}  // namespace

std::optional<PictureSize> SizeInHeader(std::string_view begin) {
  const Sides sides = SidesOf(begin);
  if (!IsSide(sides.width) || !IsSide(sides.height)) return std::nullopt;
  return PictureSize{static_cast<int>(sides.width), static_cast<int>(sides.height)};
}

std::optional<PictureSize> ReadPictureSize(Files& files, const std::filesystem::path& file) {
  if (const auto photo = files.OpenForReading(file); photo == nullptr) {
    return std::nullopt;
  } else if (const auto size = ReadJpegSize(*photo)) {
    return size;
  }
  const auto other = files.OpenForReading(file);
  char begin[kPictureHeaderBytes] = {};
  const std::int64_t count = other == nullptr ? 0 : other->Read(begin, sizeof begin);
  return SizeInHeader({begin, static_cast<std::size_t>(std::max<std::int64_t>(count, 0))});
}

}  // namespace inspector::device
