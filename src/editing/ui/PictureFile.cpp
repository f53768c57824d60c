#include "editing/ui/PictureFile.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QtEndian>

#include "device/Format.h"
#include "device/JpegEnd.h"

namespace inspector::editing::ui {
namespace {

constexpr int kQuality = 85;
constexpr QSize kGlance(64, 64);
constexpr int kLargestSide = 16384;
constexpr qint64 kLargestCopied = 64 * 1024 * 1024;

QString NameOf(const std::filesystem::path& file) {
  return QFile::decodeName(file.c_str());
}

// To open a pipe, or a device, can wait for ever, and nobody could stop the thread that waits.
bool OpenFile(QFile& file) {
  return QFileInfo(file).isFile() && file.open(QIODevice::ReadOnly);
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

QImage ReadFourColours(QFile& file) {
  constexpr qint64 kLargest = 8 * 1024 * 1024;
  if (file.size() > kLargest || !file.seek(0)) return {};
  return ReadFourColours(file.readAll());
}

// A file that ends where it is when nobody waits for it any more.
class StoppableFile : public QFile {
public:
  StoppableFile(const std::filesystem::path& path, const std::atomic<bool>& stop)
      : QFile(NameOf(path)), m_Stop(stop) {}

protected:
  qint64 readData(char* data, qint64 size) override { return m_Stop ? -1 : QFile::readData(data, size); }

private:
  const std::atomic<bool>& m_Stop;
};

QImage FitInto(const QImage& picture, const QSize& bounds) {
  const bool fits = picture.width() <= bounds.width() && picture.height() <= bounds.height();
  return fits ? picture : picture.scaled(bounds, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

QImage Read(QImageReader& reader, const QSize& bounds, bool upright) {
  reader.setAutoTransform(upright);
  const QSize stored = reader.size();
  // The bounds are as good as square where it matters: a side may be exchanged by turning afterwards.
  if (stored.isValid() && (stored.width() > bounds.width() || stored.height() > bounds.height()))
    reader.setScaledSize(stored.scaled(bounds, Qt::KeepAspectRatio).expandedTo({1, 1}));
  return reader.read();
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
    QPainter(&opaque).drawImage(0, 0, picture);
  }
  return opaque.save(&buffer, "JPG", kQuality) ? bytes : QByteArray();
}

}  // namespace

QImage ReadPicture(const std::filesystem::path& path, const QSize& bounds) {
  QFile file(NameOf(path));
  if (!OpenFile(file)) return {};
  QImageReader reader(&file);
  reader.setDecideFormatFromContent(true);
  QImage picture = Read(reader, bounds, true);
  if (picture.isNull()) picture = ReadFourColours(file);
  return FitInto(picture, bounds);
}

QByteArray MakeJpeg(const std::filesystem::path& path, const AttachmentForm& form,
                    const std::atomic<bool>& stop) {
  StoppableFile file(path, stop);
  if (!OpenFile(file)) return {};
  QImageReader reader(&file);
  reader.setDecideFormatFromContent(true);
  const QSize size = reader.size();
  const bool fits =
      form.longestSide == 0 || (size.isValid() && std::max(size.width(), size.height()) <= form.longestSide);
  const bool stands = !form.upright || reader.transformation() == QImageIOHandler::TransformationNone;
  QByteArray jpeg;
  // What is left of one that was cut short is written anew, so that nobody after us stumbles over its end.
  if (reader.format() == "jpeg" && fits && stands && !IsCutShort(path)) {
    // Only looked through, small, so that one of any size is.
    if (file.size() <= kLargestCopied && !Read(reader, kGlance, false).isNull() && file.seek(0))
      jpeg = file.readAll();
  } else {
    const int side = form.longestSide == 0 ? kLargestSide : form.longestSide;
    QImage picture = Read(reader, {side, side}, form.upright);
    if (picture.isNull()) picture = FitInto(ReadFourColours(file), {side, side});
    if (!picture.isNull()) jpeg = Written(picture);
  }
  return stop ? QByteArray() : jpeg;
}

bool IsCutShort(const std::filesystem::path& path) {
  constexpr qint64 kBlock = 256 * 1024;
  QFile file(NameOf(path));
  if (!OpenFile(file)) return false;
  device::JpegEnd end;
  for (QByteArray block = file.read(kBlock); !block.isEmpty() && !end.IsDecided(); block = file.read(kBlock))
    end.Take({block.constData(), static_cast<std::size_t>(block.size())});
  return end.IsCutShort();
}

Text WhyNoJpeg(const std::filesystem::path& path) {
  if (!QFile::exists(NameOf(path))) return u"is not there any more";
  if (!QFileInfo(NameOf(path)).isFile()) return u"is not a file";
  QImageReader reader(NameOf(path));
  reader.setDecideFormatFromContent(true);
  const QSize size = reader.size();
  const qint64 bytes = qint64{4} * size.width() * size.height();
  if (size.isValid() && bytes > qint64{1024} * 1024 * QImageReader::allocationLimit())
    return device::Format(u"is too large to be read here (%d x %d pixels); make it smaller, or a JPEG",
                          size.width(), size.height());
  return u"is no picture that can be read";
}

QByteArray MakeJpeg(const QImage& picture, const AttachmentForm& form) {
  if (picture.isNull()) return {};
  const int side = form.longestSide;
  return Written(side == 0 ? picture : FitInto(picture, {side, side}));
}

}  // namespace inspector::editing::ui
