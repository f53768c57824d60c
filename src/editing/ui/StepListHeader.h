// The headings of the step list, with a sign where a word has no room.
#pragma once

#include <QHeaderView>

namespace inspector::editing::ui {

class StepListHeader : public QHeaderView {
public:
  explicit StepListHeader(QWidget* parent);

protected:
  void paintSection(QPainter* painter, const QRect& rect, int section) const override;
  bool event(QEvent* event) override;
};

}  // namespace inspector::editing::ui
