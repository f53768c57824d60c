// How large dialogs are, and where windows stand.
#pragma once

#include <QDialog>

namespace inspector::device::ui {

// As large as usual, or as the screen allows.
void ResizeWithin(QDialog& dialog, QSize usual);

// To be called when everything is in its layout. On a narrow screen the toolkit makes a dialog narrower than
// it reckoned, and then as low as the wider one: lines of words would be cut.
void FitToWords(QDialog& dialog);

// The place nearest to `window` in which it lies whole in `room`; one that is larger takes the size of that.
QRect MovedInto(const QRect& room, const QRect& window);

}  // namespace inspector::device::ui
