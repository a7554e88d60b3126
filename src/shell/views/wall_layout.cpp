#include "shell/views/wall_layout.h"

namespace sorvan::views {

namespace {
constexpr float kNarrowest = 0.2F;
constexpr float kWidest = 6.0F;
}  // namespace

void WallLayout::build(const std::vector<float>& aspectRatios, const WallMeasures& measures,
                       const std::vector<int>& sections) {
  aspects_ = aspectRatios;
  for (float& aspect : aspects_) aspect = std::clamp(aspect, kNarrowest, kWidest);
  measures_ = measures;
  rows_.clear();
  heads_.clear();
  height_ = measures.padding;
  buildPart(0, sections.empty() ? count() : sections.front());
  for (std::size_t number = 0; number < sections.size(); ++number) {
    heads_.push_back({height_, measures.headHeight});
    height_ += measures.headHeight;
    buildPart(sections[number], number + 1 < sections.size() ? sections[number + 1] : count());
  }
  height_ += measures.padding - (rows_.empty() ? 0 : measures.gap);
}

void WallLayout::buildPart(int first, int end) {
  const double room = std::max(1.0, measures_.width - 2 * measures_.padding);
  double sum = 0;
  for (int index = first; index < end; ++index) {
    sum += aspects_[static_cast<size_t>(index)];
    const int cells = index - first + 1;
    if (sum * measures_.rowHeight + (cells - 1) * measures_.gap < room) continue;
    closeRow(first, cells, sum, false);
    first = index + 1;
    sum = 0;
  }
  if (first < end) closeRow(first, end - first, sum, true);
}

std::pair<int, int> WallLayout::headRange(double top, double bottom) const {
  const auto first = std::partition_point(heads_.begin(), heads_.end(),
                                          [top](const WallHead& head) { return head.top + head.height < top; });
  const auto end = std::partition_point(first, heads_.end(), [bottom](const WallHead& head) { return head.top < bottom; });
  return {static_cast<int>(first - heads_.begin()), static_cast<int>(end - heads_.begin())};
}

// The last row keeps the wished height instead of stretching a few cells over the whole width.
void WallLayout::closeRow(int first, int cells, double aspectSum, bool last) {
  const double room = measures_.width - 2 * measures_.padding - (cells - 1) * measures_.gap;
  double height = room / aspectSum;
  if (last) height = std::min(height, measures_.rowHeight);
  rows_.push_back({height_, std::max(1.0, height), first, cells});
  height_ += rows_.back().height + measures_.gap;
}

int WallLayout::rowAt(double y) const {
  if (rows_.empty()) return -1;
  const auto after =
      std::upper_bound(rows_.begin(), rows_.end(), y, [](double at, const WallRow& row) { return at < row.top; });
  return std::max(0, static_cast<int>(after - rows_.begin()) - 1);
}

int WallLayout::rowOf(int index) const {
  if (index < 0 || index >= count()) return -1;
  const auto after =
      std::upper_bound(rows_.begin(), rows_.end(), index, [](int at, const WallRow& row) { return at < row.first; });
  return static_cast<int>(after - rows_.begin()) - 1;
}

QRectF WallLayout::rectOf(int index) const {
  const int number = rowOf(index);
  if (number < 0) return {};
  const WallRow& row = rows_[static_cast<size_t>(number)];
  double left = measures_.padding;
  for (int before = row.first; before < index; ++before)
    left += aspects_[static_cast<size_t>(before)] * row.height + measures_.gap;
  return {left, row.top, aspects_[static_cast<size_t>(index)] * row.height, row.height};
}

int WallLayout::indexAt(QPointF point) const {
  const int number = rowAt(point.y());
  if (number < 0) return -1;
  const WallRow& row = rows_[static_cast<size_t>(number)];
  for (int index = row.first; index < row.first + row.count; ++index) {
    if (rectOf(index).contains(point)) return index;
  }
  return -1;
}

std::pair<int, int> WallLayout::range(double top, double bottom) const {
  if (rows_.empty()) return {0, 0};
  const WallRow& from = rows_[static_cast<size_t>(rowAt(top))];
  const WallRow& to = rows_[static_cast<size_t>(rowAt(bottom))];
  return {from.first, to.first + to.count};
}

int WallLayout::nearestInRow(int number, double x) const {
  const WallRow& row = rows_[static_cast<size_t>(number)];
  int best = row.first;
  for (int candidate = row.first; candidate < row.first + row.count; ++candidate) {
    if (std::abs(rectOf(candidate).center().x() - x) < std::abs(rectOf(best).center().x() - x)) best = candidate;
  }
  return best;
}

int WallLayout::nearest(QPointF point) const {
  const int number = rowAt(point.y());
  return number < 0 ? -1 : nearestInRow(number, point.x());
}

int WallLayout::verticalNeighbour(int index, int direction) const {
  const int number = rowOf(index) + direction;
  if (rowOf(index) < 0 || number < 0 || number >= static_cast<int>(rows_.size())) return index;
  return nearestInRow(number, rectOf(index).center().x());
}

}  // namespace sorvan::views
