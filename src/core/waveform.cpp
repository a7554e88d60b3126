#include "core/waveform.h"

#include <QPainter>

#include "base/sorvan_error.h"
#include "core/media_texts.h"
#include "platform/sounds.h"

namespace sorvan::core {
namespace {

constexpr int fullScale = 32'767;
constexpr float quietestPeak = 0.05F;  // near silence stays low instead of being blown up
constexpr double margin = 28;          // pixels
constexpr double smallestHalf = 1.5;   // pixels

float loudest(std::span<const std::int16_t> samples) {
  int peak = 0;
  for (const std::int16_t sample : samples) peak = std::max(peak, std::abs(int(sample)));
  return float(peak) / fullScale;
}

void normalise(std::vector<float>& levels) {
  if (levels.empty()) return;
  const float reference = std::max(*std::max_element(levels.begin(), levels.end()), quietestPeak);
  for (float& level : levels) level /= reference;
}

/// From a warm rose at 0 to a cool blue at 1.
QColor barColour(double place) {
  return QColor::fromRgbF(float(0.953 - 0.408 * place), float(0.365 + 0.121 * place), float(0.537 + 0.428 * place));
}

}  // namespace

std::vector<float> waveformLevels(std::span<const std::int16_t> samples, int count) {
  std::vector<float> levels;
  const size_t wanted = size_t(std::max(count, 1));
  const size_t bucket = std::max<size_t>(samples.size() / wanted, 1);
  for (size_t start = 0; start < samples.size() && levels.size() < wanted; start += bucket)
    levels.push_back(loudest(samples.subspan(start, std::min(bucket, samples.size() - start))));
  normalise(levels);
  return levels;
}

std::vector<float> waveformLevels(const QString& path, int count) {
  std::vector<std::int16_t> samples;
  readSound16(path, {.lengthSeconds = waveformSeconds, .samplesPerSecond = waveformRate},
              [&](std::span<const std::int16_t> piece) { samples.insert(samples.end(), piece.begin(), piece.end()); });
  if (samples.empty()) throw SorvanError(texts::soundEmpty());
  return waveformLevels(samples, count);
}

QImage waveformPicture(std::span<const float> levels, const QSize& size) {
  QImage picture(size, QImage::Format_RGB32);
  if (picture.isNull()) throw SorvanError(texts::waveformNotDrawn());
  picture.fill(QColor::fromRgbF(0.086F, 0.09F, 0.11F));
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  const double step = (size.width() - 2 * margin) / double(std::max<size_t>(levels.size(), 1));
  const double middle = size.height() / 2.0;
  const double last = double(std::max<size_t>(levels.size(), 2) - 1);
  for (size_t index = 0; index < levels.size(); ++index) {
    const double half = std::max((middle - margin) * double(levels[index]), smallestHalf);
    const QRectF bar(margin + step * double(index) + step * 0.18, middle - half, step * 0.64, 2 * half);
    painter.fillRect(bar, barColour(double(index) / last));
  }
  return picture;
}

QImage waveformPicture(const QString& path, const QSize& size) {
  return waveformPicture(waveformLevels(path, waveformBars), size);
}

}  // namespace sorvan::core
