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
      {"GIF", Bytes("4749463839619001"
                    "2c01")},
      {"BMP", Bytes("424d"
                    "00000000"
                    "00000000"
                    "36000000"
                    "28000000"
                    "90010000"
                    "2c010000")},
      {"BMP from the top", Bytes("424d"
                                 "00000000"
                                 "00000000"
                                 "36000000"
                                 "28000000"
                                 "90010000"
                                 "d4feffff")},
      {"old BMP", Bytes("424d"
                        "00000000"
                        "00000000"
                        "1a000000"
                        "0c000000"
                        "9001"
                        "2c01")},
      {"WebP", Bytes("524946460000000057454250"
                     "56503820"
                     "00000000"
                     "300100"
                     "9d012a"
                     "9001"
                     "2c01")},
      {"WebP without loss", Bytes("524946460000000057454250"
                                  "5650384c"
                                  "00000000"
                                  "2f"
                                  "8fc14a00"
                                  "0000000000")},
      {"extended WebP", Bytes("524946460000000057454250"
                              "56503858"
                              "0a000000"
                              "00000000"
                              "8f0100"
                              "2b0100")},
  };
  for (const auto& [kind, begin] : pictures) {
    const auto size = SizeInHeader(begin);
    ASSERT_TRUE(size) << kind;
    EXPECT_EQ(size->width, 400) << kind;
    EXPECT_EQ(size->height, 300) << kind;
    // The sizes stand at the end of each.
    for (std::size_t n = 0; n + 3 < begin.size(); ++n) {
      const auto cut = SizeInHeader(begin.substr(0, n));
      EXPECT_TRUE(!cut || (cut->width == 400 && cut->height == 300)) << kind << " after " << n << " bytes";
    }
    EXPECT_FALSE(SizeInHeader(begin.substr(0, 8))) << kind;
  }
  EXPECT_FALSE(SizeInHeader(Bytes("89504e470d0a1a0a0000000d49484452000100000000012c0802000000")))
      << "too wide";
  EXPECT_FALSE(SizeInHeader("a text that is no picture at all"));
}

}  // namespace
}  // namespace inspector::device
