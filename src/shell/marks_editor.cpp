#include "shell/marks_editor.h"

#include <algorithm>
#include <cmath>

namespace sorvan::shell {

namespace {

constexpr std::size_t mostSteps = 200;

QRectF areaOfBox(const core::MarkupBox& box) { return QRectF(box.x, box.y, box.width, box.height).normalized(); }

bool isFinite(const QRectF& area) {
  return std::isfinite(area.left()) && std::isfinite(area.top()) && std::isfinite(area.right()) &&
         std::isfinite(area.bottom());
}

// The two edges as whole pixels of the side, at least one apart; equal when nothing lies inside.
std::pair<int, int> pixelEdges(double low, double high, int side) {
  if (side < 1 || high <= 0 || low >= 1 || high <= low) return {0, 0};
  int first = static_cast<int>(std::lround(std::clamp(low, 0.0, 1.0) * side));
  int last = static_cast<int>(std::lround(std::clamp(high, 0.0, 1.0) * side));
  if (first == last) first == side ? --first : ++last;
  return {first, last};
}

}  // namespace

QRectF MarksEditor::onPixels(const QRectF& area, QSize picture) {
  const QRectF wanted = area.normalized();
  if (!isFinite(wanted)) return {};
  const auto [left, right] = pixelEdges(wanted.left(), wanted.right(), picture.width());
  const auto [top, bottom] = pixelEdges(wanted.top(), wanted.bottom(), picture.height());
  if (left == right || top == bottom) return {};
  const double width = picture.width();
  const double height = picture.height();
  return {left / width, top / height, (right - left) / width, (bottom - top) / height};
}

QRectF MarksEditor::movedInside(QRectF area) {
  area.moveLeft(std::clamp(area.left(), 0.0, std::max(0.0, 1 - area.width())));
  area.moveTop(std::clamp(area.top(), 0.0, std::max(0.0, 1 - area.height())));
  return area;
}

MarksEditor::MarksEditor(const std::vector<core::MarkupBox>& boxes, QSize picture) : picture_(picture) {
  for (const core::MarkupBox& box : boxes) {
    const QRectF area = onPixels(areaOfBox(box), picture);
    if (!area.isEmpty()) boxes_.push_back({area.x(), area.y(), area.width(), area.height(), box.note});
  }
}

QRectF MarksEditor::areaOf(int index) const {
  return has(index) ? areaOfBox(boxes_[static_cast<std::size_t>(index)]) : QRectF();
}

void MarksEditor::select(int index) {
  selected_ = has(index) ? index : -1;
  row_ = {};
}

void MarksEditor::remember(const Row& row) {
  const bool continues = row.kind != Row::Kind::none && row == row_;
  row_ = row;
  future_.clear();
  if (continues) return;
  past_.push_back({boxes_, selected_});
  if (past_.size() > mostSteps) past_.erase(past_.begin());
}

void MarksEditor::give(int index, const QRectF& area) {
  core::MarkupBox& box = boxes_[static_cast<std::size_t>(index)];
  box = {area.x(), area.y(), area.width(), area.height(), box.note};
}

int MarksEditor::add(const QRectF& area) {
  const QRectF fitted = onPixels(area, picture_);
  if (fitted.isEmpty()) return -1;
  remember();
  boxes_.push_back({fitted.x(), fitted.y(), fitted.width(), fitted.height(), QString()});
  selected_ = count() - 1;
  return selected_;
}

void MarksEditor::place(int index, const QRectF& area) {
  const QRectF fitted = onPixels(area, picture_);
  if (!has(index) || fitted.isEmpty() || fitted == areaOf(index)) return;
  remember();
  give(index, fitted);
  selected_ = index;
}

void MarksEditor::nudge(int index, QPoint pixels) {
  if (!has(index) || picture_.isEmpty()) return;
  const QPointF by(double(pixels.x()) / picture_.width(), double(pixels.y()) / picture_.height());
  const QRectF moved = onPixels(movedInside(areaOf(index).translated(by)), picture_);
  if (moved.isEmpty() || moved == areaOf(index)) return;
  remember(Row{Row::Kind::nudge, index});
  give(index, moved);
}

void MarksEditor::stretch(int index, QPoint pixels) {
  if (!has(index) || picture_.isEmpty()) return;
  QRectF area = areaOf(index);
  const double pixelWidth = 1.0 / picture_.width();
  const double pixelHeight = 1.0 / picture_.height();
  area.setWidth(std::max(pixelWidth, area.width() + pixels.x() * pixelWidth));
  area.setHeight(std::max(pixelHeight, area.height() + pixels.y() * pixelHeight));
  const QRectF fitted = onPixels(area, picture_);
  if (fitted.isEmpty() || fitted == areaOf(index)) return;
  remember(Row{Row::Kind::stretch, index});
  give(index, fitted);
}

void MarksEditor::setNote(int index, const QString& note) {
  if (!has(index) || boxes_[static_cast<std::size_t>(index)].note == note) return;
  remember(Row{Row::Kind::note, index});
  boxes_[static_cast<std::size_t>(index)].note = note;
}

void MarksEditor::remove(int index) {
  if (!has(index)) return;
  remember();
  boxes_.erase(boxes_.begin() + index);
  if (selected_ == index)
    selected_ = std::min(index, count() - 1);
  else if (selected_ > index)
    --selected_;
}

void MarksEditor::clear() {
  if (boxes_.empty()) return;
  remember();
  boxes_.clear();
  selected_ = -1;
}

void MarksEditor::travel(std::vector<Moment>& from, std::vector<Moment>& to) {
  if (from.empty()) return;
  to.push_back({std::move(boxes_), selected_});
  boxes_ = std::move(from.back().boxes);
  selected_ = from.back().selected;
  from.pop_back();
  row_ = {};
}

void MarksEditor::undo() { travel(past_, future_); }
void MarksEditor::redo() { travel(future_, past_); }

}  // namespace sorvan::shell
