#include "generation/marked_areas_blend.h"

#include <atomic>
#include <cmath>
#include <limits>

#include "base/side_by_side.h"
#include "generation/marked_areas_mask.h"
#include "platform/picture_rows.h"

namespace sorvan::generation {
namespace {

constexpr double shapeTolerance = 0.03;  // of the original's ratio
constexpr int channelsOfPixel = 4;
constexpr int alphaIndex = 3;
constexpr std::uint8_t fullLevel = 255;
/// What a thread takes at once: enough that the lines it has to scale anew do not count.
constexpr int rowsOfPiece = 128;

bool hasSixteenBits(QImage::Format format) {
  switch (format) {
    case QImage::Format_Grayscale16:
    case QImage::Format_RGBX64:
    case QImage::Format_RGBA64:
    case QImage::Format_RGBA64_Premultiplied:
    case QImage::Format_BGR30:
    case QImage::Format_RGB30:
    case QImage::Format_A2BGR30_Premultiplied:
    case QImage::Format_A2RGB30_Premultiplied:
    case QImage::Format_RGBX16FPx4:
    case QImage::Format_RGBA16FPx4:
    case QImage::Format_RGBA16FPx4_Premultiplied:
    case QImage::Format_RGBX32FPx4:
    case QImage::Format_RGBA32FPx4:
    case QImage::Format_RGBA32FPx4_Premultiplied:
      return true;
    default:
      return false;
  }
}

/// The format in which every value of the picture can stand as it is.
QImage::Format canvasFormat(const QImage& image) {
  if (hasSixteenBits(image.format())) return image.hasAlphaChannel() ? QImage::Format_RGBA64 : QImage::Format_RGBX64;
  return image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32;
}

/// The format in which a result is laid over such a canvas.
QImage::Format layerFormat(const QImage& result, QImage::Format canvas) {
  const bool deep = hasSixteenBits(canvas);
  if (result.hasAlphaChannel()) return deep ? QImage::Format_RGBA64 : QImage::Format_ARGB32;
  return deep ? QImage::Format_RGBX64 : QImage::Format_RGB32;
}

QColorSpace orSrgb(const QColorSpace& space) { return space.isValid() ? space : QColorSpace(QColorSpace::SRgb); }

bool isGreyProfile(const QByteArray& profile) { return profile.mid(16, 4) == "GRAY"; }

/// The curve of a grey profile, read off a ramp of greys.
QColorSpace withTonesOf(const QColorSpace& grey) {
  constexpr int steps = 1024;
  constexpr int most = 65535;
  const QColorTransform toLinear = grey.transformationToColorSpace(QColorSpace(QColorSpace::SRgbLinear));
  QList<quint16> curve;
  for (int step = 0; step < steps; ++step) {
    const auto value = quint16(step * most / (steps - 1));
    curve << toLinear.map(QRgba64::fromRgba64(value, value, value, most)).green();
  }
  return QColorSpace(QColorSpace::Primaries::SRgb, curve);
}

/// One pixel of an opaque layer over an opaque canvas.
template <class Channel>
void mix(Channel* canvas, const Channel* layer, unsigned level) {
  constexpr unsigned full = fullLevel;
  for (int i = 0; i < alphaIndex; ++i)
    canvas[i] = Channel((layer[i] * level + canvas[i] * (full - level) + full / 2) / full);
}

/// One pixel of a layer over a canvas, either of which may be see-through.
template <class Channel>
void lay(Channel* canvas, const Channel* layer, unsigned level) {
  constexpr float most = std::numeric_limits<Channel>::max();
  const float above = float(layer[alphaIndex]) / most * float(level) / float(fullLevel);
  const float below = float(canvas[alphaIndex]) / most * (1 - above);
  const float alpha = above + below;
  for (int i = 0; i < alphaIndex; ++i)
    canvas[i] = Channel((float(layer[i]) * above + float(canvas[i]) * below) / alpha + 0.5F);
  canvas[alphaIndex] = Channel(std::min(alpha, 1.0F) * most + 0.5F);
}

template <class Channel>
void blendRow(Channel* canvas, const Channel* layer, const std::uint8_t* levels, int count) {
  constexpr Channel opaque = std::numeric_limits<Channel>::max();
  for (int i = 0; i < count; ++i, canvas += channelsOfPixel, layer += channelsOfPixel) {
    if (levels[i] == 0 || layer[alphaIndex] == 0) continue;
    if (layer[alphaIndex] == opaque && levels[i] == fullLevel)
      std::copy_n(layer, channelsOfPixel, canvas);
    else if (layer[alphaIndex] == opaque && canvas[alphaIndex] == opaque)
      mix(canvas, layer, levels[i]);
    else
      lay(canvas, layer, levels[i]);
  }
}

template <class Channel>
void blend(QImage& canvas, const QImage& layer, const FeatherMask& mask, const QRect& target) {
  const QRect part = mask.bounds();
  // The one copy of the original's pixels is made before threads share it.
  uchar* const first = canvas.bits() + ptrdiff_t(target.top()) * canvas.bytesPerLine() +
                       ptrdiff_t(target.left() + part.left()) * channelsOfPixel * ptrdiff_t(sizeof(Channel));
  const ptrdiff_t stride = canvas.bytesPerLine();
  std::atomic<int> next = part.top();
  sideBySide([&] {
    ScaledRows<Channel> rows(layer, target.size(), part);
    std::vector<std::uint8_t> levels(size_t(target.width()));
    for (int top; (top = next.fetch_add(rowsOfPiece)) <= part.bottom();)
      for (int y = top; y < top + rowsOfPiece && y <= part.bottom(); ++y) {
        mask.readRow(y, levels.data());
        blendRow(reinterpret_cast<Channel*>(first + y * stride), rows.row(y), levels.data() + part.left(),
                 part.width());
      }
  });
}

}  // namespace

bool fitsShape(QSize result, QSize target) {
  if (result.isEmpty() || target.isEmpty()) return false;
  const double wanted = double(target.width()) / target.height();
  return std::abs(double(result.width()) / result.height() - wanted) < wanted * shapeTolerance;
}

QColorSpace rgbSpaceOf(const QImage& image) {
  const QColorSpace space = image.colorSpace();
  return space.isValid() && isGreyProfile(space.iccProfile()) ? withTonesOf(space) : space;
}

QImage inSpace(const QImage& image, const QColorSpace& space, QImage::Format format) {
  const QColorSpace own = rgbSpaceOf(image);
  QImage converted = image.convertToFormat(format);
  converted.setColorSpace(orSrgb(own));
  if (orSrgb(own) != orSrgb(space)) converted.convertToColorSpace(orSrgb(space));
  converted.setColorSpace(space);
  return converted;
}

std::optional<QImage> laidInside(const std::vector<MarkupBox>& boxes, const QImage& original, const QImage& result,
                                 const QRect& target) {
  const bool inside = !target.isEmpty() && original.rect().contains(target);
  if (boxes.empty() || !inside || !fitsShape(result.size(), target.size())) return std::nullopt;
  QImage canvas = original.convertToFormat(canvasFormat(original));
  const QColorSpace space = rgbSpaceOf(original);
  canvas.setColorSpace(space);
  const FeatherMask mask(boxes, target.size());
  if (canvas.isNull()) return std::nullopt;
  if (mask.bounds().isEmpty()) return canvas;
  const QImage layer = inSpace(result, space, layerFormat(result, canvas.format()));
  if (layer.isNull()) return std::nullopt;
  if (hasSixteenBits(canvas.format()))
    blend<quint16>(canvas, layer, mask, target);
  else
    blend<quint8>(canvas, layer, mask, target);
  return canvas;
}

}  // namespace sorvan::generation
