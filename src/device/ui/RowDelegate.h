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
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const final;
  // What a list has beside the words of a cell. Comes before these are fitted into the room that is left.
  virtual void Decorate(QStyleOptionViewItem&, const QModelIndex&) const {}

private:
  // Makes a name with a word that is wider than the cell smaller, down to half its size. Words that are wider
  // still, and those of longer texts, go on in the next line.
  static void FitWords(QStyleOptionViewItem& option);
  static void ShrinkWords(QStyleOptionViewItem& option, int width);

  double m_PointSize = 0;
};

}  // namespace inspector::device::ui
