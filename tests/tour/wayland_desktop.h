// A desktop without X: a Wayland compositor that shows nothing, a session bus, and private home and XDG folders.
#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QSize>
#include <QString>

namespace tour {

class WaylandDesktop {
 public:
  // Throws std::runtime_error with what did not start.
  explicit WaylandDesktop(QSize size);
  ~WaylandDesktop();
  WaylandDesktop(const WaylandDesktop&) = delete;
  WaylandDesktop& operator=(const WaylandDesktop&) = delete;

  // For the program under test.
  QProcessEnvironment environment() const { return environment_; }
  QString home() const { return home_; }
  // Saves what the compositor has composed; an empty text when it gives no picture away.
  QString picture();

 private:
  void startCompositor(QSize size);
  void startBus();

  QString home_;
  QProcessEnvironment environment_;
  QProcess compositor_;
  QProcess bus_;
};

}  // namespace tour
