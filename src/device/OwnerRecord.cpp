#include "device/OwnerRecord.h"

#include <algorithm>
#include <cstddef>

namespace inspector::device {
namespace {

constexpr std::size_t kBlockSize = 768;

struct Field {
  std::size_t offset;
  std::size_t end;  // where the next field begins
};
constexpr Field kName{0, 72};
constexpr Field kCompany{72, 144};
constexpr Field kAddress{144, 516};
constexpr Field kPhone{516, kBlockSize};

Text DecodeField(const std::vector<std::uint8_t>& block, Field field) {
  Text text;
  for (std::size_t at = field.offset; at + 1 < std::min(field.end, block.size()); at += 2) {
    const auto unit = static_cast<char16_t>(block[at] | (block[at + 1] << 8));
    if (unit == 0) break;
    text.push_back(unit);
  }
  return text;
}

void EncodeField(std::vector<std::uint8_t>& block, Field field, TextView text) {
  const std::size_t room = (field.end - field.offset) / 2 - 1;  // the last unit stays NUL
  text = Shortened(text, room);
  std::size_t at = field.offset;
  for (const char16_t unit : text) {
    block[at++] = static_cast<std::uint8_t>(unit & 0xFF);
    block[at++] = static_cast<std::uint8_t>(unit >> 8);
  }
}

}  // namespace

OwnerRecord OwnerRecord::Decode(const std::vector<std::uint8_t>& block) {
  OwnerRecord record;
  record.name = DecodeField(block, kName);
  record.company = DecodeField(block, kCompany);
  record.address = DecodeField(block, kAddress);
  record.phone = DecodeField(block, kPhone);
  return record;
}

std::vector<std::uint8_t> OwnerRecord::Encode() const {
  std::vector<std::uint8_t> block(kBlockSize);
  EncodeField(block, kName, name);
  EncodeField(block, kCompany, company);
  EncodeField(block, kAddress, address);
  EncodeField(block, kPhone, phone);
  return block;
}

std::array<Text, 4> SplitAddress(TextView address) {
  std::array<Text, 4> parts;
  for (std::size_t i = 0; i < 3; ++i) {
    const std::size_t found = address.find(u'\r');
    if (found == TextView::npos) break;
    parts[i] = address.substr(0, found);
    address.remove_prefix(std::min(found + 2, address.size()));
  }
  parts[3] = address;
  return parts;
}

}  // namespace inspector::device
