// Mouse and keys over the marks.
#include <QKeyEvent>
#include <QMouseEvent>

#include "shell/views/asset_view.h"
#include "shell/views/mark_layer.h"

namespace sorvan::views {

namespace {

constexpr double kReach = 6;        // pixels around a handle or an edge
constexpr double kSmallestDrag = 4;  // shorter is a click
constexpr int kLongStep = 10;        // pixels of the picture

// The keys that belong to the marks, so that no shortcut of the window takes them while the layer has the keyboard.
bool isOwnKey(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
      return !event.modifiers().testFlag(Qt::AltModifier);
    case Qt::Key_Z:
      return true;
    case Qt::Key_Y:
      return event.modifiers().testFlag(Qt::ControlModifier);
    default:
      return false;
  }
}

Qt::CursorShape cursorOf(Qt::Edges edges) {
  const bool across = edges & (Qt::LeftEdge | Qt::RightEdge);
  const bool upright = edges & (Qt::TopEdge | Qt::BottomEdge);
  if (across && upright) {
    const bool falling = edges == (Qt::LeftEdge | Qt::TopEdge) || edges == (Qt::RightEdge | Qt::BottomEdge);
    return falling ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
  }
  return across ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

QPoint directionOf(int key) {
  switch (key) {
    case Qt::Key_Left:
      return {-1, 0};
    case Qt::Key_Right:
      return {1, 0};
    case Qt::Key_Up:
      return {0, -1};
    case Qt::Key_Down:
      return {0, 1};
    default:
      return {};
  }
}

}  // namespace

// Of the selected box only, whose handles can be seen.
Qt::Edges MarkLayer::handleAt(QPointF point) const {
  const int selected = marking_.marks().selected();
  if (selected < 0) return {};
  const QRectF area = placeOf(selected);
  const auto near = [](double a, double b) { return std::abs(a - b) <= kReach; };
  const bool inside = area.adjusted(-kReach, -kReach, kReach, kReach).contains(point);
  if (!inside) return {};
  Qt::Edges edges;
  if (near(point.x(), area.left())) edges |= Qt::LeftEdge;
  if (near(point.x(), area.right()) && !(edges & Qt::LeftEdge)) edges |= Qt::RightEdge;
  if (near(point.y(), area.top())) edges |= Qt::TopEdge;
  if (near(point.y(), area.bottom()) && !(edges & Qt::TopEdge)) edges |= Qt::BottomEdge;
  return edges;
}

// The selected box comes first, then the smallest, so that a box inside another can be reached.
int MarkLayer::boxAt(QPointF point) const {
  const MarksEditor& marks = marking_.marks();
  if (marks.selected() >= 0 && placeOf(marks.selected()).contains(point)) return marks.selected();
  int best = -1;
  double smallest = 0;
  for (int index = 0; index < marks.count(); ++index) {
    const QRectF area = placeOf(index).adjusted(-kReach / 2, -kReach / 2, kReach / 2, kReach / 2);
    const double size = area.width() * area.height();
    if (!area.contains(point) || (best >= 0 && size >= smallest)) continue;
    best = index;
    smallest = size;
  }
  return best;
}

MarkLayer::Grip MarkLayer::gripAt(QPointF point) const {
  if (const Qt::Edges edges = handleAt(point)) return {Grip::Kind::resize, marking_.marks().selected(), edges};
  const int box = boxAt(point);
  return box >= 0 ? Grip{Grip::Kind::move, box, {}} : Grip{Grip::Kind::draw, -1, {}};
}

// What the drag makes of the picture's area, in fractions; empty while it is no more than a click.
QRectF MarkLayer::draggedArea() const {
  const QPointF from = toPicture(pressed_);
  const QPointF to = toPicture(now_);
  const QPointF travelled = now_ - pressed_;
  const MarksEditor& marks = marking_.marks();
  if (grip_.kind == Grip::Kind::draw) {
    if (std::abs(travelled.x()) < kSmallestDrag || std::abs(travelled.y()) < kSmallestDrag) return {};
    return MarksEditor::onPixels(QRectF(from, to).normalized(), marks.picture());
  }
  QRectF area = marks.areaOf(grip_.index);
  if (grip_.kind == Grip::Kind::move)
    return MarksEditor::onPixels(MarksEditor::movedInside(area.translated(to - from)), marks.picture());
  if (grip_.edges & Qt::LeftEdge) area.setLeft(area.left() + to.x() - from.x());
  if (grip_.edges & Qt::RightEdge) area.setRight(area.right() + to.x() - from.x());
  if (grip_.edges & Qt::TopEdge) area.setTop(area.top() + to.y() - from.y());
  if (grip_.edges & Qt::BottomEdge) area.setBottom(area.bottom() + to.y() - from.y());
  return MarksEditor::onPixels(area.normalized(), marks.picture());
}

void MarkLayer::showCursor(const Grip& grip) {
  if (grip.kind == Grip::Kind::resize) return setCursor(cursorOf(grip.edges));
  setCursor(grip.kind == Grip::Kind::move ? Qt::SizeAllCursor : Qt::CrossCursor);
}

void MarkLayer::mousePressEvent(QMouseEvent* event) {
  setFocus(Qt::MouseFocusReason);
  pressed_ = now_ = event->position();
  if (event->button() == Qt::MiddleButton) {
    grip_ = {Grip::Kind::pan, -1, {}};
    return;
  }
  if (event->button() != Qt::LeftButton) return;
  grip_ = gripAt(pressed_);
  if (grip_.kind == Grip::Kind::move) marking_.select(grip_.index);
  update();
}

void MarkLayer::mouseMoveEvent(QMouseEvent* event) {
  if (grip_.kind == Grip::Kind::none) return showCursor(gripAt(event->position()));
  if (grip_.kind == Grip::Kind::pan) canvas_.panBy(event->position() - now_);
  now_ = event->position();
  update();
}

void MarkLayer::mouseReleaseEvent(QMouseEvent* event) {
  now_ = event->position();
  const Grip grip = grip_;
  const QRectF area = grip.kind == Grip::Kind::none || grip.kind == Grip::Kind::pan ? QRectF() : draggedArea();
  grip_ = {};
  update();
  if (grip.kind == Grip::Kind::draw && area.isEmpty()) return marking_.select(-1);
  if (grip.kind == Grip::Kind::draw) {
    marking_.add(area);
  } else if (!area.isEmpty() && now_ != pressed_) {
    marking_.place(grip.index, area);
  }
  showCursor(gripAt(now_));
}

void MarkLayer::mouseDoubleClickEvent(QMouseEvent* event) {
  const int box = boxAt(event->position());
  if (box >= 0) Q_EMIT noteRequested(box);
}

void MarkLayer::wheelEvent(QWheelEvent* event) {
  if (event->modifiers().testFlag(Qt::ControlModifier)) return event->ignore();  // the canvas zooms
  canvas_.panBy(QPointF(event->angleDelta()) / 2);
  event->accept();
}

void MarkLayer::giveUpDrag() {
  grip_ = {};
  update();
}

bool MarkLayer::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && isOwnKey(*static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  return QWidget::event(event);
}

bool MarkLayer::moveByKey(QKeyEvent* event) {
  const QPoint direction = directionOf(event->key());
  if (direction.isNull() || event->modifiers().testFlag(Qt::AltModifier)) return false;
  const QPoint step = direction * (event->modifiers().testFlag(Qt::ShiftModifier) ? kLongStep : 1);
  if (event->modifiers().testFlag(Qt::ControlModifier))
    marking_.stretch(step);
  else
    marking_.nudge(step);
  return true;
}

bool MarkLayer::editByKey(QKeyEvent* event) {
  const bool control = event->modifiers().testFlag(Qt::ControlModifier);
  const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
  if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace)
    marking_.remove(marking_.marks().selected());
  else if (control && ((event->key() == Qt::Key_Z && shift) || event->key() == Qt::Key_Y))
    marking_.redo();
  else if (control && event->key() == Qt::Key_Z)
    marking_.undo();
  else
    return false;
  return true;
}

void MarkLayer::keyPressEvent(QKeyEvent* event) {
  if (moveByKey(event) || editByKey(event)) return;
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return marking_.done();
    case Qt::Key_Escape:
      return grip_.kind != Grip::Kind::none ? giveUpDrag() : marking_.leave();
    case Qt::Key_Z:
      return canvas_.toggleFit();
    default:
      QWidget::keyPressEvent(event);
  }
}

// Tab visits the boxes and goes on behind the last one.
bool MarkLayer::focusNextPrevChild(bool next) {
  const MarksEditor& marks = marking_.marks();
  const int to = marks.selected() < 0 && !next ? marks.count() - 1 : marks.selected() + (next ? 1 : -1);
  if (hasFocus() && to >= 0 && to < marks.count()) {
    marking_.select(to);
    return true;
  }
  return QWidget::focusNextPrevChild(next);
}

}  // namespace sorvan::views
