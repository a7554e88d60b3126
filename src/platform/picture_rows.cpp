#include "platform/picture_rows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
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
  held_.resize(size_t(down_.taps));
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
void ScaledRows<Channel>::store(Pixel sum, bool seeThrough, Channel* channels) {
  using Whole [[gnu::vector_size(16)]] = int;
  using Narrow [[gnu::vector_size(channelsOfPixel * sizeof(Channel))]] = Channel;
  constexpr float most = std::numeric_limits<Channel>::max();
  const Pixel zero{};
  const Pixel full = zero + most;
  if (seeThrough) {
    const float alpha = std::clamp(sum[alphaIndex], 0.0F, most);
    const float scale = alpha > 0 ? most / alpha : 0;
    sum *= Pixel{scale, scale, scale, 1};
  } else {
    sum[alphaIndex] = most;
  }
  sum = sum < zero ? zero : sum;
  sum = sum > full ? full : sum;
  const auto narrow = __builtin_convertvector(__builtin_convertvector(sum + 0.5F, Whole), Narrow);
  std::memcpy(channels, &narrow, sizeof narrow);
}

template <class Channel>
template <int Taps>
void ScaledRows<Channel>::combine(const float* weights) {
  // In variables of its own, which no write to the row can be taken to change.
  constexpr int fewest = std::max(Taps, 1);
  std::array<const Pixel*, fewest> lines;
  std::array<float, fewest> shares;
  std::copy_n(held_.begin(), fewest, lines.begin());
  std::copy_n(weights, fewest, shares.begin());
  const bool seeThrough = seeThrough_;
  const int more = Taps == 0 ? down_.taps : Taps;
  Channel* out = row_.data();
  for (int i = 0; i < part_.width(); ++i, out += channelsOfPixel) {
    Pixel sum = lines[0][i] * shares[0];
    for (int tap = 1; tap < fewest; ++tap) sum += lines[size_t(tap)][i] * shares[size_t(tap)];
    for (int tap = fewest; tap < more; ++tap) sum += held_[size_t(tap)][i] * weights[tap];
    store(sum, seeThrough, out);
  }
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
  for (int tap = 0; tap < down_.taps; ++tap)
    held_[size_t(tap)] = lines_.data() + size_t((first + tap) % down_.taps) * size_t(part_.width());
  // Growing pictures, the usual case, take this many.
  constexpr int tapsOfGrowing = 5;
  const float* weights = down_.weights.data() + index * size_t(down_.taps);
  if (down_.taps == tapsOfGrowing)
    combine<tapsOfGrowing>(weights);
  else
    combine<0>(weights);
  return row_.data();
}

template class ScaledRows<quint8>;
template class ScaledRows<quint16>;

}  // namespace sorvan::platform
