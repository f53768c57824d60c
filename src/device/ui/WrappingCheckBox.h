// A check box whose words go on in further lines where they find no room.
#pragma once

#include <QCheckBox>

namespace inspector::device::ui {

class WrappingCheckBox : public QCheckBox {
public:
  explicit WrappingCheckBox(QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;

protected:
  void paintEvent(QPaintEvent* event) override;
  bool hitButton(const QPoint& place) const override { return rect().contains(place); }

private:
  int IndicatorSpace() const;
};

}  // namespace inspector::device::ui
