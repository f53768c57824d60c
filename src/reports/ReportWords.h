// What reports in readers' formats do with the words of a visit.
#pragma once

#include "reports/ReportStep.h"

namespace inspector::reports {

// `between` only where neither is empty.
Text Joined(const Text& first, TextView between, const Text& second);
// The comments without their tags, and without blanks and empty lines around them.
Text WordsOf(const ReportStep& step);

}  // namespace inspector::reports
