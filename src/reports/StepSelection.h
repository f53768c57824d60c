// Which steps a report is about, in which sections and in which order.
#pragma once

#include <functional>

#include "reports/ReportStep.h"

namespace inspector::reports {

struct StepSelection {
  // By category: those that have comments, materials or a rating. By major system: every step of the
  // inspection, whatever its category, in the order of the systems' names and then of the steps' numbers.
  enum class Sections { Categories, MajorSystems };
  Sections sections = Sections::Categories;
  std::function<bool(const ReportStep&)> isReported;
};

// In place of a rating, for a summary of all that the office has marked as worth one.
inline constexpr TextView kAllRatings = u"<All Ratings>";

// Whatever is not rated "Omit".
StepSelection AllFindings();
// Steps with a rating of that name, or with any that is marked for the summary; but none rated "Omit".
StepSelection SummaryFindings(const Text& rating);
// Steps with a rating that is marked for the summary, but none rated "Omit".
StepSelection MajorSystemFindings();

}  // namespace inspector::reports
