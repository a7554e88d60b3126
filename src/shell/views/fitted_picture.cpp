#include "shell/views/fitted_picture.h"

#include <QColorSpace>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QPainterPath>

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 kMostPixels = 100'000'000;
constexpr qint64 kMostThumbnailPixels = 4'000'000;  // thumbnails are far smaller: more is something else

qint64 stampOf(const QString& path) {
  const QFileInfo file(path);
  if (path.isEmpty() || !file.exists()) return -1;
  return (file.lastModified().toMSecsSinceEpoch() << 8) ^ file.size();
}

// A JPEG decodes as far as it goes, and what is missing would be shown as grey.
bool isCutShort(const QString& path) {
  if (path.isEmpty()) return false;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly) || file.read(2) != "\xff\xd8") return false;
  return !file.seek(std::max<qint64>(0, file.size() - 2)) || file.read(2) != "\xff\xd9";
}

enum class Fit { within, cover };

QImage read(const QString& path, QSize box, Fit fit, qint64 mostPixels) {
  if (path.isEmpty()) return {};
  QImageReader reader(path);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  QSize size = reader.size();
  if (static_cast<qint64>(size.width()) * size.height() > mostPixels) return {};
  // The size is the one in the file; turning comes after scaling.
  if (reader.transformation() & QImageIOHandler::TransformationRotate90) box.transpose();
  const QSize wanted =
      size.scaled(box, fit == Fit::cover ? Qt::KeepAspectRatioByExpanding : Qt::KeepAspectRatio).expandedTo({1, 1});
  if (wanted.width() < size.width() && wanted.height() < size.height()) reader.setScaledSize(wanted);
  QImage image = reader.read();
  // The numbers of a wide-gamut picture mean other colours than the screen's.
  const QColorSpace screen(QColorSpace::SRgb);
  if (image.colorSpace().isValid() && image.colorSpace() != screen) image.convertToColorSpace(screen);
  return image;
}

// Both files in turn: the thumbnail, then a picture's original.
QImage readEither(const PictureFiles& files, QSize box, Fit fit) {
  QImage image;
  if (!isCutShort(files.thumbnail)) image = read(files.thumbnail, box, fit, kMostThumbnailPixels);
  if (image.isNull() && files.originalIsPicture) image = read(files.original, box, fit, kMostPixels);
  return image;
}

QImage cropped(const QImage& image, QSize size, double radius) {
  const QSize filling = image.size().scaled(size, Qt::KeepAspectRatioByExpanding);
  const QRect place(QPoint((size.width() - filling.width()) / 2, (size.height() - filling.height()) / 2), filling);
  QImage fitted(size, QImage::Format_ARGB32_Premultiplied);
  fitted.fill(Qt::transparent);
  QPainter painter(&fitted);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  QPainterPath shape;
  shape.addRoundedRect(QRectF(QPointF(), QSizeF(size)), radius, radius);
  painter.setClipPath(shape);
  painter.drawImage(place, image);
  painter.end();
  return fitted;
}

// The picture stays premultiplied: each channel takes the same weighted sum.
void removeColour(QImage& image) {
  for (int row = 0; row < image.height(); ++row) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(row));
    for (int column = 0; column < image.width(); ++column) {
      const int grey = qGray(line[column]);
      line[column] = qRgba(grey, grey, grey, qAlpha(line[column]));
    }
  }
}

DecodedPicture answerOf(const PictureFiles& files, QImage image) {
  DecodedPicture decoded;
  if (image.isNull()) decoded.stamps = stampsOf(files);
  decoded.originalMissing = !files.original.isEmpty() && !QFileInfo::exists(files.original);
  decoded.image = std::move(image);
  return decoded;
}

}  // namespace

FileStamps stampsOf(const PictureFiles& files) { return {stampOf(files.thumbnail), stampOf(files.original)}; }

DecodedPicture decodeLong(const PictureFiles& files, int longSide) {
  QImage image = read(files.thumbnail, {longSide, longSide}, Fit::within, kMostPixels);
  if (image.isNull()) image = read(files.original, {longSide, longSide}, Fit::within, kMostPixels);
  if (!image.isNull()) {
    const bool clear = image.hasAlphaChannel();
    image.convertTo(clear ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
  }
  return answerOf(files, std::move(image));
}

DecodedPicture decodeFitted(const PictureFiles& files, QSize size, double radius) {
  QImage image = readEither(files, size, Fit::cover);
  if (!image.isNull()) image = cropped(image, size, radius);
  if (files.grey) removeColour(image);
  return answerOf(files, std::move(image));
}

}  // namespace sorvan::views
