// What the inspection list shows and does: one row per inspection, delete and duplicate.
#pragma once

#include <array>
#include <optional>

#include "inspection/InspectorDoc.h"

namespace inspector::inspection {

class InspectionOverview {
public:
  explicit InspectionOverview(CInspectorDoc& document)
      : m_Document(document), m_List(document.GetWorkspace().GetDatabases()) {}

  struct Row {
    std::int32_t inspectionID = 0;
    std::array<Text, 4> columns;  // client name, dwelling address, city/state/zip, document number
  };
  // Reads the list again, in the order of the table; the index of a row is its position.
  void Refill();
  int RowCount() const { return m_List.RecordCount(); }
  // Fetches one row. Nothing for one that another program deleted since.
  std::optional<Row> RowAt(int index);
  // The first row with this key, -1 when there is none.
  int RowOf(std::int32_t inspectionID) const;

  // `selected` is the index of the selected row, -1 for none; `selectedCount` how many are selected.
  bool OnDelete(int selected, int selectedCount);
  // Asks for the new document number and copies the inspection with all that belongs to it.
  std::optional<std::int32_t> OnDuplicate(int selected);

private:
  bool MakeCurrent(int selected);

  CInspectorDoc& m_Document;
  data::InspectionTable m_List;
};

}  // namespace inspector::inspection
