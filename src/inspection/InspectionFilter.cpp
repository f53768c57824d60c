#include "inspection/InspectionFilter.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace inspector::inspection {
namespace {

device::ListRow Shown(InspectionOverview& overview, int position) {
  const auto row = overview.RowAt(position);
  if (!row) return {};
  return {{row->columns.begin(), row->columns.end()}};
}

std::vector<int> AllPositions(int count) {
  std::vector<int> positions(static_cast<std::size_t>(count));
  std::iota(positions.begin(), positions.end(), 0);
  return positions;
}

}  // namespace

void InspectionFilter::Refill() {
  m_Folded.clear();
  m_Shown.clear();
  if (IsFiltering()) Look(AllPositions(m_Overview.RowCount()));
}

void InspectionFilter::SetFilter(TextView typed) {
  const device::WordFilter filter(typed);
  const bool narrows = IsFiltering() && m_Filter.IsNarrowedBy(filter);
  m_Filter = filter;
  if (!IsFiltering()) return;
  Look(narrows ? std::exchange(m_Shown, {}) : AllPositions(m_Overview.RowCount()));
}

void InspectionFilter::Look(const std::vector<int>& among) {
  if (m_Folded.empty()) {
    const InspectionOverview::ReadAll scope(m_Overview);
    for (int position = 0; position < m_Overview.RowCount(); ++position) {
      Text& folded = m_Folded.emplace_back();
      if (const auto row = m_Overview.RowAt(position))
        for (const Text& column : row->columns) folded += device::FoldForFilter(column) + u'\n';
    }
  }
  m_Shown.clear();
  for (const int position : among)
    if (m_Filter.AcceptsFolded(m_Folded[static_cast<std::size_t>(position)])) m_Shown.push_back(position);
}

int InspectionFilter::RowCount() const {
  return IsFiltering() ? static_cast<int>(m_Shown.size()) : m_Overview.RowCount();
}

device::ListRow InspectionFilter::ShownRow(int row) {
  return Shown(m_Overview, PositionOf(row));
}

int InspectionFilter::PositionOf(int shown) const {
  if (shown < 0 || shown >= RowCount()) return -1;
  return IsFiltering() ? m_Shown[static_cast<std::size_t>(shown)] : shown;
}

int InspectionFilter::ShownOf(int position) const {
  if (!IsFiltering()) return position;
  const auto found = std::lower_bound(m_Shown.begin(), m_Shown.end(), position);
  return found != m_Shown.end() && *found == position ? static_cast<int>(found - m_Shown.begin()) : -1;
}

}  // namespace inspector::inspection
