// Draws one cell of a ListView.
#pragma once

#include <QStyledItemDelegate>

namespace inspector::device::ui {

class RowDelegate : public QStyledItemDelegate {
public:
  using QStyledItemDelegate::QStyledItemDelegate;

  // The size of the words in all rows; 0 for that of the list.
  void SetPointSize(double points) { m_PointSize = points; }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
  // Lets words that are wider than the cell go on in the next line, beside the decoration.
  static void BreakWords(QStyleOptionViewItem& option);

private:
  double m_PointSize = 0;
};

}  // namespace inspector::device::ui
