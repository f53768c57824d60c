// The device owner's record: who the inspector is, in a block of up to 768 bytes.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "device/Text.h"

namespace inspector::device {

// UTF-16 little-endian fields at fixed byte offsets: name 0, company 72, address 144, phone 516.
struct OwnerRecord {
  Text name;     // at most 35 units
  Text company;  // at most 35 units
  Text address;  // lines separated by carriage return and line feed; at most 185 units
  Text phone;    // "phone;fax"; at most 125 units

  // A field ends at its first NUL or where the next begins; a block cut short gives what it still holds.
  static OwnerRecord Decode(const std::vector<std::uint8_t>& block);
  // Always 768 bytes; a field that is too long is cut.
  std::vector<std::uint8_t> Encode() const;

  bool operator==(const OwnerRecord&) const = default;
};

// The address in its four parts. Up to three lines are taken up to the next carriage return, which is
// dropped together with the character after it (whatever that is); what is left after the last split, or a
// whole address without a carriage return, is the fourth part.
std::array<Text, 4> SplitAddress(TextView address);

}  // namespace inspector::device
