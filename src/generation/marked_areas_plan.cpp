#include "generation/marked_areas_plan.h"

#include <algorithm>
#include <cmath>

namespace sorvan::generation {
namespace {

constexpr double tolerance = 1e-9;       // what a ratio of whole numbers may miss in binary
constexpr double pixelSnap = 1e-6;       // pixels
constexpr double smallestSide = 512;     // pixels; what a square model still edits well
constexpr double smallestToHalve = 513;  // pixels; pictures below are sent as large a square as they hold

QString squareSize() { return QStringLiteral("1024x1024"); }

int flooredLength(double length) { return static_cast<int>(std::floor(length + tolerance)); }

/// The part of the picture that holds all boxes.
QRectF unionOf(const std::vector<MarkupBox>& boxes, QSize picture) {
  std::optional<QRectF> all;
  for (const MarkupBox& box : boxes) {
    const auto pixels = pixelsOf(box, picture);
    if (!pixels) continue;
    if (!all) {
      all = pixels;
      continue;
    }
    // QRectF::united would leave out a rectangle without an area.
    const double right = std::max(all->right(), pixels->right());
    const double bottom = std::max(all->bottom(), pixels->bottom());
    all->setTopLeft({std::min(all->left(), pixels->left()), std::min(all->top(), pixels->top())});
    all->setRight(right);
    all->setBottom(bottom);
  }
  return all ? all->intersected(QRectF(QPointF(), picture)) : QRectF();
}

/// A patch of this size around the middle of the marks, moved so that it lies in the picture.
MarkedPatch centred(QSize side, const QRectF& marks, QSize picture, const QString& size) {
  const auto origin = [](double middle, int length, int whole) {
    return std::clamp(static_cast<int>(std::lround(middle - length / 2.0)), 0, whole - length);
  };
  return {origin(marks.center().x(), side.width(), picture.width()),
          origin(marks.center().y(), side.height(), picture.height()), side.width(), side.height(), size};
}

int squareSide(double longest, int shortSide) {
  if (shortSide < smallestToHalve) return shortSide;
  if (2 * longest <= smallestSide + tolerance) return static_cast<int>(smallestSide);
  return flooredLength(std::min<double>(2 * longest, shortSide));
}

/// Width over height of a size text; none for a text that is no size.
std::optional<double> ratioOf(const QString& size) {
  const QStringList parts = size.split(u'x');
  if (parts.size() != 2) return std::nullopt;
  bool isWidth = false;
  bool isHeight = false;
  const double width = parts[0].toDouble(&isWidth);
  const double height = parts[1].toDouble(&isHeight);
  const bool positive = isWidth && isHeight && width > 0 && height > 0;
  if (!positive || !std::isfinite(width / height) || width / height <= 0) return std::nullopt;
  return width / height;
}

/// The largest rectangle of a ratio in the picture.
QSize largestOf(double ratio, QSize picture) {
  const double width = picture.width();
  const double height = picture.height();
  if (width / height <= ratio + tolerance)
    return {picture.width(), std::min(flooredLength(width / ratio), picture.height())};
  return {std::min(flooredLength(ratio * height), picture.width()), picture.height()};
}

bool holds(QSize side, const QRectF& marks) {
  return !side.isEmpty() && marks.width() <= side.width() + tolerance && marks.height() <= side.height() + tolerance;
}

std::optional<MarkedPatch> largestCandidate(const QRectF& marks, QSize picture, const QStringList& sizes) {
  std::optional<MarkedPatch> best;
  qint64 bestArea = 0;
  for (const QString& size : sizes) {
    const auto ratio = size == squareSize() ? std::nullopt : ratioOf(size);
    if (!ratio) continue;
    const QSize side = largestOf(*ratio, picture);
    const qint64 area = qint64(side.width()) * side.height();
    if (!holds(side, marks) || area <= bestArea) continue;
    best = centred(side, marks, picture, size);
    bestArea = area;
  }
  return best;
}

double snapped(double value) {
  const double nearest = std::round(value);
  return std::abs(value - nearest) <= pixelSnap ? nearest : value;
}

/// Whole pixels from `lower` to `upper`, grown outwards and cut to the canvas, as start and end.
std::pair<int, int> touched(double lower, double upper, int length) {
  const auto clipped = [length](double value) { return static_cast<int>(std::clamp<double>(value, 0, length)); };
  return {clipped(std::floor(snapped(lower))), clipped(std::ceil(snapped(upper)))};
}

}  // namespace

std::optional<QRectF> pixelsOf(const MarkupBox& box, QSize picture) {
  const QRectF pixels = QRectF(box.x * picture.width(), box.y * picture.height(), box.width * picture.width(),
                               box.height * picture.height())
                            .normalized();
  const bool finite = std::isfinite(pixels.left()) && std::isfinite(pixels.top()) && std::isfinite(pixels.right()) &&
                      std::isfinite(pixels.bottom());
  return finite ? std::optional(pixels) : std::nullopt;
}

QRect touchedPixels(const QRectF& rectangle, QSize canvas) {
  const auto [left, right] = touched(rectangle.left(), rectangle.right(), canvas.width());
  const auto [top, bottom] = touched(rectangle.top(), rectangle.bottom(), canvas.height());
  return {left, top, right - left, bottom - top};
}

std::optional<MarkedPatch> planPatch(const std::vector<MarkupBox>& boxes, QSize picture, const QStringList& sizes) {
  // 1. Something to mark.
  if (boxes.empty() || picture.isEmpty()) return std::nullopt;
  // 2. All marks, as far as they lie in the picture.
  const QRectF marks = unionOf(boxes, picture);
  if (marks.isEmpty()) return std::nullopt;
  // 3. Their longer side.
  const double longest = std::max(marks.width(), marks.height());
  // 4. A square, when the model makes squares and one in the picture holds them.
  const int shortSide = std::min(picture.width(), picture.height());
  if (sizes.contains(squareSize()) && longest <= shortSide + tolerance) {
    const int side = squareSide(longest, shortSide);
    return centred({side, side}, marks, picture, squareSize());
  }
  // 5. and 6. Otherwise the largest piece of another ratio.
  return largestCandidate(marks, picture, sizes);
}

std::vector<MarkupBox> boxesInPatch(const std::vector<MarkupBox>& boxes, QSize picture, const QRect& patch) {
  std::vector<MarkupBox> moved = boxes;
  for (MarkupBox& box : moved) {
    box.x = (box.x * picture.width() - patch.x()) / patch.width();
    box.y = (box.y * picture.height() - patch.y()) / patch.height();
    box.width = box.width * picture.width() / patch.width();
    box.height = box.height * picture.height() / patch.height();
  }
  return moved;
}

}  // namespace sorvan::generation
