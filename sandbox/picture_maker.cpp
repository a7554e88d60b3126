#include "picture_maker.h"

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <stdexcept>

#include "randomness.h"
#include "scene.h"
#include "wish.h"

namespace sandbox {

namespace {

constexpr int maximumSide = 8192;

QByteArray encoded(const QImage& image, const QByteArray& format) {
  QBuffer buffer;
  QImageWriter writer(&buffer, format);
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

QImage recoloured(const QImage& image, double share, const QColor& dark, const QColor& light) {
  QImage changed = image.convertToFormat(QImage::Format_ARGB32);
  for (int y = 0; y < changed.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(changed.scanLine(y));
    for (int x = 0; x < changed.width(); ++x) {
      const QColor toned = blend(dark, light, qGray(line[x]) / 255.0);
      const QColor mixedIn = blend(QColor(line[x]), toned, share);
      line[x] = qRgba(mixedIn.red(), mixedIn.green(), mixedIn.blue(), qAlpha(line[x]));
    }
  }
  return changed;
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

double factorOf(const QJsonObject& input) {
  for (const char16_t* field : {u"upscale_factor", u"scale", u"factor"}) {
    const QJsonValue value = input.value(QString::fromUtf16(field));
    const double factor = value.isString() ? value.toString().toDouble() : value.toDouble();
    if (factor >= 1) return qMin(factor, 8.0);
  }
  return 2;
}

}  // namespace

std::optional<QImage> inputPictureIfAny(const WorkOrder& order, const MediaShelf& shelf) {
  const QList<QUrl> addresses = addressesOf(
      order.input, {QStringLiteral("image_urls"), QStringLiteral("image_url"), QStringLiteral("start_image_url"),
                    QStringLiteral("first_frame_url"), QStringLiteral("reference_image_urls")});
  if (addresses.isEmpty()) return std::nullopt;
  const auto bytes = shelf.read(addresses.first());
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

QImage inputPicture(const WorkOrder& order, const MediaShelf& shelf) {
  const auto image = inputPictureIfAny(order, shelf);
  if (!image) throw refusal(QStringLiteral("missing"), QStringLiteral("image_url"), QStringLiteral("Field required"));
  return *image;
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
  const QImage input = inputPicture(order, shelf);
  const QString words = wordsOf(order.input);
  Made made;
  for (int i = 0; i < countOf(order.input); ++i) {
    const quint64 seed = mixed(hashOf(words), quint64(order.seed + i));
    const Palette palette = paletteFor(words, seed);
    QImage changed = recoloured(input, 0.6, palette.near, palette.skyLow);
    paintConfetti(changed, palette, seed);
    made.files.append(listed(pictureFile(changed, pictureFormatOf(order.input, usualFormat(order)))));
  }
  made.beside = {{QStringLiteral("seed"), order.seed}, {QStringLiteral("description"), QString()}};
  return made;
}

Made upscalePicture(const WorkOrder& order, const MediaShelf& shelf) {
  const QImage input = inputPicture(order, shelf);
  const QSizeF wanted = QSizeF(input.size()) * factorOf(order.input);
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
