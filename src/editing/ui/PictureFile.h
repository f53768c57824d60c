// Reading pictures of any size and state without standing still for them.
#pragma once

#include <QByteArray>
#include <QImage>
#include <atomic>

#include "editing/PictureAttachment.h"

namespace inspector::editing::ui {

// Turned upright and no larger than `bounds`; a null image for what is missing, broken or no picture. Large
// JPEG files are decoded at the small size. Reads JPEG, PNG, GIF, BMP and the device's bitmap of four
// colours.
QImage ReadPicture(const std::filesystem::path& file, const QSize& bounds);

// The picture as a JPEG file; empty for what is no picture. A JPEG that needs no change and
// is whole comes as it is. Takes
// a second or two for a large one; when `stop` becomes true the rest of the file counts as not there.
QByteArray MakeJpeg(const std::filesystem::path& file, const AttachmentForm& form,
                    const std::atomic<bool>& stop = false);
QByteArray MakeJpeg(const QImage& picture, const AttachmentForm& form);
// A JPEG that ends before its picture does, as a copy that was interrupted. False for what is no JPEG,
// or larger than 64 MiB.
bool IsCutShort(const std::filesystem::path& file);
// Why there is no JPEG of that file, as the end of a sentence: "is not there any more".
Text WhyNoJpeg(const std::filesystem::path& file);

}  // namespace inspector::editing::ui
