#include "device/JpegEnd.h"
#include "device/PictureHeader.h"

#include <gtest/gtest.h>

namespace inspector::device {
namespace {

std::string Bytes(std::string_view digits) {
  std::string bytes;
  for (std::size_t at = 0; at + 1 < digits.size(); at += 2)
    bytes.push_back(static_cast<char>(std::stoi(std::string(digits.substr(at, 2)), nullptr, 16)));
  return bytes;
}

// 400 by 300 in each: the first bytes of files that other programs have made.
TEST(PictureHeaderTest, SizesOfAllKinds) {
  const std::pair<const char*, std::string> pictures[] = {
      {"PNG", Bytes("89504e470d0a1a0a0000000d49484452000001900000012c0802000000")},
      {"GIF", Bytes("47494638396190012c01")},
      {"BMP", Bytes("424d00000000000000003600000028000000900100002c010000")},
      {"BMP from the top", Bytes("424d0000000000000000360000002800000090010000d4feffff")},
      {"old BMP", Bytes("424d00000000000000001a0000000c00000090012c01")},
      {"WebP", Bytes("52494646000000005745425056503820000000003001009d012a90012c01")},
      {"WebP without loss", Bytes("5249464600000000574542505650384c000000002f8fc14a000000000000")},
      {"extended WebP", Bytes("524946460000000057454250565038580a000000000000008f01002b0100")},
  };
  for (const auto& [kind, begin] : pictures) {
    for (std::size_t n = 0; n <= begin.size(); ++n) {
      const auto size = SizeInHeader(begin.substr(0, n));
      EXPECT_TRUE(size ? size->width == 400 && size->height == 300 : n < begin.size()) << kind << " " << n;
      EXPECT_FALSE(size && n <= 8) << kind;
    }
  }
  EXPECT_FALSE(SizeInHeader(Bytes("89504e470d0a1a0a0000000d49484452000100000000012c0802000000"))) << "wide";
  EXPECT_FALSE(SizeInHeader("a text that is no picture at all"));
}

TEST(JpegEndTest, IsTheEndOfThePictureAndNotOfItsPreview) {
  const std::string whole = Bytes("ffd8ff01ffd0ffe10008ffd8aaffd9bbffffdb0003ffffda0004ffd9") + "pixels" +
                            Bytes("ff00ffd0") + Bytes("ffd9");
  for (std::size_t size = 3; size <= whole.size(); ++size) {
    JpegEnd atOnce;
    JpegEnd byteByByte;
    atOnce.Take(whole.substr(0, size));
    for (std::size_t n = 0; n < size; ++n) byteByByte.Take(whole.substr(n, 1));
    EXPECT_EQ(atOnce.IsCutShort(), size < whole.size()) << size;
    EXPECT_EQ(byteByByte.IsCutShort(), size < whole.size()) << size;
  }
  JpegEnd other;
  other.Take(Bytes("89504e470d0a1a0a"));
  EXPECT_TRUE(other.IsDecided() && !other.IsCutShort()) << "no photograph";
  JpegEnd trailed;
  trailed.Take(whole + "what a camera has put behind it");
  EXPECT_FALSE(trailed.IsCutShort());
}

}  // namespace
}  // namespace inspector::device
