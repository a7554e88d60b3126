// What the pointer and the keys do on the wall.
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include "shell/views/job_cell.h"
#include "shell/views/media_wall.h"
#include "shell/views/texts.h"

namespace sorvan::views {

namespace {

QPoint positionOf(const QMouseEvent* event) { return event->position().toPoint(); }

}  // namespace

void MediaWall::request(const QSet<QUuid>& selection) {
  if (selection != selection_) Q_EMIT selectionRequested(selection);
}

void MediaWall::makeCurrent(int index) {
  if (index < 0 || index >= source_.count()) return;
  current_ = source_.idAt(index);
  if (hasFocus()) announceCurrentRow(*this, index);
  viewport()->update();
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

// A press on × cancels what runs and puts away what has ended.
void MediaWall::pressPart(int index, CellPart part) {
  const GalleryCell cell = source_.cellAt(index);
  switch (part) {
    case CellPart::selectCircle:
      makeCurrent(index);
      return toggle(index);
    case CellPart::action:
      Q_EMIT jobActionRequested(cell.id, cell.job.action);
      return;
    case CellPart::details:
      request({cell.id});
      return;
    case CellPart::dismiss:
      if (cell.job.action == JobAction::cancel)
        Q_EMIT jobActionRequested(cell.id, JobAction::cancel);
      else
        Q_EMIT jobDismissed(cell.id);
      return;
    case CellPart::body:
    case CellPart::none:
      return;
  }
}

void MediaWall::mousePressEvent(QMouseEvent* event) {
  const QPoint point = positionOf(event);
  const int index = indexAt(point);
  if (event->button() == Qt::LeftButton && index >= 0) {
    const CellPart part = partAt(cellRect(index), source_.cellAt(index), point);
    if (part == CellPart::body)
      click(index, event->modifiers());
    else
      pressPart(index, part);
  } else if (event->button() == Qt::LeftButton) {
    rubberFrom_ = point + QPoint(0, verticalScrollBar()->value());
    if (!(event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier))) request({});
  } else if (event->button() == Qt::RightButton && index >= 0 && !rowSelected(index)) {
    click(index, Qt::NoModifier);
  }
}

void MediaWall::mouseMoveEvent(QMouseEvent* event) {
  if (rubberFrom_)
    rubber(positionOf(event));
  else
    hover(positionOf(event));
}

void MediaWall::mouseReleaseEvent(QMouseEvent*) {
  rubberFrom_.reset();
  rubberBand_ = {};
  viewport()->update();
}

void MediaWall::mouseDoubleClickEvent(QMouseEvent* event) {
  const int index = indexAt(positionOf(event));
  if (event->button() != Qt::LeftButton || index < 0) return;
  const CellPart part = partAt(cellRect(index), source_.cellAt(index), positionOf(event));
  if (part == CellPart::body) Q_EMIT opened(source_.idAt(index));
}

void MediaWall::contextMenuEvent(QContextMenuEvent* event) {
  if (!selection_.isEmpty()) Q_EMIT menuRequested(event->globalPos());
}

void MediaWall::rubber(QPoint to) {
  rubberBand_ = QRect(*rubberFrom_, to + QPoint(0, verticalScrollBar()->value())).normalized();
  QSet<QUuid> cells;
  const auto [first, end] = layout_.range(rubberBand_.top(), rubberBand_.bottom());
  for (int index = first; index < end; ++index) {
    if (layout_.rectOf(index).intersects(rubberBand_)) cells.insert(source_.idAt(index));
  }
  request(cells);
  viewport()->update();
}

void MediaWall::hover(QPoint point) {
  const int index = indexAt(point);
  const CellPart part = index >= 0 ? partAt(cellRect(index), source_.cellAt(index), point) : CellPart::none;
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

// What is looked at is what is selected; a cell that only the keyboard stands on is selected first.
void MediaWall::requestQuickLook(int index) {
  if (selection_.isEmpty()) request({source_.idAt(index)});
  Q_EMIT quickLookRequested();
}

bool MediaWall::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave) hover(QPoint(-1, -1));
  return QAbstractScrollArea::viewportEvent(event);
}

int MediaWall::neighbourOf(int index, int key) const {
  const int last = source_.count() - 1;
  const int page = std::max(1, viewport()->height() / std::max(1, rowHeight_));
  int at = index;
  switch (key) {
    case Qt::Key_Left:
      return std::max(0, index - 1);
    case Qt::Key_Right:
      return std::min(last, index + 1);
    case Qt::Key_Up:
      return layout_.verticalNeighbour(index, -1);
    case Qt::Key_Down:
      return layout_.verticalNeighbour(index, +1);
    case Qt::Key_Home:
      return 0;
    case Qt::Key_End:
      return last;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      for (int row = 0; row < page; ++row) at = layout_.verticalNeighbour(at, key == Qt::Key_PageUp ? -1 : +1);
      return at;
    default:
      return -1;
  }
}

void MediaWall::moveCurrent(int to, Qt::KeyboardModifiers modifiers) {
  if (modifiers.testFlag(Qt::ControlModifier))
    makeCurrent(to);
  else
    click(to, modifiers & Qt::ShiftModifier);
  scrollTo(to);
}

void MediaWall::keyPressEvent(QKeyEvent* event) {
  const int known = source_.indexOf(current_);
  const int now = known >= 0 ? known : (source_.count() > 0 ? 0 : -1);
  const int next = now < 0 ? -1 : (known < 0 ? now : neighbourOf(now, event->key()));
  const bool moves = neighbourOf(0, event->key()) >= 0;
  if (moves && next >= 0) return moveCurrent(next, event->modifiers());
  if (event->matches(QKeySequence::SelectAll) && now >= 0) return selectRange(0, source_.count() - 1);
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (known < 0) break;
      Q_EMIT opened(current_);
      return;
    case Qt::Key_Space:
      if (known < 0) break;
      if (event->modifiers().testFlag(Qt::ControlModifier))
        toggle(known);
      else
        requestQuickLook(known);
      return;
    case Qt::Key_Escape:
      if (selection_.isEmpty())
        Q_EMIT escapePressed();
      else
        request({});
      return;
    case Qt::Key_Menu:
      if (known >= 0 && !selection_.isEmpty()) Q_EMIT menuRequested(viewport()->mapToGlobal(cellRect(known).center()));
      return;
    default:
      break;
  }
  QAbstractScrollArea::keyPressEvent(event);
}

void MediaWall::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  if (source_.indexOf(current_) < 0 && source_.count() > 0) current_ = source_.idAt(0);
  const int index = source_.indexOf(current_);
  if (index >= 0) announceCurrentRow(*this, index);
  viewport()->update();
}

void MediaWall::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  viewport()->update();
}

}  // namespace sorvan::views
