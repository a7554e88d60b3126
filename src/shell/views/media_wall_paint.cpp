// What the wall looks like, and which pictures it needs for that.
#include <QLinearGradient>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include "shell/views/focus_ring.h"
#include "shell/views/job_cell.h"
#include "shell/views/media_wall.h"
#include "shell/views/painting.h"

namespace sorvan::views {

namespace {

constexpr int kFrame = 40;        // milliseconds between two pictures of what moves
constexpr int kMostWanted = 230;  // cells, those around the screen included
constexpr int kHeadText = 18;     // pixels
constexpr int kHeadGap = 8;       // between a heading and its count
constexpr int kFade = 30;         // how far the wall fades above what floats over its foot

// What floats over the foot of the wall stands on the canvas, not on cut pictures.
void paintFade(QPainter& painter, const QRect& area, int inset) {
  if (inset == 0) return;
  QLinearGradient fade(area.topLeft(), area.bottomLeft());
  QColor canvas = colors().surfaceCanvas;
  fade.setColorAt(0.7, canvas);
  fade.setColorAt(1, canvas);
  canvas.setAlpha(0);
  fade.setColorAt(0, canvas);
  painter.fillRect(area, fade);
}

PictureFiles filesOf(const GalleryCell& cell) {
  return {cell.thumbnailPath, cell.filePath, cell.kind == CellKind::image, cell.inTrash};
}

bool movesIn(const GalleryCell& cell) {
  return cell.kind == CellKind::job ? isMoving(cell.job) : !cell.workText.isEmpty();
}

}  // namespace

void MediaWall::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.fillRect(event->rect(), colors().surfaceCanvas);
  if (source_.count() == 0) return;
  if (std::exchange(picturesWanted_, false)) wantPictures();
  paintHeads(painter);
  const bool moves = paintCells(painter, event->rect());
  paintRubber(painter);
  paintFade(painter, QRect(0, viewport()->height() - bottomInset_ - kFade, viewport()->width(), bottomInset_ + kFade),
            bottomInset_);
  const bool turn = moves && !Theme::instance().reducedMotion();
  if (turn && !motion_.isActive()) motion_.start(kFrame);
  if (!turn) motion_.stop();
}

// True while a job in view is at work, in its own cell or on an item.
bool MediaWall::paintCells(QPainter& painter, const QRect& exposed) {
  const auto [first, end] = visibleRange();
  bool moves = false;
  for (int index = first; index < std::min(end, source_.count()); ++index) {
    moves = moves || movesIn(cellAt(index));
    if (cellRect(index).adjusted(-4, -4, 4, 4).intersects(exposed)) paintCell(painter, index);
  }
  return moves;
}

void MediaWall::paintHeads(QPainter& painter) const {
  const double top = verticalScrollBar()->value();
  const auto [first, end] = layout_.headRange(top, top + viewport()->height());
  const std::vector<WallSection>& sections = source_.sections();
  for (int number = first; number < std::min(end, static_cast<int>(sections.size())); ++number) {
    const WallHead& head = layout_.heads()[static_cast<size_t>(number)];
    const WallSection& section = sections[static_cast<size_t>(number)];
    const int left = metrics().galleryPad;
    // The words stand in the upper part of the head, a little into the padding at the top of the wall.
    const int foot = qRound(head.top + head.height - top) - metrics().gallerySectionHeader;
    const QRect line(left, foot, viewport()->width() - 2 * left, kHeadText);
    const int words = paintText(painter, line, {section.title, fontFor(Type::body, Weight::semibold), colors().textPrimary});
    paintText(painter, line.adjusted(words + kHeadGap, 0, 0, 0),
              {section.countText, fontFor(Type::small), colors().textTertiary});
  }
}

void MediaWall::paintRubber(QPainter& painter) const {
  if (rubberBand_.isNull()) return;
  paintPanel(painter, rubberBand_.translated(0, -verticalScrollBar()->value()), 2, colors().accentSoft,
             colors().accentRing);
}

void MediaWall::paintCell(QPainter& painter, int index) {
  const GalleryCell& cell = cellAt(index);
  const QRect area = cellRect(index);
  const CellLook look = lookOf(index, cell);
  const auto over = std::find_if(overlays_.begin(), overlays_.end(),
                                 [&cell](const CellOverlay* overlay) { return overlay->cell() == cell.id; });
  if (over != overlays_.end())
    (*over)->paint(painter, area, cell, look);
  else
    paintMediaCell(painter, area, cell, look);
  paintCellRings(painter, area, look);
}

CellLook MediaWall::lookOf(int index, const GalleryCell& cell) {
  CellLook look;
  look.selected = selection_.contains(cell.id);
  look.several = selection_.size() > 1;
  look.keyboardCurrent = cell.id == current_ && hasFocus() && FocusRing::keyboardInUse();
  look.hovered = index == hovered_;
  look.hoveredPart = look.hovered ? hoveredPart_ : CellPart::none;
  if (cell.kind != CellKind::job) look.thumbnail = thumbnails_.fitted(filesOf(cell));
  return look;
}

int MediaWall::placeholders() const {
  const auto [first, end] = visibleRange();
  int count = 0;
  for (int index = first; index < std::min(end, source_.count()); ++index) {
    const bool item = !source_.isJobAt(index);
    if (item && thumbnails_.fitted(filesOf(cellAt(index))).state == ThumbnailStore::State::loading) ++count;
  }
  return count;
}

QPixmap MediaWall::pictureOf(int index) const { return thumbnails_.fitted(filesOf(cellAt(index))).picture; }

// The screen first, then a screen in the direction of the last move, then one behind.
void MediaWall::wantPictures() {
  std::vector<ThumbnailStore::Wish> wishes;
  const double top = verticalScrollBar()->value();
  const double height = viewport()->height();
  const auto [first, end] = layout_.range(top, top + height);
  const int behind = layout_.range(top - height, top).first;
  const int ahead = layout_.range(top + height, top + 2 * height).second;
  addWishes(wishes, first, end);
  addWishes(wishes, direction_ > 0 ? end : behind, direction_ > 0 ? ahead : first);
  addWishes(wishes, direction_ > 0 ? behind : end, direction_ > 0 ? first : ahead);
  thumbnails_.want(this, wishes);
}

void MediaWall::addWishes(std::vector<ThumbnailStore::Wish>& wishes, int first, int end) const {
  const double dpr = devicePixelRatioF();
  for (int index = first; index < std::min(end, source_.count()) && wishes.size() < kMostWanted; ++index) {
    if (source_.isJobAt(index)) continue;
    const QSizeF size = QSizeF(cellRect(index).size()) * dpr;
    wishes.push_back({filesOf(cellAt(index)), size.toSize(), dpr});
  }
}

void MediaWall::repaintMoving() {
  const auto [first, end] = visibleRange();
  for (int index = first; index < std::min(end, source_.count()); ++index) {
    if (movesIn(cellAt(index))) viewport()->update(cellRect(index));
  }
}

}  // namespace sorvan::views
