#include "shell/views/picture_difference.h"

#include <algorithm>
#include <cstdlib>

namespace sorvan::views {

namespace {

constexpr int kMost = 255;

int amplified(int first, int second, int gain) { return std::min(std::abs(first - second) * gain, kMost); }

// Answers how many pixels of the line differ.
qint64 subtractLine(const QRgb* first, const QRgb* second, QRgb* out, int width, int gain) {
  qint64 differing = 0;
  for (int x = 0; x < width; ++x) {
    differing += (first[x] & 0xffffffU) != (second[x] & 0xffffffU) ? 1 : 0;
    out[x] = qRgb(amplified(qRed(first[x]), qRed(second[x]), gain),
                  amplified(qGreen(first[x]), qGreen(second[x]), gain),
                  amplified(qBlue(first[x]), qBlue(second[x]), gain));
  }
  return differing;
}

QImage plain(const QImage& picture) { return picture.convertToFormat(QImage::Format_RGB32); }

}  // namespace

PictureDifference differenceOf(const QImage& first, const QImage& second, int gain) {
  if (first.isNull() || second.isNull()) return {};
  const QImage left = plain(first);
  const QImage right = plain(second.size() == first.size()
                                 ? second
                                 : second.scaled(first.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  PictureDifference result{QImage(left.size(), QImage::Format_RGB32), 0};
  if (result.picture.isNull() || right.isNull()) return {};
  qint64 differing = 0;
  for (int y = 0; y < left.height(); ++y)
    differing += subtractLine(reinterpret_cast<const QRgb*>(left.constScanLine(y)),
                              reinterpret_cast<const QRgb*>(right.constScanLine(y)),
                              reinterpret_cast<QRgb*>(result.picture.scanLine(y)), left.width(), gain);
  result.differing = static_cast<double>(differing) / (static_cast<double>(left.width()) * left.height());
  return result;
}

}  // namespace sorvan::views
