// What the pointer does on the wall.
#include <QApplication>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>

#include "shell/item_transfer.h"
#include "shell/views/drop_frame.h"
#include "shell/views/media_wall.h"

namespace sorvan::views {

namespace {

constexpr int kFastestRubber = 60;  // pixels of scrolling a step, however far the pointer is outside

QPoint positionOf(const QMouseEvent* event) { return event->position().toPoint(); }

}  // namespace

void MediaWall::request(const QSet<QUuid>& selection) {
  if (selection != selection_) Q_EMIT selectionRequested(selection);
}

void MediaWall::selectRange(int from, int to) {
  QSet<QUuid> cells;
  for (int index = std::min(from, to); index <= std::max(from, to); ++index) cells.insert(source_.idAt(index));
  request(cells);
}

void MediaWall::toggle(int index) {
  QSet<QUuid> cells = selection_;
  const QUuid id = source_.idAt(index);
  if (!cells.remove(id)) cells.insert(id);
  request(cells);
}

void MediaWall::click(int index, Qt::KeyboardModifiers modifiers) {
  makeCurrent(index);
  const int anchor = source_.indexOf(anchor_);
  if (modifiers.testFlag(Qt::ShiftModifier) && anchor >= 0) return selectRange(anchor, index);
  anchor_ = source_.idAt(index);
  if (modifiers.testFlag(Qt::ControlModifier)) return toggle(index);
  request({source_.idAt(index)});
}

void MediaWall::pressPart(int index, CellPart part) {
  const GalleryCell cell = cellAt(index);
  switch (part) {
    case CellPart::selectCircle:
      makeCurrent(index);
      return toggle(index);
    case CellPart::heart:
      Q_EMIT favoriteToggled(cell.id);
      return;
    case CellPart::play:
      Q_EMIT playPressed(cell.id);
      return;
    case CellPart::more:
      if (!selection_.contains(cell.id)) click(index, Qt::NoModifier);
      Q_EMIT menuRequested(viewport()->mapToGlobal(cellRect(index).topRight() + QPoint(-32, 34)));
      return;
    case CellPart::action:
    case CellPart::details:
    case CellPart::dismiss:
      return pressJobPart(cell, part);
    case CellPart::body:
    case CellPart::none:
      return;
  }
}

// A press on × cancels what runs and puts away what has ended.
void MediaWall::pressJobPart(const GalleryCell& cell, CellPart part) {
  if (part == CellPart::details) return request({cell.id});
  if (part == CellPart::action)
    Q_EMIT jobActionRequested(cell.id, cell.job.action);
  else if (cell.job.action == JobAction::cancel)
    Q_EMIT jobActionRequested(cell.id, JobAction::cancel);
  else
    Q_EMIT jobDismissed(cell.id);
}

void MediaWall::pressLeft(QPoint point, Qt::KeyboardModifiers modifiers) {
  const int index = indexAt(point);
  const bool adds = modifiers.testFlag(Qt::ControlModifier) || modifiers.testFlag(Qt::ShiftModifier);
  if (index < 0) {
    rubber_ = Rubber{point + QPoint(0, verticalScrollBar()->value()), point, adds ? selection_ : QSet<QUuid>()};
    if (!adds) request({});
    return;
  }
  const CellPart part = partAt(cellRect(index), cellAt(index), point);
  if (part != CellPart::body) return pressPart(index, part);
  // One of several selected cells may be where a drag of all of them begins; a mere click selects it at its end.
  const bool kept = !adds && selection_.size() > 1 && rowSelected(index);
  press_ = Press{point, kept};
  if (kept)
    makeCurrent(index);
  else
    click(index, modifiers);
}

void MediaWall::mousePressEvent(QMouseEvent* event) {
  const QPoint point = positionOf(event);
  if (event->button() == Qt::LeftButton) return pressLeft(point, event->modifiers());
  if (event->button() != Qt::RightButton) return event->ignore();
  const int index = indexAt(point);
  if (index < 0)
    request({});
  else if (!rowSelected(index))
    click(index, Qt::NoModifier);
}

void MediaWall::mouseMoveEvent(QMouseEvent* event) {
  const QPoint point = positionOf(event);
  if (rubber_) {
    rubber_->to = point;
    const bool outside = point.y() < 0 || point.y() > viewport()->height();
    if (outside && !rubberScroll_.isActive()) rubberScroll_.start();
    return rubber();
  }
  if (press_) return maybeDrag(point);
  hover(point);
}

// Whoever drags runs until the drag is over; then the button is up again.
void MediaWall::maybeDrag(QPoint point) {
  if ((point - press_->at).manhattanLength() < QApplication::startDragDistance()) return;
  const int index = indexAt(press_->at);
  press_.reset();
  if (index >= 0 && rowSelected(index)) Q_EMIT dragRequested();
}

void MediaWall::mouseReleaseEvent(QMouseEvent* event) {
  if (press_ && press_->kept) {
    const int index = indexAt(positionOf(event));
    if (index >= 0) click(index, Qt::NoModifier);
  }
  press_.reset();
  rubber_.reset();
  rubberScroll_.stop();
  rubberBand_ = {};
  viewport()->update();
}

void MediaWall::mouseDoubleClickEvent(QMouseEvent* event) {
  const int index = indexAt(positionOf(event));
  if (event->button() != Qt::LeftButton || index < 0) return;
  const CellPart part = partAt(cellRect(index), cellAt(index), positionOf(event));
  if (part == CellPart::body) Q_EMIT opened(source_.idAt(index));
}

void MediaWall::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Keyboard) return openMenuByKey();
  Q_EMIT menuRequested(event->globalPos());
}

