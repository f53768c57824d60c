#include "device/LastPlace.h"

#include "device/Format.h"

namespace inspector::device {
namespace {

const Text kKey = u"HKEY_CURRENT_USER\\Software\\Brindlecove\\Inspector";
const Text kValue = u"LastPlace";

}  // namespace

// One value for all three: a kill between two writes must not name a step of another inspection.
LastPlace ReadLastPlace(const Registry& registry) {
  LastPlace place;
  const std::vector<Text> parts = Split(registry.Read(kKey, kValue).value_or(u""), u' ');
  std::int32_t* const members[] = {&place.inspectionID, &place.categoryID, &place.stepID};
  for (std::size_t n = 0; n < std::size(members) && n < parts.size(); ++n)
    if (const int key = LeadingInteger(parts[n]); key > 0 || (n == 1 && parts[n] == u"0")) *members[n] = key;
  return place;
}

bool WriteLastPlace(Registry& registry, const LastPlace& place) {
  return registry.Write(kKey, kValue,
                        Format(u"%d %d %d", place.inspectionID, place.categoryID, place.stepID));
}

}  // namespace inspector::device
