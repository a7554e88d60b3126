// Laying an edit over a picture of 24 megapixels inside a box: the pixels alone, and from files to a file.
#include <random>

#include "bench/row.h"
#include "generation/marked_areas_blend.h"
#include "generation/marked_areas_mask.h"
#include "generation/marked_areas_pictures.h"
#include "platform/pictures.h"

namespace sorvan::bench {
namespace {

constexpr QSize originalSize(6000, 4000);
constexpr QSize resultSize(1536, 1024);

/// One large box in the middle.
std::vector<core::MarkupBox> boxes() {
  core::MarkupBox box;
  box.x = box.y = 0.1;
  box.width = box.height = 0.8;
  return {box};
}

/// Soft shapes with a little noise, as a photograph has.
QImage madePicture(QSize size, double phase) {
  std::mt19937 random(11);
  QImage image(size, QImage::Format_RGB32);
  for (int row = 0; row < size.height(); ++row) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(row));
    const double y = double(row) / size.height();
    for (int column = 0; column < size.width(); ++column) {
      const double x = double(column) / size.width();
      const int noise = int(random() & 7);
      line[column] =
          qRgb(int(120 + 100 * std::sin(9 * x + 4 * y + phase)) + noise,
               int(120 + 100 * std::sin(5 * x * y + phase)) + noise, int(120 + 100 * std::cos(6 * x - 3 * y)) + noise);
    }
  }
  return image;
}

/// The mask as a picture, for the peer.
QImage drawnMask() {
  const generation::FeatherMask mask(boxes(), originalSize);
  QImage image(originalSize, QImage::Format_Grayscale8);
  for (int row = 0; row < originalSize.height(); ++row) mask.readRow(row, image.scanLine(row));
  return image;
}

void write(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
    throw std::runtime_error("the data could not be made");
}

/// The peer works on files that need no decoding, the result at the original's size already.
void makePixels(const QDir& data) {
  const QImage result = madePicture(resultSize, 2);
  write(data.filePath(QStringLiteral("original.png")), platform::encodePng(madePicture(originalSize, 0)));
  write(data.filePath(QStringLiteral("result.png")), platform::encodePng(result));
  const QString scaled = data.filePath(QStringLiteral("scaled.png"));
  const QString mask = data.filePath(QStringLiteral("mask.png"));
  write(scaled, platform::encodePng(result.scaled(originalSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)));
  write(mask, platform::encodePng(drawnMask()));
  const auto copy = [&](const QString& from, const QString& to) {
    runCommand({QStringLiteral("vips"), QStringLiteral("copy"), from, data.filePath(to)});
  };
  copy(data.filePath(QStringLiteral("original.png")), QStringLiteral("original.v"));
  copy(scaled, QStringLiteral("scaled.v"));
  copy(mask, QStringLiteral("mask.v"));
}

Contestants pixels(const QDir& data) {
  const QImage original =
      platform::decodeUpright(data.filePath(QStringLiteral("original.png"))).convertToFormat(QImage::Format_RGB32);
  const QImage result = platform::decodeUpright(data.filePath(QStringLiteral("result.png")));
  const QStringList peer{QStringLiteral("vips"),
                         QStringLiteral("ifthenelse"),
                         data.filePath(QStringLiteral("mask.v")),
                         data.filePath(QStringLiteral("scaled.v")),
                         data.filePath(QStringLiteral("original.v")),
                         data.filePath(QStringLiteral("blended.v")),
                         QStringLiteral("--blend")};
  return {.ours =
              [=] {
                return timed([&] {
                  if (!generation::laidInside(boxes(), original, result, original.rect()))
                    throw std::runtime_error("nothing was laid in");
                });
              },
          .peer = [=] { return timedCommand(peer); },
          .limit =
              [=] {
                return timed([&] {
                  const QImage copy = original.copy();
                  if (copy.constBits() == original.constBits()) throw std::runtime_error("no copy was made");
                });
              }};
}

/// The peer is given the result at the original's size and the mask, ready-made; the limit reads and writes the same
/// files and lays nothing over.
Contestants files(const QDir& data) {
  const QString original = data.filePath(QStringLiteral("original.png"));
  const QString result = data.filePath(QStringLiteral("result.png"));
  const QString target = data.filePath(QStringLiteral("ours.png"));
  const QString copied = data.filePath(QStringLiteral("copied.png"));
  const QStringList peer{QStringLiteral("vips"),
                         QStringLiteral("ifthenelse"),
                         data.filePath(QStringLiteral("mask.png")),
                         data.filePath(QStringLiteral("scaled.png")),
                         original,
                         data.filePath(QStringLiteral("blended.png")),
                         QStringLiteral("--blend")};
  return {
      .ours =
          [=] {
            return timed([&] { write(target, generation::confinedPicture(result, original, boxes(), {}).value()); });
          },
      .peer = [=] { return timedCommand(peer); },
      .limit =
          [=] {
            return timed([&] {
              platform::decodeUpright(result);
              write(copied, platform::encodePng(platform::decodeUpright(original)));
            });
          }};
}

const RegisterRow pixelRow{
    {.name = QStringLiteral("confine-24mp"), .make = makePixels, .measure = pixels, .rounds = 15}};
const RegisterRow fileRow{
    {.name = QStringLiteral("confine-24mp-files"), .make = makePixels, .measure = files, .rounds = 5}};

}  // namespace
}  // namespace sorvan::bench
