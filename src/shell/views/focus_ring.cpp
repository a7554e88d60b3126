#include "shell/views/focus_ring.h"

#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <QPainter>

#include "shell/views/painted_list.h"
#include "shell/views/painting.h"

namespace sorvan::views {

namespace {

constexpr int kDistance = 2;
bool keyboard = false;  // what the last input came from

bool drawsItself(const QWidget* widget) {
  // A list draws the keyboard's place at its current row; while it has none the ring is around the list.
  const auto* list = dynamic_cast<const PaintedList*>(widget);
  if (list && list->rowIndex(list->currentRow()) < 0) return false;
  return qobject_cast<const QLineEdit*>(widget) || widget->property(ownFocusProperty).toBool();
}

}  // namespace

bool FocusRing::keyboardInUse() { return keyboard; }

FocusRing::FocusRing(QWidget* window) : QWidget(window) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setAttribute(Qt::WA_NoSystemBackground);
  setFocusPolicy(Qt::NoFocus);
  hide();
  qApp->installEventFilter(this);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { follow(now); });
}

bool FocusRing::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type == QEvent::KeyPress || type == QEvent::MouseButtonPress) {
    const bool before = keyboard;
    keyboard = type == QEvent::KeyPress;
    if (before != keyboard)
      QMetaObject::invokeMethod(
          this, [this] { follow(QApplication::focusWidget()); }, Qt::QueuedConnection);
  }
  if (type == QEvent::KeyRelease && dynamic_cast<PaintedList*>(QApplication::focusWidget()))
    QMetaObject::invokeMethod(
        this, [this] { follow(QApplication::focusWidget()); }, Qt::QueuedConnection);
  const bool moved = type == QEvent::Resize || type == QEvent::Move || type == QEvent::Show || type == QEvent::Hide;
  if (moved && target_ && watched->isWidgetType()) {
    auto* widget = static_cast<QWidget*>(watched);
    if (widget == target_ || widget->isAncestorOf(target_)) place();
  }
  return false;
}

void FocusRing::follow(QWidget* now) {
  on_ = keyboard && now && now->window() == window() && !drawsItself(now);
  target_ = on_ ? now : nullptr;
  place();
}

void FocusRing::place() {
  const bool shown = on_ && target_ && target_->isVisible();
  setVisible(shown);
  if (!shown) return;
  const int outset = kDistance + metrics().borderFocus;
  const QRect area(target_->mapTo(window(), QPoint(0, 0)), target_->size());
  setGeometry(area.adjusted(-outset, -outset, outset, outset));
  raise();
  update();
}

void FocusRing::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const bool round = target_ && target_->property(roundProperty).toBool();
  const double radius = round ? height() / 2.0 : std::min(metrics().radiusControl + kDistance + 1, height() / 2);
  paintRing(painter, rect(), radius, metrics().borderFocus, colors().accentRing);
}

}  // namespace sorvan::views
