// The two buttons at the foot of a dialog.
#pragma once

#include <QDialog>
#include <QDialogButtonBox>

namespace inspector::device::ui {

// "OK" accepts the dialog, "Cancel" rejects it. Owned by the dialog, to be laid out by it.
inline QDialogButtonBox* MakeOkCancel(QDialog& dialog) {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  return buttons;
}

}  // namespace inspector::device::ui
