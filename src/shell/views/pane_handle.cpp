#include "shell/views/pane_handle.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "shell/views/accessible_value.h"
#include "shell/views/focus_ring.h"
#include "shell/views/painting.h"
#include "shell/views/wall_texts.h"

namespace sorvan::views {

namespace {
constexpr int kStep = 16;
constexpr int kLeap = 64;
constexpr int kLine = 3;
}  // namespace

PaneHandle::PaneHandle(const QString& name, Panel panel, QWidget* parent) : QWidget(parent), panel_(panel) {
  setCursor(Qt::SplitHCursor);
  setAttribute(Qt::WA_Hover);
  setFocusPolicy(Qt::TabFocus);
  setProperty(ownFocusProperty, true);
  setAccessibleName(name);
  setAccessibleDescription(texts::panelEdgeKeys());
  giveValue(*this, {[this] { return pane_.now; }, [this](int pixels) { widenTo(pixels); },
                    [this] { return std::pair(pane_.least, pane_.most); }, kStep});
}

void PaneHandle::setPaneWidth(const PaneWidth& pane) {
  const bool another = pane.now != pane_.now;
  pane_ = pane;
  if (another && hasFocus()) announceValue(*this);
}

void PaneHandle::widenTo(int pixels) {
  const int wider = std::clamp(pixels, pane_.least, pane_.most) - pane_.now;
  Q_EMIT dragged(panel_ == Panel::left ? wider : -wider);
  Q_EMIT released();
}

void PaneHandle::keyPressEvent(QKeyEvent* event) {
  const int step = event->modifiers().testFlag(Qt::ShiftModifier) ? kLeap : kStep;
  const int toRight = panel_ == Panel::left ? step : -step;
  switch (event->key()) {
    case Qt::Key_Right:
      return widenTo(pane_.now + toRight);
    case Qt::Key_Left:
      return widenTo(pane_.now - toRight);
    case Qt::Key_Home:
      return widenTo(pane_.least);
    case Qt::Key_End:
      return widenTo(pane_.most);
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Q_EMIT resetRequested();
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

void PaneHandle::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  update();
}

void PaneHandle::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
}

void PaneHandle::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QColor line = underMouse() ? c.controlBorder : QColor();
  if (hasFocus() && FocusRing::keyboardInUse()) line = c.accentRing;
  if (grabbedAt_) line = c.accentFill;
  if (!line.isValid()) return;
  QPainter painter(this);
  painter.fillRect(QRect((QWidget::width() - kLine) / 2, 0, kLine, height()), line);
}

void PaneHandle::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) grabbedAt_ = qRound(event->globalPosition().x());
  update();
}

// The panel moves by as much, so the hold stays where it was taken.
void PaneHandle::mouseMoveEvent(QMouseEvent* event) {
  if (grabbedAt_) Q_EMIT dragged(qRound(event->globalPosition().x()) - *grabbedAt_);
}

void PaneHandle::mouseReleaseEvent(QMouseEvent*) {
  if (std::exchange(grabbedAt_, std::nullopt)) Q_EMIT released();
  update();
}

void PaneHandle::mouseDoubleClickEvent(QMouseEvent*) { Q_EMIT resetRequested(); }

}  // namespace sorvan::views
