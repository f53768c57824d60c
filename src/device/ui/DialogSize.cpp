#include "device/ui/DialogSize.h"

#include <QLayout>
#include <QScreen>
#include <algorithm>

namespace inspector::device::ui {

void ResizeWithin(QDialog& dialog, QSize usual) {
  dialog.resize(usual.boundedTo(dialog.screen()->availableSize()));
}

void FitToWords(QDialog& dialog) {
  constexpr int kUsualWidth = 440;  // logical pixels
  const QSize room = dialog.screen()->availableSize();
  dialog.ensurePolished();
  QLayout& layout = *dialog.layout();
  layout.activate();
  const int width = std::min(std::max(kUsualWidth, layout.minimumSize().width()), room.width());
  const int height = layout.hasHeightForWidth() ? layout.heightForWidth(width) : layout.sizeHint().height();
  dialog.resize(width, std::min(height, room.height()));
}

QRect MovedInto(const QRect& room, const QRect& window) {
  QRect inside(QPoint(), window.size().boundedTo(room.size()));
  inside.moveTopLeft({std::clamp(window.x(), room.left(), room.right() + 1 - inside.width()),
                      std::clamp(window.y(), room.top(), room.bottom() + 1 - inside.height())});
  return inside;
}

}  // namespace inspector::device::ui
