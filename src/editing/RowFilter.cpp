#include "editing/RowFilter.h"

namespace inspector::editing {
std::vector<int> FilteredRecords(data::TableRecordset& rows, const device::WordFilter& filter,
                                 const std::function<Text()>& textOfRecord) {
  std::vector<int> records;
  records.reserve(static_cast<std::size_t>(rows.RecordCount()));
  const data::ReadScope reading(rows.GetConnection());
  for (int n = 0; n < rows.RecordCount(); ++n)
    if (filter.IsEmpty() || (rows.GetRecord(n) && filter.Accepts(textOfRecord()))) records.push_back(n);
  return records;
}

}  // namespace inspector::editing
