// The company and the inspector as reports name them.
#pragma once

#include <array>

#include "data/Workspace.h"
#include "device/Text.h"

namespace inspector::reports {

using device::Text;
using device::TextView;

struct ReportCompany {
  Text name;
  std::array<Text, 4> address;  // as device::SplitAddress cuts it
  Text phone;
  Text fax;
  Text inspector;  // "name; licence"

  // Name, street, and all that follows it joined with ", ".
  std::array<Text, 3> Lines() const;
  // What stands before the ";" of the inspector's text, without blanks around it.
  Text InspectorName() const;
};

// From the device owner's record and the office's options. A record that cannot be read is reported, and
// empty.
ReportCompany ReadCompany(data::Workspace& workspace);

}  // namespace inspector::reports
