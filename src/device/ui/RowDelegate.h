// Draws one cell of a ListView.
#pragma once

#include <QStyledItemDelegate>

namespace inspector::device::ui {

class RowDelegate : public QStyledItemDelegate {
public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
  // Lets words that are wider than the cell go on in the next line, beside the decoration.
  static void BreakWords(QStyleOptionViewItem& option);
};

}  // namespace inspector::device::ui
