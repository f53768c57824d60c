// Any block as the record of the device's owner: what is read from it must survive being written.
#include "Fuzzer.h"
#include "device/OwnerRecord.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  using inspector::device::OwnerRecord;
  using inspector::fuzz::Expect;
  // A field that others have filled to its last unit loses that one, which is the mark of its end.
  const OwnerRecord owner = OwnerRecord::Decode(OwnerRecord::Decode({bytes, bytes + size}).Encode());
  const std::vector<std::uint8_t> block = owner.Encode();
  Expect(block.size() == 768, "a record has 768 bytes");
  Expect(OwnerRecord::Decode(block) == owner, "a record is read as it was written");
  inspector::device::Text address;
  for (const auto& part : inspector::device::SplitAddress(owner.address)) address += part;
  Expect(address.size() <= owner.address.size(), "the parts of an address are parts of it");
  return 0;
}
