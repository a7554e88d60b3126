// What the keys do on the wall.
#include <QKeyEvent>
#include <QScrollBar>

#include "shell/views/media_wall.h"

namespace sorvan::views {

void MediaWall::makeCurrent(int index) {
  if (index < 0 || index >= source_.count()) return;
  current_ = source_.idAt(index);
  currentPlace_ = index;
  if (hasFocus()) announceCurrentRow(*this, index);
  viewport()->update();
}

// What came or went moves the current cell along with its neighbours; when it went itself, the one that took its place
// is the current one, so that the arrows go on from there.
void MediaWall::holdCurrent() {
  if (current_.isNull()) return;
  const int index = source_.indexOf(current_);
  if (index >= 0)
    currentPlace_ = index;
  else if (source_.count() > 0)
    current_ = source_.idAt(std::clamp(currentPlace_, 0, source_.count() - 1));
}

int MediaWall::currentIndex() const { return source_.indexOf(current_); }

// What is looked at is what is selected; a cell that only the keyboard stands on is selected first.
void MediaWall::requestQuickLook(int index) {
  if (selection_.isEmpty()) request({source_.idAt(index)});
  Q_EMIT quickLookRequested();
}

// The cell a screen further, nearest to the middle of the one where the keyboard stands.
int MediaWall::pageFrom(int index, int direction) const {
  const int page = std::max(1, viewport()->height() - bottomInset_);
  const QPointF from = layout_.rectOf(index).center();
  return layout_.nearest({from.x(), std::clamp(from.y() + direction * page, 0.0, layout_.height())});
}

int MediaWall::neighbourOf(int index, int key) const {
  const int last = source_.count() - 1;
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
      return pageFrom(index, -1);
    case Qt::Key_PageDown:
      return pageFrom(index, +1);
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

bool MediaWall::keyMoves(QKeyEvent* event) {
  if (source_.count() == 0 || event->modifiers().testFlag(Qt::AltModifier)) return false;
  const int known = currentIndex();
  const int next = neighbourOf(std::max(0, known), event->key());
  if (next < 0) return false;
  const bool jumps = event->key() == Qt::Key_Home || event->key() == Qt::Key_End;
  moveCurrent(known < 0 && !jumps ? 0 : next, event->modifiers());
  return true;
}

void MediaWall::openMenuByKey() {
  const int known = currentIndex();
  const bool over = known >= 0 && !selection_.isEmpty();
  const QPoint place = over ? cellRect(known).center() : viewport()->rect().center();
  Q_EMIT menuRequested(viewport()->mapToGlobal(place));
}

bool MediaWall::keyActs(QKeyEvent* event) {
  const int known = currentIndex();
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (known >= 0) Q_EMIT opened(current_);
      return known >= 0;
    case Qt::Key_Space:
      if (known < 0) return false;
      event->modifiers().testFlag(Qt::ControlModifier) ? toggle(known) : requestQuickLook(known);
      return true;
    case Qt::Key_Escape:
      if (selection_.isEmpty())
        Q_EMIT escapePressed();
      else
        request({});
      return true;
    default:
      return false;
  }
}

void MediaWall::keyPressEvent(QKeyEvent* event) {
  if (keyMoves(event) || keyActs(event)) return;
  if (event->matches(QKeySequence::SelectAll) && source_.count() > 0) return selectRange(0, source_.count() - 1);
  QAbstractScrollArea::keyPressEvent(event);
}

void MediaWall::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  if (currentIndex() < 0 && source_.count() > 0) current_ = source_.idAt(0);
  const int index = currentIndex();
  if (index >= 0) announceCurrentRow(*this, index);
  viewport()->update();
}

void MediaWall::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  viewport()->update();
}

}  // namespace sorvan::views
