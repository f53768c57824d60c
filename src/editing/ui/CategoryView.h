// "CATEGORY LIST": every category of the inspection with its status.
#pragma once

#include "editing/CategoryList.h"
#include "editing/ui/ListScreen.h"

namespace inspector::editing::ui {

class CCategoryView : public ListScreen {
public:
  CCategoryView(inspection::CInspectorDoc& document, EditingDialogs& dialogs, QWidget* parent = nullptr);

  QString Title() const override { return QStringLiteral("CATEGORY LIST"); }
  void OnShow() override;

  // The category is the document's current one; the main window shows the screen that it opens with.
  std::function<void(CategoryList::Screen)> onOpen;

private:
  void OnSearch(const device::Text& words) override;
  void OnRow(int row, int column);
  void ShowCopy();
  void ShowMarked();
  // The rows were read again.
  void ShowRows();
  // The same rows have other content.
  void Refresh();
  void FollowState();

  CategoryList m_List;
  QAction* m_Make;
  QAction* m_Duplicate;
  QAction* m_Rename;
  QAction* m_NotPresent;
  std::int32_t m_InspectionID = -1;  // whose categories were shown last
};

}  // namespace inspector::editing::ui
