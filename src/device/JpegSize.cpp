#include "device/JpegSize.h"

#include <algorithm>
#include <string>

namespace inspector::device {
namespace {

constexpr unsigned kStart = 0xD8;
constexpr unsigned kEnd = 0xD9;
constexpr unsigned kScan = 0xDA;
constexpr unsigned kCameraData = 0xE1;
constexpr int kSidewaysFrom = 5;  // of the eight ways in which a camera can be held
constexpr int kSidewaysTo = 8;

unsigned Byte(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

// Frames of all codings but the three markers in the same range that are none.
bool IsFrame(unsigned marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

// The numbers of a camera's data, in the order of bytes that it says. What lies beyond its end reads as 0.
class CameraData {
public:
  explicit CameraData(std::string_view segment) {
    constexpr std::string_view kName("Exif\0\0", 6);
    if (!segment.starts_with(kName)) return;
    m_Bytes = segment.substr(kName.size());
    m_IsLittleEndian = m_Bytes.starts_with("II");
  }

  bool IsSideways() const {
    constexpr std::uint64_t kEntrySize = 12;
    constexpr std::uint64_t kOrientation = 0x0112;
    const std::uint64_t directory = Number(4, 4);
    const std::uint64_t entries = Number(directory, 2);
    for (std::uint64_t n = 0; n < entries; ++n) {
      const std::uint64_t entry = directory + 2 + n * kEntrySize;
      if (entry + kEntrySize > m_Bytes.size()) return false;
      if (Number(entry, 2) != kOrientation) continue;
      const std::uint64_t way = Number(entry + 8, 2);
      return way >= kSidewaysFrom && way <= kSidewaysTo;
    }
    return false;
  }

private:
  std::uint64_t Number(std::uint64_t at, std::uint64_t size) const {
    std::uint64_t number = 0;
    if (at + size > m_Bytes.size()) return 0;
    for (std::uint64_t n = 0; n < size; ++n)
      number = number << 8 | Byte(m_Bytes, at + (m_IsLittleEndian ? size - 1 - n : n));
    return number;
  }

  std::string_view m_Bytes;
  bool m_IsLittleEndian = false;
};

class JpegReader {
public:
  explicit JpegReader(InputFile& file) : m_File(file) {}

  std::optional<PictureSize> Read() {
    if (NextByte() != 0xFF || NextByte() != kStart) return std::nullopt;
    bool isSideways = false;
    while (const auto marker = NextMarker()) {
      if (*marker == kEnd || *marker == kScan || !ReadSegment()) return std::nullopt;
      if (*marker == kCameraData) isSideways = isSideways || CameraData(m_Segment).IsSideways();
      if (IsFrame(*marker)) return SizeOfFrame(isSideways);
    }
    return std::nullopt;
  }

private:
  std::optional<unsigned> NextByte() {
    char byte = 0;
    if (m_File.Read(&byte, 1) != 1) return std::nullopt;
    return static_cast<unsigned char>(byte);
  }

  // Any number of FF may stand before a marker.
  std::optional<unsigned> NextMarker() {
    if (NextByte() != 0xFF) return std::nullopt;
    auto marker = NextByte();
    while (marker == 0xFF) marker = NextByte();
    return marker;
  }

  bool ReadSegment() {
    const auto high = NextByte();
    const auto low = NextByte();
    if (!high || !low) return false;
    const std::size_t size = *high << 8 | *low;  // counts its own two bytes
    if (size < 2) return false;
    m_Segment.resize(size - 2);
    return m_File.Read(m_Segment.data(), m_Segment.size()) == static_cast<std::int64_t>(m_Segment.size());
  }

  std::optional<PictureSize> SizeOfFrame(bool isSideways) const {
    if (m_Segment.size() < 5) return std::nullopt;
    PictureSize size{static_cast<int>(Byte(m_Segment, 3) << 8 | Byte(m_Segment, 4)),
                     static_cast<int>(Byte(m_Segment, 1) << 8 | Byte(m_Segment, 2))};
    if (size.width == 0 || size.height == 0) return std::nullopt;
    if (isSideways) std::swap(size.width, size.height);
    return size;
  }

  InputFile& m_File;
  std::string m_Segment;
};

}  // namespace

std::optional<PictureSize> ReadJpegSize(InputFile& file) {
  return JpegReader(file).Read();
}

}  // namespace inspector::device
