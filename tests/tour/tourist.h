// A person at the desktop: starts the program, looks for controls by name, clicks, types, waits with a limit, and
// keeps pictures.
#pragma once

#include <QImage>
#include <QProcess>
#include <functional>
#include <memory>

#include "support_sandbox/sandbox_process.h"
#include "tour/accessible.h"
#include "tour/desktop.h"

namespace tour {

// Looks again and again, with a pause, until the test holds or the time is over. Answers whether it held.
bool within(int seconds, const std::function<bool()>& test);

class Tourist {
 public:
  // `picturePrefix` stands before the name of every picture of this tour.
  Tourist(QSize size, QString picturePrefix);
  ~Tourist();

  // Puts a folder of programs first in the path of the programs that are started from now on.
  void putFirstInPath(const QString& folder);
  // Starts the program on the sandbox and waits until its window shows `expected`.
  void open(const Wanted& expected);
  // Closes the window as a user does, and waits for the process to end.
  void close();
  // Ends the process with SIGKILL.
  void killProgram();

  // Waits until the control is there; fails the test with the whole tree when it does not come within the limit.
  Control waitFor(const Wanted& wanted, int seconds = 20);
  // Waits until at least `number` controls match.
  void waitForCount(const Wanted& wanted, int number, int seconds);
  // Waits until at least so many files match below a folder, thumbnails left out.
  void waitForFiles(const QString& folder, const QStringList& patterns, qsizetype number, int seconds);
  void waitUntilGone(const Wanted& wanted, int seconds = 20);
  // Waits for the control, then moves the pointer to its middle and presses the left button.
  void click(const Wanted& wanted);
  void doubleClick(const Wanted& wanted);
  // Presses the left button at a point of the screen.
  void clickAt(QPoint point);
  // Presses the left button at one point of the screen and lets it go at another.
  void drag(QPoint from, QPoint to);
  // The same as slowly as a hand does it, so that whatever is dragged over has time to answer.
  void carry(QPoint from, QPoint to);
  // The same by way of a place on which the pointer rests until something is there; then on to its middle.
  void carryOver(QPoint from, QPoint rest, const Wanted& target);
  // Types into whatever has the focus.
  void type(const QString& text);
  // Presses Tab until the control has the keyboard; fails the test when Tab does not lead there.
  void tabTo(const Wanted& wanted);
  // Runs a program of the desktop to its end and answers what it printed.
  QString run(const QString& program, const QStringList& arguments);
  // Starts the program once more, beside the running one, and answers its exit code.
  int startAgain(const QStringList& arguments);
  // Presses one key or chord in xdotool's names, e.g. "ctrl+a", "Return".
  void key(const QString& chord);
  // What the screen shows now.
  QImage screen();
  // Saves the screen as docs/pictures-style PNG when pictures were asked for, once nothing moves on it any more; always
  // takes it, so that a black screen fails. Returns the number of different colours seen on a coarse grid.
  int picture(const QString& name);

  const Accessibility& accessibility() const { return accessibility_; }
  Desktop& desktop() { return desktop_; }
  sorvan::test::SandboxProcess& sandbox() { return sandbox_; }
  const sorvan::test::SandboxProcess& sandbox() const { return sandbox_; }

 private:
  void xdotool(const QStringList& arguments);
  QImage screenAtRest();
  QStringList moving(QPoint point);
  void moveTo(QPoint point);
  void arriveAt(QPoint point);
  void moveSlowly(QPoint from, QPoint to);

  Desktop desktop_;
  Accessibility accessibility_;
  QString prefix_;
  QString firstInPath_;
  QPoint pointer_;
  QProcessEnvironment programEnvironment_;
  sorvan::test::SandboxProcess sandbox_;
  std::unique_ptr<QProcess> program_;
};

}  // namespace tour
