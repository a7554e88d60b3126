// A clip alone on the screen.
#pragma once

#include <QObject>

#include "shell/views/room.h"

class QMainWindow;

namespace sorvan::views {

class LibraryView;

// Takes everything but the large view away and makes the window as large as the screen; afterwards all is as before.
// When the desktop takes the window off the whole screen, what was taken away comes back too. Main thread.
class Immersion final : public QObject {
  Q_OBJECT

 public:
  // All of it outlives this object; `strip` stands above the library.
  Immersion(QMainWindow& window, QWidget& strip, LibraryView& library, QObject* parent);

  bool isOn() const { return on_; }
  // Does nothing unless a clip is open large.
  void enter();
  void leave();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void show(bool on);

  QMainWindow& window_;
  QWidget& strip_;
  LibraryView& library_;
  bool on_ = false;
  bool wasFullScreen_ = false;
};

}  // namespace sorvan::views
