// Thumbnails of large pictures: from the file to the JPEG on the disk, against a fast thumbnailer on all cores.
#include <random>

#include "bench/row.h"
#include "core/thumbnails.h"
#include "platform/pictures.h"

namespace sorvan::bench {
namespace {

/// Something like a photograph: large soft shapes with a little noise, so that it neither compresses to nothing nor to
/// pure noise. With alpha, a soft-edged disc in a clear ground.
QImage madePicture(QSize size, QImage::Format format) {
  std::mt19937 random(7);
  QImage image(size, format);
  const double longest = std::max(size.width(), size.height());
  for (int row = 0; row < size.height(); ++row) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(row));
    for (int column = 0; column < size.width(); ++column) {
      const double x = column / longest;
      const double y = row / longest;
      const int noise = int(random() & 7);
      const int red = int(120 + 100 * std::sin(9 * x + 4 * y)) + noise;
      const int green = int(120 + 100 * std::sin(5 * x * y + 7 * y)) + noise;
      const int blue = int(120 + 100 * std::cos(6 * x - 3 * y)) + noise;
      const double distance = std::hypot(x - 0.5 * size.width() / longest, y - 0.5 * size.height() / longest);
      const int alpha = std::clamp(int(255 * (0.4 - distance) * 20), 0, 255);
      line[column] = qRgba(red, green, blue, image.hasAlphaChannel() ? alpha : 255);
    }
  }
  return image;
}

void write(const QDir& data, const QByteArray& bytes) {
  QFile file(data.filePath(QStringLiteral("picture")));
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
    throw std::runtime_error("the picture could not be made");
}

Contestants contestants(const QDir& data) {
  const QString source = data.filePath(QStringLiteral("picture"));
  const QString ours = data.filePath(QStringLiteral("ours.jpg"));
  const QString peer = data.filePath(QStringLiteral("peer.jpg"));
  const QString edge = QString::number(core::thumbnailEdge);
  return {.ours = [=] { return timed([&] { core::drawThumbnail(source, core::MediaType::image, ours); }); },
          .peer =
              [=] {
                return timedCommand({QStringLiteral("vipsthumbnail"), source, QStringLiteral("-s"),
                                     edge + QLatin1Char('x') + edge, QStringLiteral("-o"),
                                     peer + QStringLiteral("[Q=85]")});
              },
          .limit = {}};
}

const RegisterRow jpeg{{.name = QStringLiteral("thumb-jpeg24"),
                        .make =
                            [](const QDir& data) {
                              write(data, platform::encodeJpeg(madePicture({6000, 4000}, QImage::Format_RGB32), 0.9));
                            },
                        .measure = contestants,
                        .rounds = 25}};

const RegisterRow png{{.name = QStringLiteral("thumb-png12"),
                       .make =
                           [](const QDir& data) {
                             write(data, platform::encodePng(madePicture({4000, 3000}, QImage::Format_RGB32)));
                           },
                       .measure = contestants,
                       .rounds = 15}};

const RegisterRow seeThrough{{.name = QStringLiteral("thumb-rgba4"),
                              .make =
                                  [](const QDir& data) {
                                    write(data, platform::encodePng(madePicture({2000, 2000}, QImage::Format_ARGB32)));
                                  },
                              .measure = contestants,
                              .rounds = 25}};

}  // namespace
}  // namespace sorvan::bench
