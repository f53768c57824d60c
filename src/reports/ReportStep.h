// One step, as every kind of report sees it.
#pragma once

#include "device/Text.h"

namespace inspector::reports {

using device::Text;
using device::TextView;

struct ReportStep {
  Text number;
  Text title;
  Text rating;
  Text materials;       // for reading, not as stored
  Text comments;        // with their picture tags
  bool isBold = false;  // of the rating
  bool isRed = false;
  bool isSummary = false;
  bool isReported = false;  // selected; the others count for the progress, and some call for a title

  bool IsOmitted() const { return rating == u"Omit"; }
};

}  // namespace inspector::reports
