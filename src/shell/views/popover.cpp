#include "shell/views/popover.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>

#include "shell/views/accessible_role.h"
#include "shell/views/painting.h"

namespace sorvan::views {

namespace {
constexpr int kShadowRoom = 26;
constexpr int kDistance = 8;  // between the control and the panel
constexpr int kWindowEdge = 8;
}  // namespace

Popover::Popover(const QString& name, QWidget* parent) : QWidget(parent), panel_(new QWidget(this)) {
  setAccessibleName(name);
  giveRole(*this, QAccessible::Dialog);
  setFocusPolicy(Qt::StrongFocus);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(kShadowRoom, kShadowRoom, kShadowRoom, kShadowRoom);
  layout->addWidget(panel_);
  hide();
}

int Popover::roomAbove(QWidget* above) {
  return above->mapTo(above->window(), QPoint(0, 0)).y() - metrics().menuStrip - kWindowEdge;
}

void Popover::openAt(QWidget* anchor, QWidget* above) {
  anchor_ = anchor;
  above_ = above;
  setParent(anchor->window());
  open_ = true;
  refit();
  show();
  raise();
  if (QWidget* first = panel_->focusWidget())
    first->setFocus(Qt::PopupFocusReason);
  else
    setFocus(Qt::PopupFocusReason), focusNextPrevChild(true);
  qApp->installEventFilter(this);
}

void Popover::refit() {
  if (!anchor_) return;
  adjustSize();
  const QRect window = parentWidget()->rect();
  const QRect anchor(anchor_->mapTo(parentWidget(), QPoint(0, 0)), anchor_->size());
  const int edge = above_ ? above_->mapTo(parentWidget(), QPoint(0, 0)).y() : anchor.top();
  QPoint at(anchor.left() - kShadowRoom, edge - kDistance - height() + kShadowRoom);
  if (at.y() + kShadowRoom < kWindowEdge) at.setY(anchor.bottom() + kDistance - kShadowRoom);
  at.setY(std::clamp(at.y(), kWindowEdge - kShadowRoom,
                     std::max(kWindowEdge - kShadowRoom, window.height() - height() + kShadowRoom - kWindowEdge)));
  at.setX(std::clamp(at.x(), kWindowEdge - kShadowRoom,
                     std::max(kWindowEdge - kShadowRoom, window.width() - width() + kShadowRoom - kWindowEdge)));
  move(at);
}

void Popover::dismiss() {
  if (!open_) return;
  open_ = false;
  qApp->removeEventFilter(this);
  const bool hadFocus = isAncestorOf(QApplication::focusWidget()) || QApplication::focusWidget() == this;
  hide();
  if (hadFocus && anchor_) anchor_->setFocus(Qt::PopupFocusReason);
  Q_EMIT closed();
  deleteLater();
}

bool Popover::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::WindowDeactivate && watched == window()) return false;
  if (event->type() != QEvent::MouseButtonPress || !watched->isWidgetType()) return false;
  auto* widget = static_cast<QWidget*>(watched);
  const bool inside = widget == panel_ || panel_->isAncestorOf(widget);
  if (inside || widget->window() != window()) return false;
  const bool onAnchor = anchor_ && (widget == anchor_ || anchor_->isAncestorOf(widget));
  dismiss();
  return onAnchor;  // the press that closes must not open again
}

void Popover::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return dismiss();
  QWidget::keyPressEvent(event);
  event->accept();  // keys typed here are never meant for the window beneath
}

bool Popover::focusNextPrevChild(bool next) {
  QWidget* from = QApplication::focusWidget();
  QWidget* at = from && (from == this || isAncestorOf(from)) ? from : this;
  for (QWidget* candidate = next ? at->nextInFocusChain() : at->previousInFocusChain(); candidate && candidate != at;
       candidate = next ? candidate->nextInFocusChain() : candidate->previousInFocusChain()) {
    if (!isAncestorOf(candidate) || !candidate->isVisibleTo(this) || !candidate->isEnabled()) continue;
    if ((candidate->focusPolicy() & Qt::TabFocus) == 0) continue;
    candidate->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
  }
  return true;
}

void Popover::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  paintShadow(painter, panel_->geometry(), metrics().radiusPanel, c.popoverShadow);
  paintPanel(painter, panel_->geometry(), metrics().radiusPanel, c.surfaceOverlay,
             Theme::instance().isDark() ? c.controlBorder : c.lineDefault);
}

}  // namespace sorvan::views
