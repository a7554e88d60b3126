#include "shell/views/immersion.h"

#include <QEvent>
#include <QMainWindow>

#include "shell/views/library_view.h"

namespace sorvan::views {

Immersion::Immersion(QMainWindow& window, QWidget& strip, LibraryView& library, QObject* parent)
    : QObject(parent), window_(window), strip_(strip), library_(library) {
  window_.installEventFilter(this);
}

void Immersion::enter() {
  if (on_ || !library_.asset().showsClip()) return;
  wasFullScreen_ = window_.isFullScreen();
  show(true);
  window_.setWindowState(window_.windowState() | Qt::WindowFullScreen);
}

void Immersion::leave() {
  if (!on_) return;
  show(false);
  if (!wasFullScreen_) window_.setWindowState(window_.windowState() & ~Qt::WindowFullScreen);
}

void Immersion::show(bool on) {
  on_ = on;
  strip_.setVisible(!on);
  library_.setImmersed(on);
}

bool Immersion::eventFilter(QObject* watched, QEvent* event) {
  if (on_ && event->type() == QEvent::WindowStateChange && !window_.isFullScreen()) leave();
  return QObject::eventFilter(watched, event);
}

}  // namespace sorvan::views
