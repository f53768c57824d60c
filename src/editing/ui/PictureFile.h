// Reading pictures of any size and state without standing still for them.
#pragma once

#include <QByteArray>
#include <QImage>

#include "device/Machine.h"

namespace inspector::editing::ui {

// Turned upright and no larger than `bounds`; a null image for what is missing, broken or no picture. Large
// JPEG files are decoded at the small size. Reads JPEG, PNG, GIF, BMP and the device's bitmap of four
// colours.
QImage ReadPicture(const std::filesystem::path& file, const QSize& bounds);

// How a picture is copied when it is attached.
struct AttachmentForm {
  int longestSide = 1600;  // in pixels; 0 leaves the size as it is
  bool upright = true;     // turned as the camera was held
};

// The picture as a JPEG file; empty for what is no picture. A JPEG that needs no change comes as it is.
QByteArray MakeJpeg(const std::filesystem::path& file, const AttachmentForm& form);
QByteArray MakeJpeg(const QImage& picture, const AttachmentForm& form);

}  // namespace inspector::editing::ui
