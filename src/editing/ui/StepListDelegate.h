// Draws the cells of the step list: a rating as a drop-down, a status as a sign where its word has no room.
#pragma once

#include "device/ui/RowDelegate.h"

namespace inspector::editing::ui {

class StepListDelegate : public device::ui::RowDelegate {
public:
  using RowDelegate::RowDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

protected:
  void Decorate(QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace inspector::editing::ui
