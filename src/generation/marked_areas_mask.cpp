#include "generation/marked_areas_mask.h"

#include <algorithm>

#include "generation/marked_areas_plan.h"

namespace sorvan::generation {
namespace {

constexpr int featherShare = 150;  // of the shorter side
constexpr int leastFeather = 2;    // pixels
constexpr int fullLevel = 255;

int featherOf(QSize canvas) { return std::max(std::min(canvas.width(), canvas.height()) / featherShare, leastFeather); }

void lighten(std::uint8_t& level, std::uint8_t to) { level = std::max(level, to); }

}  // namespace

FeatherMask::FeatherMask(const std::vector<MarkupBox>& boxes, QSize canvas) : canvas_(canvas) {
  const int feather = featherOf(canvas);
  for (int step = 0; step <= feather; ++step)
    levels_.push_back(static_cast<std::uint8_t>((step * fullLevel + feather / 2) / feather));
  for (const MarkupBox& box : boxes) {
    const auto pixels = pixelsOf(box, canvas);
    const QRect whole = pixels ? touchedPixels(*pixels, canvas) : QRect();
    const QRect lit = whole.adjusted(1, 1, -1, -1);
    if (lit.isEmpty()) continue;
    boxes_.push_back(whole);
    bounds_ |= lit;
  }
  std::sort(boxes_.begin(), boxes_.end(), [](const QRect& a, const QRect& b) { return a.left() < b.left(); });
}

void FeatherMask::readRow(int y, std::uint8_t* levels) const {
  std::fill_n(levels, canvas_.width(), std::uint8_t(0));
  int fullUntil = 0;  // columns before it that a box could still fill are full already: boxes come by their left edges
  for (const QRect& box : boxes_) {
    const int depth = std::min({y - box.top(), box.bottom() - y, feather()});
    if (depth < 1) continue;
    for (int step = 1; step < depth && box.left() + step <= box.right() - step; ++step) {
      lighten(levels[box.left() + step], levels_[size_t(step)]);
      lighten(levels[box.right() - step], levels_[size_t(step)]);
    }
    int column = box.left() + depth;
    const int end = box.right() - depth + 1;
    if (depth == feather()) {
      column = std::max(column, fullUntil);
      fullUntil = std::max(fullUntil, end);
    }
    for (; column < end; ++column) lighten(levels[column], levels_[size_t(depth)]);
  }
}

}  // namespace sorvan::generation
