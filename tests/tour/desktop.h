// A desktop of its own for one tour: an X server without a screen, a window manager, a session bus with the
// accessibility bus on it, and private home and XDG folders outside temporary folders.
#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QSize>
#include <QString>
#include <memory>

namespace tour {

class Desktop {
 public:
  // Starts everything and sets DISPLAY and the bus address in this process's own environment, so that the tour can
  // look at the screen. Throws std::runtime_error with what did not start.
  explicit Desktop(QSize size);
  ~Desktop();
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;

  // The environment for the program under test: this display, this bus, private folders, accessibility on.
  QProcessEnvironment environment() const { return environment_; }
  // The private home folder; it goes with the desktop.
  QString home() const { return home_; }

 private:
  void startDisplay(QSize size);
  void startBus();
  void startWindowManager();
  bool managesWindows();

  QString home_;
  QProcessEnvironment environment_;
  QProcess display_;
  QProcess bus_;
  QProcess windowManager_;
};

}  // namespace tour
