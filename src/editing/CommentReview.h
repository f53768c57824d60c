// The commented steps of the whole inspection, by rating.
#pragma once

#include <optional>
#include <vector>

#include "data/StepTable.h"
#include "data/Workspace.h"

namespace inspector::editing {

using device::Text;
using device::TextView;

class CommentReview {
public:
  static constexpr TextView kAllRatings = u"<All Ratings>";
  static constexpr TextView kSummaryOnly = u"***Summary Only***";

  CommentReview(data::Workspace& workspace, std::int32_t inspectionID);

  // "<All Ratings>", the names of all choices (each once, in their stored order), "***Summary Only***".
  std::vector<Text> Filters();
  // Reads the list anew. False when it could not be read.
  bool SetFilter(TextView filter);

  // One row per step with a comment, in the order of their numbers.
  int RowCount() const { return static_cast<int>(m_Rows.size()); }
  struct Row {
    std::int32_t stepID = 0;
    std::int32_t categoryID = 0;
    Text stepNumber;
    Text result;
    Text comments;
  };
  // Neutral values when the step is gone by now.
  Row RowAt(int row);

  // The row of the step last remembered, to be made visible; nothing when it is not among those shown.
  void Remember(std::int32_t stepID) { m_Remembered = stepID; }
  std::optional<int> RememberedRow();

private:
  data::Workspace& m_Workspace;
  std::int32_t m_InspectionID;
  data::StepTable m_Steps;
  std::vector<int> m_Rows;  // of m_Steps
  std::optional<std::int32_t> m_Remembered;
};

}  // namespace inspector::editing
