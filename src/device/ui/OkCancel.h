// What small dialogs have in common: the two buttons at the foot, and a size that fits the words.
#pragma once

#include <QDialog>
#include <QDialogButtonBox>
#include <QLayout>
#include <QScreen>
#include <algorithm>

namespace inspector::device::ui {

// "OK" accepts the dialog, "Cancel" rejects it. Owned by the dialog, to be laid out by it.
inline QDialogButtonBox* MakeOkCancel(QDialog& dialog) {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  return buttons;
}

// As large as usual, or as the screen allows.
inline void ResizeWithin(QDialog& dialog, QSize usual) {
  dialog.resize(usual.boundedTo(dialog.screen()->availableSize()));
}

// To be called when everything is in its layout. On a narrow screen the toolkit makes a dialog narrower than
// it reckoned, and then as low as the wider one: lines of words would be cut.
inline void FitToWords(QDialog& dialog) {
  constexpr int kUsualWidth = 440;  // logical pixels
  const QSize room = dialog.screen()->availableSize();
  dialog.ensurePolished();
  QLayout& layout = *dialog.layout();
  layout.activate();
  const int width = std::min(std::max(kUsualWidth, layout.minimumSize().width()), room.width());
  dialog.resize(
      width, std::min(layout.hasHeightForWidth() ? layout.heightForWidth(width) : layout.sizeHint().height(),
                      room.height()));
}

}  // namespace inspector::device::ui
