// The inspections of this device as the synchronisation offers them: each with a mark, "*" for those to send.
#pragma once

#include <vector>

#include "data/InspectionTable.h"
#include "device/ListColumns.h"
#include "device/RowSource.h"

namespace inspector::exchange {

using device::Text;
using device::TextView;

class SyncList : public device::RowSource {
public:
  // Reads all keys; a row is fetched when it is shown.
  explicit SyncList(data::Databases& databases);

  static std::vector<device::ListColumn> Columns();
  int RowCount() const override { return static_cast<int>(m_Entries.size()); }
  device::ListRow ShownRow(int row) override;

  void Toggle(int row);
  void MarkAll(bool marked);
  int MarkedCount() const;
  // The keys of the marked rows, in the order of the list.
  std::vector<std::int32_t> Marked() const;

private:
  struct Entry {
    std::int32_t inspectionID = 0;
    char16_t mark = u' ';
  };

  data::InspectionTable m_Rows;
  std::vector<Entry> m_Entries;
};

// The keys as the list has them, each once; then those that it does not have.
std::vector<std::int32_t> InOrderOfList(data::Databases& databases, const std::vector<std::int32_t>& keys);

}  // namespace inspector::exchange
