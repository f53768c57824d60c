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
  Put(block, 144, u"1 Elm St.\r\nSpringfield");
  Put(block, 516, u"555-0100;555-0101");
  const OwnerRecord owner{u"Ren\u00E9 \u0160ek", u"House & Home", u"1 Elm St.\r\nSpringfield",
                          u"555-0100;555-0101"};
  EXPECT_EQ(OwnerRecord::Decode(block), owner);
  EXPECT_EQ(owner.Encode(), block);
}

TEST(OwnerRecordTest, DamagedBlocksAndLongFieldsStayInTheirBounds) {
  // No NUL anywhere: each field ends where the next begins.
  std::vector<std::uint8_t> full(768, 0x20);
  const OwnerRecord owner = OwnerRecord::Decode(full);
  EXPECT_EQ(owner.name.size(), 36u);
  EXPECT_EQ(owner.company.size(), 36u);
  EXPECT_EQ(owner.address.size(), 186u);
  EXPECT_EQ(owner.phone.size(), 126u);

  full.resize(145);  // cut short in the middle of a unit
  EXPECT_EQ(OwnerRecord::Decode(full).company.size(), 36u);
  EXPECT_EQ(OwnerRecord::Decode(full).address, u"");
  EXPECT_EQ(OwnerRecord::Decode({}), OwnerRecord());
  full.resize(2000, 0x20);
  EXPECT_EQ(OwnerRecord::Decode(full).phone.size(), 126u);

  OwnerRecord wordy{Text(99, u'n'), Text(34, u'c') + u"\U0001F3E0", Text(999, u'a'), Text(999, u'p')};
  const OwnerRecord cut{Text(35, u'n'), Text(34, u'c'), Text(185, u'a'), Text(125, u'p')};
  EXPECT_EQ(wordy.Encode().size(), 768u);
  EXPECT_EQ(OwnerRecord::Decode(wordy.Encode()), cut);
}

TEST(OwnerRecordTest, AddressesAreSplitAtCarriageReturns) {
  struct Case {
    const char16_t* address;
    std::array<Text, 4> parts;
  };
  const Case cases[] = {
      {u"", {u"", u"", u"", u""}},
      {u"1 Elm St.", {u"", u"", u"", u"1 Elm St."}},
      {u"1 Elm St.\r\nSpringfield", {u"1 Elm St.", u"", u"", u"Springfield"}},
      {u"a\r\nb\r\nc\r\nd", {u"a", u"b", u"c", u"d"}},
      {u"a\r\nb\r\nc\r\nd\r\ne", {u"a", u"b", u"c", u"d\r\ne"}},
      {u"a\rXb", {u"a", u"", u"", u"b"}},  // whatever follows the carriage return is dropped
      {u"a\r\r\nb", {u"a", u"", u"", u"\nb"}},
      {u"a\r", {u"a", u"", u"", u""}},
      {u"\r\n\r\n", {u"", u"", u"", u""}},
      {u"a\nb", {u"", u"", u"", u"a\nb"}},
  };
  for (const Case& c : cases) EXPECT_EQ(SplitAddress(c.address), c.parts) << ToUtf8(c.address);
}

}  // namespace
}  // namespace inspector::device
