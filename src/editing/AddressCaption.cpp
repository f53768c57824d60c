#include "editing/AddressCaption.h"

namespace inspector::editing {

Text AddressCaption(const data::InspectionTable& inspection) {
  const Text& address = inspection.m_DwellingAddress;
  const Text& city = inspection.m_CityStateZip;
  return address + (address.empty() || city.empty() ? u"" : u", ") + city;
}

}  // namespace inspector::editing
