#include "generation/marked_areas_pictures.h"

#include "base/sorvan_error.h"
#include "generation/marked_areas_blend.h"
#include "generation/texts.h"
#include "platform/pictures.h"

namespace sorvan::generation {
namespace {

QImage decodedToMark(const QString& path) {
  try {
    return decodeUpright(path);
  } catch (const SorvanError&) {
    throw SorvanError(texts::markedImageUnreadable());
  }
}

/// The picture in sRGB, as deep as it was.
QImage inSrgb(const QImage& image) {
  const QColorSpace srgb(QColorSpace::SRgb);
  const QColorSpace own = rgbSpaceOf(image);
  if (!own.isValid() || own == srgb) return image;
  const bool deep = image.depth() > 32 || image.format() == QImage::Format_Grayscale16;
  return inSpace(image, srgb, deep ? QImage::Format_RGBA64 : QImage::Format_ARGB32);
}

QByteArray laidOver(const QString& result, const QString& original, const std::vector<MarkupBox>& boxes,
                    const std::optional<MarkedRoute>& route) {
  const QImage below = decodeUpright(original);
  const QRect target = route ? route->target() : below.rect();
  if (route && QSize(route->width, route->height) != below.size()) return {};
  if (!below.rect().contains(target) || target.isEmpty()) return {};
  const auto picture = laidInside(boxesInPatch(boxes, below.size(), target), below, decodeUpright(result), target);
  return picture ? encodePng(*picture) : QByteArray();
}

}  // namespace

QByteArray croppedPicture(const QString& path, const QRect& rectangle) {
  const QImage picture = decodedToMark(path);
  if (rectangle.isEmpty() || !picture.rect().contains(rectangle)) throw SorvanError(texts::markedImageUnreadable());
  return encodePng(inSrgb(picture.copy(rectangle)));
}

std::optional<QByteArray> confinedPicture(const QString& result, const QString& original,
                                          const std::vector<MarkupBox>& boxes,
                                          const std::optional<MarkedRoute>& route) {
  try {
    const QByteArray png = laidOver(result, original, boxes, route);
    return png.isEmpty() ? std::nullopt : std::optional(png);
  } catch (const std::exception&) {
    return std::nullopt;  // the caller tells, and the result stays retained
  }
}

}  // namespace sorvan::generation
