// The list that all screens share: large rows, a column of check images, finger and keyboard.
#pragma once

#include <QElapsedTimer>
#include <QTableView>
#include <functional>

#include "device/ui/ListModel.h"

namespace inspector::device::ui {

// Columns fill the width, so nothing is scrolled sideways; a row is as high as its words need. Whole rows are
// selected, one at a time unless told otherwise. Where two rows find no room, large text becomes smaller.
//
// A click, or Enter on the current cell, calls `onClick` with row and column; Space does it for the mark
// column. A list without a mark column leaves Space to the selection.
class ListView : public QTableView {
public:
  ListView(RowSource& source, std::vector<ListColumn> columns, QWidget* parent = nullptr);

  ListModel& Model() { return *m_Model; }
  // In place of the usual one; the list takes it over.
  void SetHeader(QHeaderView* header);
  // The source was read again. The row stays selected where it is still there; nothing is called.
  void Refill();
  // -1 for none.
  int SelectedRow() const;
  int SelectedCount() const;
  // Also scrolls to it. -1 clears the selection.
  void SelectRow(int row);
  int TopRow() const;
  // What the heading and two short rows take in full size.
  int UsefulHeight() const;
  void ScrollToTop(int row);
  // What is shown in place of rows while there are none.
  void SetEmptyText(const QString& text) { m_EmptyText = text; }

  std::function<void(int row, int column)> onClick;
  std::function<void(int row)> onOpen;
  std::function<void(int row)> onSelect;

protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

private:
  void LayOut();
  void FitVisibleRows();
  void FitHeadings(double points);
  void SizeRows(double points);
  bool ShowsTwoRows() const;
  void MakeCurrent(int row, int column);
  int UsualColumn() const;
  void Click(int row, int column);

  ListModel* m_Model;  // owned by Qt, as child
  std::vector<int> m_Widths;
  QString m_EmptyText;
  QElapsedTimer m_Pressed;  // since the last press
  bool m_IsPassedOver = false;
};

}  // namespace inspector::device::ui
