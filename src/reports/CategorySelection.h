// Which categories of an inspection go into a report.
#pragma once

#include <vector>

#include "data/Workspace.h"
#include "device/ListColumns.h"
#include "device/RowSource.h"

namespace inspector::reports {

using device::Text;
using device::TextView;

// At first all of them. Reports go by the title, so categories that are called alike go or stay together.
// One that is not present in the house is in no report, whatever is chosen. The categories are read once.
class CategorySelection : public device::RowSource {
public:
  CategorySelection(data::Workspace& workspace, std::int32_t inspectionID);

  // The categories could not all be read, which has been reported.
  bool Failed() const { return m_Failed; }

  static std::vector<device::ListColumn> Columns();
  int RowCount() const override { return static_cast<int>(m_Rows.size()); }
  device::ListRow ShownRow(int row) override;
  // Those that are not present do not count.
  struct Count {
    int chosen = 0;
    int present = 0;
  };
  Count Counted() const;
  // "12 of 14 categories go into the report".
  Text Caption() const;

  void Toggle(int row);
  void ChooseAll(bool chosen);
  // By the title, else by the key. False when the inspection has no such category.
  bool LeaveOut(TextView titleOrKey);
  // The titles of what is left out, each once.
  std::vector<Text> Deselected() const;

private:
  struct Row {
    std::int32_t categoryID = 0;
    Text title;
    bool isPresent = true;
    bool isChosen = true;
  };
  void Choose(const Text& title, bool chosen);

  std::vector<Row> m_Rows;
  bool m_Failed = false;
};

}  // namespace inspector::reports
