// Lines above and below the rows or fields of a screen, which give way where there is little room.
#pragma once

#include <QLabel>
#include <initializer_list>

namespace inspector::editing::ui {

// Shows those that say something, the most important first, as long as there is room for them, and hides the
// others. `room` is what may be used, in logical pixels.
inline void ShowWhereRoomIs(std::initializer_list<QLabel*> labels, QSize room) {
  for (QLabel* label : labels) {
    const int needed = label->heightForWidth(room.width());
    label->setVisible(!label->text().isEmpty() && needed <= room.height());
    if (label->isVisibleTo(label->parentWidget())) room.rheight() -= needed;
  }
}

}  // namespace inspector::editing::ui
