#include "picture_maker.h"

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <array>
#include <cmath>
#include <stdexcept>

#include "randomness.h"
#include "scene.h"
#include "wish.h"

namespace sandbox {

namespace {

constexpr int maximumSide = 8192;
constexpr int quickCompression = 15;  // of 100

QByteArray encoded(const QImage& image, const QByteArray& format) {
  QBuffer buffer;
  QImageWriter writer(&buffer, format);
  // Packed lightly: a picture is made for one look, and quickly.
  if (format == "png") writer.setCompression(quickCompression);
  if (format != "png") writer.setQuality(90);
  if (!writer.write(image))
    throw std::runtime_error("A picture cannot be encoded: " + writer.errorString().toStdString());
  return buffer.data();
}

MadeFile pictureFile(const QImage& image, const QByteArray& format) {
  MadeFile file;
  file.bytes = encoded(image, format);
  file.extension = format == "jpeg" ? QStringLiteral("jpg") : QString::fromLatin1(format);
  file.facts = {{QStringLiteral("width"), image.width()}, {QStringLiteral("height"), image.height()}};
  return file;
}

MadeFile listed(MadeFile file) {
  file.field = QStringLiteral("images");
  file.inArray = true;
  return file;
}

MadeFile single(MadeFile file) {
  file.field = QStringLiteral("image");
  return file;
}

// FLUX kinds answer JPEG unless they are asked, the others PNG.
QByteArray usualFormat(const WorkOrder& order) {
  return order.endpoint.contains(QStringLiteral("/flux")) ? "jpeg" : "png";
}

// Each grey in its colour between `dark` and `light`.
std::array<QRgb, 256> tones(const QColor& dark, const QColor& light) {
  std::array<QRgb, 256> all{};
  for (std::size_t grey = 0; grey < all.size(); ++grey) all[grey] = blend(dark, light, double(grey) / 255.0).rgb();
  return all;
}

// A share of 153 in 256 is of the tone, the rest of the picture's own colour.
int mixedIn(int own, int tone) { return (own * 103 + tone * 153) >> 8; }

QImage recoloured(const QImage& image, const QColor& dark, const QColor& light) {
  QImage changed = image.convertToFormat(QImage::Format_ARGB32);
  const auto toned = tones(dark, light);
  for (int y = 0; y < changed.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(changed.scanLine(y));
    for (int x = 0; x < changed.width(); ++x) {
      const QRgb own = line[x];
      const QRgb tone = toned[std::size_t(qGray(own))];
      line[x] = qRgba(mixedIn(qRed(own), qRed(tone)), mixedIn(qGreen(own), qGreen(tone)),
                      mixedIn(qBlue(own), qBlue(tone)), qAlpha(own));
    }
  }
  return changed;
}

// The middle of the picture, so that all of the size is covered.
QImage covering(const QImage& image, QSize size) {
  if (image.size() == size) return image;
  const QImage scaled = image.scaled(size, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
  return scaled.copy(QRect({(scaled.width() - size.width()) / 2, (scaled.height() - size.height()) / 2}, size));
}

// The further pictures stand along the lower edge, so that each reference can be seen in the result.
void paintReferences(QImage& image, const QList<QImage>& further) {
  QPainter painter(&image);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  const int side = qMin(image.height() / 4, image.width() / qMax(1, int(further.size()) + 1));
  int left = side / 8;
  for (const QImage& each : further) {
    const QRect place(left, image.height() - side - side / 8, side, side);
    painter.fillRect(place.adjusted(-2, -2, 2, 2), Qt::white);
    painter.drawImage(place, covering(each, {side, side}));
    left += side + side / 8;
  }
}

// The picture as seen from elsewhere: turned by the angles, and nearer.
QImage seenFrom(const QImage& image, const QJsonObject& input) {
  const QString turn = QStringLiteral("horizontal_angle");
  if (!input.contains(turn)) return image;
  QTransform view;
  view.translate(image.width() / 2.0, image.height() / 2.0);
  view.rotate(qBound(-60.0, std::remainder(input.value(turn).toDouble(), 360), 60.0), Qt::YAxis);
  view.rotate(qBound(-60.0, input.value(QStringLiteral("vertical_angle")).toDouble(), 60.0), Qt::XAxis);
  const double nearness = 1 + qBound(0.0, input.value(QStringLiteral("zoom")).toDouble(), 10.0) / 20;
  view.scale(nearness, nearness);
  view.translate(-image.width() / 2.0, -image.height() / 2.0);
  QImage seen(image.size(), QImage::Format_RGB32);
  seen.fill(QColor(24, 26, 30));
  QPainter painter(&seen);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.setTransform(view);
  painter.drawImage(0, 0, image);
  return seen;
}

void paintConfetti(QImage& image, const Palette& palette, quint64 seed) {
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  Randomness chance(seed);
  const double unit = qMin(image.width(), image.height()) / 100.0;
  for (int i = 0; i < 60; ++i) {
    const double edge = chance.below(2) == 0 ? chance.between(0, 0.16) : chance.between(0.84, 1);
    const bool upright = chance.below(2) == 0;
    const QPointF share = upright ? QPointF(edge, chance.unit()) : QPointF(chance.unit(), edge);
    const QPointF at(share.x() * image.width(), share.y() * image.height());
    painter.setBrush(faded(chance.below(2) == 0 ? palette.accent : palette.light, chance.between(0.4, 0.9)));
    painter.drawEllipse(at, unit * chance.between(0.6, 3.4), unit * chance.between(0.6, 3.4));
  }
}

QImage pictureAt(const QUrl& address, const MediaShelf& shelf) {
  const auto bytes = shelf.read(address);
  if (!bytes)
    throw refusal(QStringLiteral("file_download_error"), QStringLiteral("image_url"),
                  QStringLiteral("Failed to download the file. Please check if the URL is accessible and try again."));
  QBuffer buffer;
  buffer.setData(*bytes);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer);
  reader.setDecideFormatFromContent(true);
  const QImage image = reader.read();
  if (image.isNull())
    throw refusal(QStringLiteral("image_load_error"), QStringLiteral("image_url"),
                  QStringLiteral("Failed to load the image. Please ensure the image file is not corrupted."));
  return image;
}

}  // namespace

QList<QImage> inputPictures(const WorkOrder& order, const MediaShelf& shelf) {
  QList<QImage> all;
  for (const QUrl& address : pictureAddressesOf(order.input)) all.append(pictureAt(address, shelf));
  return all;
}

QImage inputPicture(const WorkOrder& order, const MediaShelf& shelf) {
  const QList<QUrl> addresses = pictureAddressesOf(order.input);
  if (!addresses.isEmpty()) return pictureAt(addresses.first(), shelf);
  throw refusal(QStringLiteral("missing"), QStringLiteral("image_url"), QStringLiteral("Field required"));
}

Made makePictures(const WorkOrder& order) {
  const QString words = wordsOf(order.input);
  if (words.isEmpty())
    throw refusal(QStringLiteral("missing"), QStringLiteral("prompt"), QStringLiteral("Field required"));
  const QSize size = limited(pictureSizeOf(order.input, {1, 1}), order.longestSide);
  const QByteArray format = pictureFormatOf(order.input, usualFormat(order));
  Made made;
  QJsonArray concepts;
  for (int i = 0; i < countOf(order.input); ++i) {
    made.files.append(listed(pictureFile(paintScene({words, order.seed + i, 0}, size), format)));
    concepts.append(false);
  }
  made.beside = {{QStringLiteral("seed"), order.seed},
                 {QStringLiteral("prompt"), words},
                 {QStringLiteral("description"), QString()},
                 {QStringLiteral("has_nsfw_concepts"), concepts}};
  return made;
}

Made editPicture(const WorkOrder& order, const MediaShelf& shelf) {
  // 1. What is given, in the size that is asked for.
  QList<QImage> inputs = inputPictures(order, shelf);
  if (inputs.isEmpty())
    throw refusal(QStringLiteral("missing"), QStringLiteral("image_url"), QStringLiteral("Field required"));
  const QImage first = inputs.takeFirst();
  const auto asked = askedPictureSize(order.input, first.size());
  const QSize size = asked ? limited(*asked, order.longestSide) : first.size();
  const QImage base = seenFrom(covering(first, size), order.input);

  // 2. Once for each picture that is wanted.
  const QString words = wordsOf(order.input);
  Made made;
  for (int i = 0; i < countOf(order.input); ++i) {
    const quint64 seed = mixed(hashOf(words), quint64(order.seed + i));
    const Palette palette = paletteFor(words, seed);
    QImage changed = recoloured(base, palette.near, palette.skyLow);
    paintReferences(changed, inputs);
    paintConfetti(changed, palette, seed);
    made.files.append(listed(pictureFile(changed, pictureFormatOf(order.input, usualFormat(order)))));
  }
  made.beside = {{QStringLiteral("seed"), order.seed},
                 {QStringLiteral("prompt"), words},
                 {QStringLiteral("description"), QString()}};
  return made;
}

Made upscalePicture(const WorkOrder& order, const MediaShelf& shelf) {
  const QImage input = inputPicture(order, shelf);
  const QSizeF wanted = QSizeF(input.size()) * upscaleOf(order.input, input.size());
  const QSize size = wanted.toSize().boundedTo({maximumSide, maximumSide});
  const QImage larger = input.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  return {{single(pictureFile(larger, pictureFormatOf(order.input, "png")))}, {{QStringLiteral("seed"), order.seed}}};
}

Made cutOutPicture(const WorkOrder& order, const MediaShelf& shelf) {
  const QImage input = inputPicture(order, shelf);
  QImage mask(input.size(), QImage::Format_ARGB32_Premultiplied);
  mask.fill(Qt::transparent);
  QPainter painter(&mask);
  painter.setRenderHint(QPainter::Antialiasing);
  const QPointF middle(input.width() / 2.0, input.height() / 2.0);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::black);
  painter.drawEllipse(middle, input.width() * 0.34, input.height() * 0.40);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.drawImage(0, 0, input);
  painter.end();
  return {{single(pictureFile(mask.convertToFormat(QImage::Format_ARGB32), "png"))}, {}};
}

}  // namespace sandbox
