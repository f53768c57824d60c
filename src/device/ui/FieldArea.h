// Fields that scroll up and down, by a finger too, where a handheld has no room for all of them.
#pragma once

#include <QScrollArea>
#include <QScroller>

namespace inspector::device::ui {

// The keyboard goes through the fields; the area itself takes no focus.
class FieldArea : public QScrollArea {
public:
  explicit FieldArea(QWidget* parent) : QScrollArea(parent) {
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    QScroller::grabGesture(viewport(), QScroller::TouchGesture);
  }
};

}  // namespace inspector::device::ui
