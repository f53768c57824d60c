// What a finger does to a list; also for those who measure how long the list takes.
#pragma once

#include <QApplication>
#include <QMouseEvent>

#include "device/ui/ListView.h"

namespace inspector::tests {

inline void ClickCell(device::ui::ListView& list, int row, int column) {
  const QModelIndex index = list.Model().index(row, column);
  list.scrollTo(index);
  const QPointF at = list.visualRect(index).center();
  for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    QMouseEvent event(type, at, list.viewport()->mapToGlobal(at), Qt::LeftButton,
                      type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(list.viewport(), &event);
  }
}

}  // namespace inspector::tests
