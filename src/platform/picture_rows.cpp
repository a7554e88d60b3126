#include "platform/picture_rows.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sorvan::platform {
namespace {

constexpr int channelsOfPixel = 4;
constexpr int alphaIndex = 3;

/// Catmull and Rom's cubic: sharp, and exact where nothing is scaled.
double cubic(double distance) {
  const double x = std::abs(distance);
  if (x < 1) return (1.5 * x - 2.5) * x * x + 1;
  if (x < 2) return ((-0.5 * x + 2.5) * x - 4) * x + 2;
  return 0;
}

}  // namespace

/// Weights beyond the ends of the line count for its end pixels.
template <class Channel>
ScaledRows<Channel>::Kernel::Kernel(int from, int to, int first, int count) {
  const double ratio = double(from) / to;
  const double widening = std::max(1.0, ratio);
  const double reach = 2 * widening;
  const int wanted = int(std::ceil(2 * reach)) + 1;
  taps = std::min(wanted, from);
  weights.assign(size_t(count) * size_t(taps), 0.0F);
  for (int i = 0; i < count; ++i) {
    const double centre = (first + i + 0.5) * ratio - 0.5;
    const int begin = int(std::ceil(centre - reach));
    const int start = std::clamp(begin, 0, from - taps);
    this->first.push_back(start);
    float* own = weights.data() + size_t(i) * size_t(taps);
    double sum = 0;
    for (int n = begin; n < begin + wanted; ++n) sum += cubic((n - centre) / widening);
    for (int n = begin; n < begin + wanted; ++n)
      own[std::clamp(n, start, start + taps - 1) - start] += float(cubic((n - centre) / widening) / sum);
  }
}

template <class Channel>
ScaledRows<Channel>::ScaledRows(const QImage& picture, QSize size, QRect part)
    : picture_(picture),
      part_(part),
      asItIs_(picture.size() == size),
      seeThrough_(picture.hasAlphaChannel()),
      across_(picture.width(), size.width(), part.left(), asItIs_ ? 0 : part.width()),
      down_(picture.height(), size.height(), part.top(), asItIs_ ? 0 : part.height()) {
  if (asItIs_) return;
  source_.resize(size_t(picture.width()));
  lines_.resize(size_t(part.width()) * size_t(down_.taps));
  row_.resize(size_t(part.width()) * channelsOfPixel);
}

template <class Channel>
typename ScaledRows<Channel>::Pixel ScaledRows<Channel>::pixel(const Channel* channels) const {
  const Pixel straight{float(channels[0]), float(channels[1]), float(channels[2]), float(channels[3])};
  if (!seeThrough_) return straight;
  const float alpha = float(channels[alphaIndex]) / float(std::numeric_limits<Channel>::max());
  return straight * Pixel{alpha, alpha, alpha, 1};
}

template <class Channel>
void ScaledRows<Channel>::scaleLine(int line) {
  const auto* channels = reinterpret_cast<const Channel*>(picture_.constScanLine(line));
  for (size_t i = 0; i < source_.size(); ++i) source_[i] = pixel(channels + i * channelsOfPixel);
  Pixel* scaled = lines_.data() + size_t(line % down_.taps) * size_t(part_.width());
  const auto taps = size_t(across_.taps);
  for (size_t i = 0; i < size_t(part_.width()); ++i) {
    Pixel sum{};
    for (size_t tap = 0; tap < taps; ++tap)
      sum += source_[size_t(across_.first[i]) + tap] * across_.weights[i * taps + tap];
    scaled[i] = sum;
  }
}

template <class Channel>
void ScaledRows<Channel>::store(const Pixel& sum, Channel* channels) const {
  const float most = std::numeric_limits<Channel>::max();
  const auto rounded = [most](float value) { return Channel(std::clamp(value, 0.0F, most) + 0.5F); };
  const float alpha = seeThrough_ ? std::clamp(sum[alphaIndex], 0.0F, most) : most;
  const float scale = seeThrough_ ? (alpha > 0 ? most / alpha : 0) : 1;
  for (int i = 0; i < alphaIndex; ++i) channels[i] = rounded(sum[i] * scale);
  channels[alphaIndex] = rounded(alpha);
}

template <class Channel>
const Channel* ScaledRows<Channel>::row(int y) {
  if (asItIs_)
    return reinterpret_cast<const Channel*>(picture_.constScanLine(y)) + size_t(part_.left()) * channelsOfPixel;
  const auto index = size_t(y - part_.top());
  const int first = down_.first[index];
  // Lines that are no longer held are read again when rows are asked for in another order.
  if (first + down_.taps < nextLine_) nextLine_ = first;
  for (nextLine_ = std::max(nextLine_, first); nextLine_ < first + down_.taps; ++nextLine_) scaleLine(nextLine_);
  const float* weights = down_.weights.data() + index * size_t(down_.taps);
  for (size_t i = 0; i < size_t(part_.width()); ++i) {
    Pixel sum{};
    for (int tap = 0; tap < down_.taps; ++tap) {
      const size_t slot = size_t((first + tap) % down_.taps);
      sum += lines_[slot * size_t(part_.width()) + i] * weights[tap];
    }
    store(sum, row_.data() + i * channelsOfPixel);
  }
  return row_.data();
}

template class ScaledRows<quint8>;
template class ScaledRows<quint16>;

}  // namespace sorvan::platform