void MediaWall::rubber() {
  const int top = verticalScrollBar()->value();
  rubberBand_ = QRect(rubber_->from, rubber_->to + QPoint(0, top)).normalized();
  QSet<QUuid> cells = rubber_->base;
  const auto [first, end] = layout_.range(rubberBand_.top(), rubberBand_.bottom());
  for (int index = first; index < end; ++index) {
    if (layout_.rectOf(index).intersects(rubberBand_)) cells.insert(source_.idAt(index));
  }
  request(cells);
  viewport()->update();
}

// The farther the pointer is outside, the faster the wall runs after it.
void MediaWall::scrollForRubber() {
  if (!rubber_) return rubberScroll_.stop();
  const int y = rubber_->to.y();
  const int beyond = y < 0 ? y : std::max(0, y - viewport()->height());
  if (beyond == 0) return rubberScroll_.stop();
  QScrollBar* bar = verticalScrollBar();
  bar->setValue(bar->value() + std::clamp(beyond, -kFastestRubber, kFastestRubber));
  rubber();
}

void MediaWall::hover(QPoint point) {
  const int index = indexAt(point);
  const CellPart part = index >= 0 ? partAt(cellRect(index), cellAt(index), point) : CellPart::none;
  if (index == hovered_ && part == hoveredPart_) return;
  if (hovered_ >= 0) viewport()->update(cellRect(hovered_));
  const bool another = index != hovered_;
  hovered_ = index;
  hoveredPart_ = part;
  if (hovered_ >= 0) viewport()->update(cellRect(hovered_));
  if (another) Q_EMIT cellHovered(index >= 0 ? source_.idAt(index) : QUuid(), index >= 0 ? cellRect(index) : QRect());
}

void MediaWall::leaveHovered() {
  if (hovered_ < 0) return;
  hovered_ = -1;
  Q_EMIT cellHovered({}, {});
}

bool MediaWall::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave) hover(QPoint(-1, -1));
  return QAbstractScrollArea::viewportEvent(event);
}

// Files of other programs are taken for the sake of what is said about them; the program's own items stay where they
// are.
void MediaWall::dragEnterEvent(QDragEnterEvent* event) { dragMoveEvent(event); }

void MediaWall::dragMoveEvent(QDragMoveEvent* event) {
  if (!filesFromOutside(*event->mimeData()).isEmpty()) {
    event->setDropAction(Qt::CopyAction);
    event->accept();
    frame_->open();
  } else {
    event->ignore();
  }
}

void MediaWall::dragLeaveEvent(QDragLeaveEvent*) { frame_->hide(); }

void MediaWall::dropEvent(QDropEvent* event) {
  frame_->hide();
  const QList<QUrl> files = filesFromOutside(*event->mimeData());
  if (files.isEmpty()) return event->ignore();
  event->setDropAction(Qt::CopyAction);
  event->accept();
  Q_EMIT filesDropped(files);
}

}  // namespace sorvan::views
