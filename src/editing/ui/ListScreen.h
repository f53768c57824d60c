// What the category list and the step list have in common: the house above, a search, the rows, what is left.
#pragma once

#include <QLabel>

#include "device/ui/FindField.h"
#include "device/ui/ListView.h"
#include "device/ui/Screen.h"

namespace inspector::editing::ui {

class ListScreen : public device::ui::Screen {
public:
  using Screen::Screen;

  device::ui::ListView& Rows() { return *m_Rows; }

protected:
  // To be called once, by the constructor; `source` outlives the screen's use. `what` is what the rows are,
  // for those who hear the screen: "categories".
  void Build(device::RowSource& source, std::vector<device::ListColumn> columns, const QString& what);
  void ShowCaptions(device::TextView caption, device::TextView left);
  void ClearSearch();
  // What stands in place of rows when there are none; while there is a search, that it found nothing.
  void SetEmptyText(const QString& text);
  void resizeEvent(QResizeEvent* event) override;

  // What was typed into the search changed.
  virtual void OnSearch(const device::Text& words) = 0;

  device::ui::ListView* m_Rows = nullptr;  // owned by Qt, as child

private:
  void FitCaptions();
  void ShowEmptyText();

  QString m_EmptyText;
  QString m_NothingFound;
  QLabel* m_Caption = nullptr;
  device::ui::FindField* m_Search = nullptr;
  QLabel* m_Left = nullptr;
};

}  // namespace inspector::editing::ui
