// What the inspection list shows and does: one row per inspection, delete and duplicate.
#pragma once

#include <array>
#include <vector>

#include "inspection/InspectorDoc.h"

namespace inspector::inspection {

class InspectionOverview {
public:
  explicit InspectionOverview(CInspectorDoc& document) : m_Document(document) {}

  struct Row {
    std::int32_t inspectionID = 0;
    std::array<Text, 4> columns;  // client name, dwelling address, city/state/zip, document number
  };
  // The list in the order of the table; the index is the row's position.
  std::vector<Row> Refill();

  // `selected` is the index of the selected row, -1 for none; `selectedCount` how many are selected.
  bool OnDelete(int selected, int selectedCount);
  // Asks for the new document number and copies the inspection with all that belongs to it.
  std::optional<std::int32_t> OnDuplicate(int selected);

private:
  CInspectorDoc& m_Document;
};

}  // namespace inspector::inspection
