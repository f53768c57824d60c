#include "editing/ui/PictureFile.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QtEndian>

namespace inspector::editing::ui {
namespace {

constexpr int kQuality = 85;
constexpr qint64 kLargestCopied = 64 * 1024 * 1024;

QString NameOf(const std::filesystem::path& file) {
  return QFile::decodeName(file.c_str());
}

// "BM", two bits a pixel: the device's own bitmaps, which Qt does not know. Rows stand from the bottom up,
// each filled to four bytes.
QImage ReadFourColours(const QByteArray& bytes) {
  constexpr qsizetype kHeaders = 54;
  constexpr int kMostPixels = 4096;
  if (bytes.size() < kHeaders || !bytes.startsWith("BM")) return {};
  const auto* data = reinterpret_cast<const uchar*>(bytes.constData());
  const auto number = [data](int at) { return qFromLittleEndian<qint32>(data + at); };
  const int headerSize = number(14);
  const int width = number(18);
  const qint64 height = std::abs(static_cast<qint64>(number(22)));
  const bool isTopDown = number(22) < 0;
  if (qFromLittleEndian<quint16>(data + 28) != 2 || number(30) != 0 || headerSize < 40 || headerSize > 256 ||
      width <= 0 || width > kMostPixels || height <= 0 || height > kMostPixels)
    return {};
  const qsizetype stride = (width * 2 + 31) / 32 * 4;
  const qsizetype pixels = number(10);
  const qsizetype colours = 14 + headerSize;
  if (pixels < colours || pixels + stride * height > bytes.size()) return {};
  QImage picture(width, static_cast<int>(height), QImage::Format_RGB32);
  for (int y = 0; y < picture.height(); ++y) {
    const uchar* row = data + pixels + stride * (isTopDown ? y : picture.height() - 1 - y);
    auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
    for (int x = 0; x < width; ++x) {
      const int index = row[x / 4] >> (6 - 2 * (x % 4)) & 3;
      const uchar* colour = data + colours + 4 * index;
      const bool hasColours = colours + 16 <= pixels;
      line[x] = hasColours ? qRgb(colour[2], colour[1], colour[0]) : qRgb(index * 85, index * 85, index * 85);
    }
  }
  return picture;
}

QImage ReadFourColours(const std::filesystem::path& path) {
  QFile file(NameOf(path));
  constexpr qint64 kLargest = 8 * 1024 * 1024;
  if (!file.open(QIODevice::ReadOnly) || file.size() > kLargest) return {};
  return ReadFourColours(file.readAll());
}

QImage Read(const std::filesystem::path& file, const QSize& bounds, bool upright) {
  QImageReader reader(NameOf(file));
  reader.setAutoTransform(upright);
  reader.setDecideFormatFromContent(true);
  const QSize stored = reader.size();
  // The bounds are as good as square where it matters: a side may be exchanged by turning afterwards.
  if (stored.isValid() && (stored.width() > bounds.width() || stored.height() > bounds.height()))
    reader.setScaledSize(stored.scaled(bounds, Qt::KeepAspectRatio).expandedTo({1, 1}));
  QImage picture = reader.read();
  return picture.isNull() ? ReadFourColours(file) : picture;
}

QByteArray Written(const QImage& picture) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  // JPEG has no transparency; what is transparent becomes white, as paper is.
  QImage opaque = picture;
  if (picture.hasAlphaChannel()) {
    opaque = QImage(picture.size(), QImage::Format_RGB32);
    opaque.fill(Qt::white);
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) {
        const QColor pixel = picture.pixelColor(x, y);
        const auto over = [&](int value) {
          return (value * pixel.alpha() + 255 * (255 - pixel.alpha())) / 255;
        };
        opaque.setPixel(x, y, qRgb(over(pixel.red()), over(pixel.green()), over(pixel.blue())));
      }
  }
  return opaque.save(&buffer, "JPG", kQuality) ? bytes : QByteArray();
}

}  // namespace

QImage ReadPicture(const std::filesystem::path& file, const QSize& bounds) {
  return Read(file, bounds, true);
}

QByteArray MakeJpeg(const std::filesystem::path& path, const AttachmentForm& form) {
  QImageReader reader(NameOf(path));
  reader.setDecideFormatFromContent(true);
  const QSize size = reader.size();
  const bool fits =
      form.longestSide == 0 || (size.isValid() && std::max(size.width(), size.height()) <= form.longestSide);
  const bool stands = !form.upright || reader.transformation() == QImageIOHandler::TransformationNone;
  if (reader.format() == "jpeg" && fits && stands) {
    QFile file(NameOf(path));
    if (file.open(QIODevice::ReadOnly) && file.size() <= kLargestCopied && reader.canRead() &&
        !reader.read().isNull())
      return file.readAll();
    return {};
  }
  const int side = form.longestSide == 0 ? 16384 : form.longestSide;
  const QImage picture = Read(path, {side, side}, form.upright);
  return picture.isNull() ? QByteArray() : Written(picture);
}

QByteArray MakeJpeg(const QImage& picture, const AttachmentForm& form) {
  if (picture.isNull()) return {};
  const int side = form.longestSide;
  const bool fits = side == 0 || std::max(picture.width(), picture.height()) <= side;
  return Written(fits ? picture : picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

}  // namespace inspector::editing::ui
