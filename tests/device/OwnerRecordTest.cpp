#include "device/OwnerRecord.h"

#include <gtest/gtest.h>

namespace inspector::device {
namespace {

void Put(std::vector<std::uint8_t>& block, std::size_t offset, TextView text) {
  for (const char16_t unit : text) {
    block.at(offset++) = static_cast<std::uint8_t>(unit & 0xFF);
    block.at(offset++) = static_cast<std::uint8_t>(unit >> 8);
  }
}

TEST(OwnerRecordTest, FieldsStandAtTheirOffsets) {
  std::vector<std::uint8_t> block(768);
  Put(block, 0, u"Ren\u00E9 \u0160ek");
  Put(block, 72, u"House & Home");
  Put(block, 144, u"1 Elm St.\r\nSalem");
  Put(block, 516, u"555-0100;555-0101");
  const OwnerRecord owner{u"Ren\u00E9 \u0160ek", u"House & Home", u"1 Elm St.\r\nSalem",
                          u"555-0100;555-0101"};
  EXPECT_EQ(OwnerRecord::Decode(block), owner);
  EXPECT_EQ(owner.Encode(), block);
}

TEST(OwnerRecordTest, DamagedBlocksAndLongFieldsStayInTheirBounds) {
  // No NUL anywhere: each field ends where the next begins. Or cut short in the middle of a unit.
  std::vector<std::uint8_t> block(768, 0x20);
  const auto sizes = [&block](std::size_t size) {
    block.resize(size, 0x20);
    const OwnerRecord owner = OwnerRecord::Decode(block);
    return std::array{owner.name.size(), owner.company.size(), owner.address.size(), owner.phone.size()};
  };
  for (const std::size_t size : {768u, 2000u})
    EXPECT_EQ(sizes(size), (std::array<std::size_t, 4>{36, 36, 186, 126})) << size;
  EXPECT_EQ(sizes(145), (std::array<std::size_t, 4>{36, 36, 0, 0}));
  EXPECT_EQ(sizes(0), (std::array<std::size_t, 4>{}));

  OwnerRecord wordy{Text(99, u'n'), Text(34, u'c') + u"\U0001F3E0", Text(999, u'a'), Text(999, u'p')};
  const OwnerRecord cut{Text(35, u'n'), Text(34, u'c'), Text(185, u'a'), Text(125, u'p')};
  EXPECT_EQ(wordy.Encode().size(), 768u);
  EXPECT_EQ(OwnerRecord::Decode(wordy.Encode()), cut);
}

}  // namespace
}  // namespace inspector::device
