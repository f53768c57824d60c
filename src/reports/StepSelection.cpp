#include "reports/StepSelection.h"

namespace inspector::reports {

StepSelection AllFindings() {
  return {StepSelection::Sections::Categories, [](const ReportStep& step) { return !step.IsOmitted(); }};
}

StepSelection SummaryFindings(const Text& rating) {
  return {StepSelection::Sections::Categories, [rating](const ReportStep& step) {
            const bool isSelected = rating == kAllRatings ? step.isSummary : step.rating == rating;
            return isSelected && !step.IsOmitted();
          }};
}

StepSelection MajorSystemFindings() {
  return {StepSelection::Sections::MajorSystems,
          [](const ReportStep& step) { return step.isSummary && !step.IsOmitted(); }};
}

}  // namespace inspector::reports
