// The rows of the inspection list that hold the words typed into its filter.
#pragma once

#include <optional>

#include "device/RowSource.h"
#include "device/WordFilter.h"
#include "inspection/InspectionOverview.h"

namespace inspector::inspection {

// Without a filter every inspection is shown and nothing is read. The first filter reads the list once;
// typing on looks only through what was still there. Positions are rows of the overview.
class InspectionFilter : public device::RowSource {
public:
  explicit InspectionFilter(InspectionOverview& overview) : m_Overview(overview) {}

  // The overview was read again.
  void Refill();
  void SetFilter(TextView typed);
  bool IsFiltering() const { return !m_Filter.IsEmpty(); }

  int RowCount() const override;
  device::ListRow ShownRow(int row) override;
  // -1 for -1, and for what is not shown.
  int PositionOf(int shown) const;
  int ShownOf(int position) const;

private:
  void Look(const std::vector<int>& among);

  InspectionOverview& m_Overview;
  device::WordFilter m_Filter;
  std::vector<Text> m_Folded;  // of every row, once a filter was typed
  std::vector<int> m_Shown;    // positions, ascending; used while filtering
};

}  // namespace inspector::inspection
