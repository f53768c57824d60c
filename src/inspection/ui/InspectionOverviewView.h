// The screen that lists every inspection.
#pragma once

#include "device/ui/FindField.h"
#include "device/ui/ListView.h"
#include "device/ui/Screen.h"
#include "inspection/InspectionFilter.h"

namespace inspector::inspection::ui {

class CInspectionOverview : public device::ui::Screen {
public:
  explicit CInspectionOverview(CInspectorDoc& document, QWidget* parent = nullptr);

  QString Title() const override { return QStringLiteral("Inspections"); }
  // Reads the list again. The row that was selected stays so, unless the document has gone to another
  // inspection meanwhile: then that one is selected.
  void OnShow() override;
  // Selects the row of the document's inspection.
  void SelectCurrent();
  // What a command of the whole program is to act on becomes the document's inspection. False when no row is
  // selected, or it is gone, which has been told.
  bool TakeSelected();
  void Refill();

  // An inspection was made current and is to be worked on.
  std::function<void()> onOpened;
  // The document's inspection is another one now, or was deleted.
  std::function<void()> onChanged;
  // The inspection of the selected row is to take in what was imported.
  std::function<void(std::int32_t inspectionID)> onMerge;
  // Must be asked before the document goes to another inspection.
  std::function<bool()> beforeChange;

private:
  void AddCommands();
  int SelectedPosition() const { return m_Rows.PositionOf(m_List->SelectedRow()); }
  void Select(std::int32_t inspectionID);
  void SelectAgain() { Select(m_SelectedID); }
  void OnSelect(int shown);
  bool MakeSelectedCurrent();
  bool MayChange() const { return !beforeChange || beforeChange(); }
  void Changed(std::int32_t selectID);
  void Open();
  void New();
  void Duplicate();
  void Delete();
  void Merge();
  void DeleteAll();
  void UpdateCommands();

  CInspectorDoc& m_Document;
  InspectionOverview m_Overview;
  InspectionFilter m_Rows;
  device::ui::FindField* m_Find;
  device::ui::ListView* m_List;
  std::vector<QAction*> m_NeedSelection;
  std::int32_t m_SelectedID = -1;  // selected last; the filter may hide it
  std::int32_t m_CurrentID = -1;   // the document's inspection when this screen last looked
};

}  // namespace inspector::inspection::ui
