#include "shell/views/pane_handle.h"

#include <QMouseEvent>

namespace sorvan::views {

PaneHandle::PaneHandle(QWidget* parent) : QWidget(parent) {
  setCursor(Qt::SplitHCursor);
  setFocusPolicy(Qt::NoFocus);
}

void PaneHandle::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) grabbedAt_ = qRound(event->globalPosition().x());
}

// The panel moves by as much, so the hold stays where it was taken.
void PaneHandle::mouseMoveEvent(QMouseEvent* event) {
  if (grabbedAt_) Q_EMIT dragged(qRound(event->globalPosition().x()) - *grabbedAt_);
}

void PaneHandle::mouseReleaseEvent(QMouseEvent*) {
  if (std::exchange(grabbedAt_, std::nullopt)) Q_EMIT released();
}

void PaneHandle::mouseDoubleClickEvent(QMouseEvent*) { Q_EMIT resetRequested(); }

}  // namespace sorvan::views
