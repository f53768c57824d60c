#include "editing/CommentReview.h"

#include <algorithm>

#include "data/RatingChoicesTable.h"
#include "device/Format.h"
#include "editing/RatingFlags.h"

namespace inspector::editing {
namespace {

using device::Format;

constexpr TextView kCommented =
    u"SELECT Step.* FROM (Step INNER JOIN Category ON Step.CategoryID = Category.CategoryID) INNER JOIN "
    u"Inspection ON Category.InspectionID = Inspection.InspectionID WHERE (((Step.Comments)>\"\") AND "
    u"((Inspection.InspectionID)= %d)) ORDER BY StepNumber;";
constexpr TextView kCommentedAndRated =
    u"SELECT Step.* FROM (Step INNER JOIN Category ON Step.CategoryID = Category.CategoryID) INNER JOIN "
    u"Inspection ON Category.InspectionID = Inspection.InspectionID WHERE (((Step.Comments)>\"\") AND "
    u"((Inspection.InspectionID)= %d) AND ((Step.InspectResult)= \"%s\")) ORDER BY StepNumber;";

}  // namespace

CommentReview::CommentReview(data::Workspace& workspace, std::int32_t inspectionID)
    : m_Workspace(workspace), m_InspectionID(inspectionID), m_Steps(workspace.GetDatabases()) {}

std::vector<Text> CommentReview::Filters() {
  data::Databases& databases = m_Workspace.GetDatabases();
  const data::ReadScope reading(databases.Template());
  std::vector<Text> filters{Text(kAllRatings)};
  data::RatingChoicesTable choices(databases);
  choices.Open();
  for (int n = 0; n < choices.RecordCount(); ++n)
    if (choices.GetRecord(n) && !choices.m_ChoiceName.empty() &&
        std::find(filters.begin(), filters.end(), choices.m_ChoiceName) == filters.end())
      filters.push_back(choices.m_ChoiceName);
  filters.emplace_back(kSummaryOnly);
  return filters;
}

bool CommentReview::SetFilter(TextView filter) {
  m_Rows.clear();
  const bool summaryOnly = filter == kSummaryOnly;
  m_Steps.OpenSQL(summaryOnly || filter == kAllRatings ? Format(kCommented, m_InspectionID)
                                                       : Format(kCommentedAndRated, m_InspectionID, filter));
  if (m_Steps.Failed()) return false;
  RatingFlags flags(m_Workspace);
  const data::ReadScope reading(m_Workspace.InspectionConnection());
  for (int n = 0; n < m_Steps.RecordCount(); ++n) {
    if (summaryOnly &&
        (!m_Steps.GetRecord(n) || !flags.IsSummary(m_Steps.m_RatingType, m_Steps.m_InspectResult)))
      continue;
    m_Rows.push_back(n);
  }
  return !m_Steps.Failed() && !flags.Failed();
}

CommentReview::Row CommentReview::RowAt(int row) {
  if (row < 0 || row >= RowCount() || !m_Steps.GetRecord(m_Rows[static_cast<std::size_t>(row)])) return {};
  return {m_Steps.m_StepID, m_Steps.m_CategoryID, m_Steps.m_StepNumber, m_Steps.m_InspectResult,
          m_Steps.m_Comments};
}

std::optional<int> CommentReview::RememberedRow() {
  const data::ReadScope reading(m_Workspace.InspectionConnection());
  for (int row = 0; m_Remembered && row < RowCount(); ++row)
    if (RowAt(row).stepID == *m_Remembered) return row;
  return std::nullopt;
}

}  // namespace inspector::editing
