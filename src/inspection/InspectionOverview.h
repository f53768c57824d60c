// What the inspection list shows and does: one row per inspection, delete, duplicate, and the choice for a
// merge.
#pragma once

#include <array>
#include <functional>
#include <optional>

#include "device/RowSource.h"
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
  // Asks for the new document number and copies the inspection with all that belongs to it. Nothing when
  // it failed or was cancelled, which has been told.
  std::optional<std::int32_t> OnDuplicate(int selected);
  // Makes the selected row the document's current inspection. Says so when it is gone.
  bool OnOpen(int selected) { return selected >= 0 && MakeCurrent(selected); }

  // The selected inspection, which is to take in what was imported. Refuses without a selection.
  std::optional<std::int32_t> OnMerge(int selected);

  // While it lives, every RowAt reads the same moment, without a lock of its own.
  class ReadAll {
  public:
    explicit ReadAll(InspectionOverview& overview) : m_Scope(overview.m_List.GetConnection()) {}

  private:
    data::ReadScope m_Scope;
  };

private:
  bool MakeCurrent(int selected);
  RunResult CopyCurrent(TextView number, std::int32_t& key);

  CInspectorDoc& m_Document;
  data::InspectionTable m_List;
};

}  // namespace inspector::inspection
