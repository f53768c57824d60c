// The steps of one category: rate them here, open the rest in "Step Properties".
#pragma once

#include "editing/StepList.h"
#include "editing/ui/ListScreen.h"

namespace inspector::editing::ui {

class CStepListView : public ListScreen {
public:
  CStepListView(inspection::CInspectorDoc& document, EditingDialogs& dialogs, QWidget* parent = nullptr);

  QString Title() const override;
  // Stays on its row when the category is the one it showed before.
  void OnShow() override;

  // Selects a step of the shown category; false when it is not among them.
  bool SelectStep(std::int32_t stepID);
  // The step that the sheet showed last is the selected one when the list is shown again.
  void Follow(std::int32_t stepID) { m_StepID = stepID; }
  // Of the steps that were last shown.
  std::int32_t CategoryID() const { return m_CategoryID; }

private:
  void OnSearch(const device::Text& words) override;
  void OnRow(int row, int column);
  void OnSelect(int row);
  void SelectAgain();
  // The choices of the row's rating type, below its cell.
  void OfferRatings(int row);
  void Rate(std::int32_t stepID, const device::Text& entry);
  void DuplicateStep();
  void ShowRows();
  void FollowState();

  StepList m_List;
  QAction* m_Properties;
  QAction* m_Duplicate;
  std::int32_t m_CategoryID = 0;
  std::int32_t m_StepID = -1;  // selected last; may be hidden by the search
};

}  // namespace inspector::editing::ui
