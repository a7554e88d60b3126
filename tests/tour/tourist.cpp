#include "tour/tourist.h"

#include "tour/steps.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QSet>
#include <stdexcept>
#include <utility>

namespace tour {
namespace {

constexpr int stepMilliseconds = 100;

// Another process has to move on: there is no signal to wait for, so the tree is read again after a short pause.
void pauseBetweenLooks() { ::poll(nullptr, 0, stepMilliseconds); }

}  // namespace

bool within(int seconds, const std::function<bool()>& test) {
  QElapsedTimer timer;
  timer.start();
  do {
    if (test()) return true;
    pauseBetweenLooks();
  } while (timer.elapsed() < seconds * 1000);
  return false;
}

// What a job takes at least, so that a person sees it run.
constexpr int jobMilliseconds = 1200;

Tourist::Tourist(QSize size, QString picturePrefix)
    : desktop_(size),
      prefix_(std::move(picturePrefix)),
      pointer_(size.width() / 2, size.height() / 2),  // where the display puts it first
      sandbox_({jobMilliseconds, {}, {}}) {}

Tourist::~Tourist() {
  if (program_) killProgram();
}

void Tourist::putFirstInPath(const QString& folder) { firstInPath_ = folder + u':'; }

void Tourist::open(const Wanted& expected) {
  program_ = std::make_unique<QProcess>();
  QProcessEnvironment environment = desktop_.environment();
  environment.insert(u"SORVAN_SERVICE"_qs, sandbox_.configurationPath());
  environment.insert(u"PATH"_qs, firstInPath_ + environment.value(u"PATH"_qs));
  program_->setProcessEnvironment(environment);
  program_->setProcessChannelMode(QProcess::ForwardedChannels);
  programEnvironment_ = environment;
  program_->start(QStringLiteral(SORVAN_STUDIO), {});
  ASSERT_TRUE(program_->waitForStarted(10000)) << "the program did not start";
  waitFor(expected, 30);
}

void Tourist::close() {
  key(u"ctrl+q"_qs);
  EXPECT_TRUE(program_->waitForFinished(20000)) << "the program did not end on Quit";
  EXPECT_EQ(program_->exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(program_->exitCode(), 0);
  program_.reset();
}

void Tourist::killProgram() {
  program_->kill();
  program_->waitForFinished(10000);
  program_.reset();
}

Control Tourist::waitFor(const Wanted& wanted, int seconds) {
  std::optional<Control> found;
  if (!within(seconds, [&] { return (found = accessibility_.find(wanted)).has_value(); })) {
    picture(u"failed"_qs);
    throw std::runtime_error((u"no “"_qs + wanted.name + u"” ("_qs + wanted.role + u") within "_qs +
                              QString::number(seconds) + u" s; the window has:\n"_qs + describe(accessibility_.controls()))
                                 .toStdString());
  }
  return *found;
}

void Tourist::waitForCount(const Wanted& wanted, int number, int seconds) {
  if (within(seconds, [&] { return accessibility_.count(wanted) >= number; })) return;
  picture(u"failed"_qs);
  throw std::runtime_error((u"fewer than "_qs + QString::number(number) + u" of “"_qs + wanted.name + u"” within "_qs +
                            QString::number(seconds) + u" s; the window has:\n"_qs + describe(accessibility_.controls()))
                               .toStdString());
}

void Tourist::waitForFiles(const QString& folder, const QStringList& patterns, qsizetype number, int seconds) {
  if (within(seconds, [&] { return mediaIn(folder, patterns).size() >= number; })) return;
  picture(u"failed"_qs);
  throw std::runtime_error((u"fewer than "_qs + QString::number(number) + u" files; the window has:\n"_qs +
                            describe(accessibility_.controls()))
                               .toStdString());
}

void Tourist::waitUntilGone(const Wanted& wanted, int seconds) {
  if (!within(seconds, [&] { return accessibility_.count(wanted) == 0; }))
    throw std::runtime_error((u"“"_qs + wanted.name + u"” is still there"_qs).toStdString());
}

void Tourist::click(const Wanted& wanted) {
  QPoint middle;
  // What moves while the pointer is on its way, as the dock does when a message leaves it, is followed.
  for (QPoint place = waitFor(wanted).place.center(); middle != place; place = waitFor(wanted).place.center()) {
    middle = place;
    arriveAt(middle);
  }
  xdotool({u"click"_qs, u"1"_qs});
}

void Tourist::clickAt(QPoint point) {
  arriveAt(point);
  xdotool({u"click"_qs, u"1"_qs});
}

void Tourist::doubleClick(const Wanted& wanted) {
  arriveAt(waitFor(wanted).place.center());
  xdotool({u"click"_qs, u"--repeat"_qs, u"2"_qs, u"--delay"_qs, u"60"_qs, u"1"_qs});
}

void Tourist::drag(QPoint from, QPoint to) {
  moveTo(from);
  QStringList all{u"mousedown"_qs, u"1"_qs};
  all += moving((from + to) / 2);
  all += moving(to);
  xdotool(all + QStringList{u"mouseup"_qs, u"1"_qs});
}

// What brings the pointer to a point; nothing when it is there: xdotool would wait 15 seconds for it to leave its place.
QStringList Tourist::moving(QPoint point) {
  if (std::exchange(pointer_, point) == point) return {};
  return {u"mousemove"_qs, u"--sync"_qs, QString::number(point.x()), QString::number(point.y())};
}

void Tourist::moveTo(QPoint point) {
  if (const QStringList move = moving(point); !move.isEmpty()) xdotool(move);
}

// Comes from beside it where the pointer is there already: two presses at one place would be a double click.
void Tourist::arriveAt(QPoint point) {
  if (pointer_ == point) moveTo(point - QPoint(12, 0));
  moveTo(point);
}

void Tourist::moveSlowly(QPoint from, QPoint to) {
  constexpr int steps = 8;
  for (int step = 1; step <= steps; ++step) moveTo(from + (to - from) * step / steps);
  for (int step = 1; step <= steps; ++step) moveTo(to + QPoint(step, 0));
}

void Tourist::carry(QPoint from, QPoint to) {
  moveTo(from);
  xdotool({u"mousedown"_qs, u"1"_qs});
  moveSlowly(from, to);
  xdotool({u"mouseup"_qs, u"1"_qs});
}

void Tourist::carryOver(QPoint from, QPoint rest, const Wanted& target) {
  moveTo(from);
  xdotool({u"mousedown"_qs, u"1"_qs});
  moveSlowly(from, rest);
  moveSlowly(pointer_, waitFor(target).place.center());
  xdotool({u"mouseup"_qs, u"1"_qs});
}

void Tourist::type(const QString& text) { xdotool({u"type"_qs, u"--delay"_qs, u"8"_qs, u"--"_qs, text}); }

void Tourist::tabTo(const Wanted& wanted) {
  constexpr int mostStops = 80;
  QStringList passed;
  for (int stop = 0; stop < mostStops; ++stop) {
    for (const Control& control : accessibility_.controls()) {
      if (!control.focused) continue;
      if (control.name == wanted.name || (wanted.prefix && control.name.startsWith(wanted.name))) return;
      passed += control.role + u" “"_qs + control.name + u'”';
    }
    key(u"Tab"_qs);
  }
  throw std::runtime_error((u"Tab does not lead to “"_qs + wanted.name + u"” but to:\n"_qs + passed.join(u'\n')).toStdString());
}

QString Tourist::run(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.setProcessEnvironment(desktop_.environment());
  process.start(program, arguments);
  if (!process.waitForFinished(20000) || process.exitCode() != 0)
    throw std::runtime_error((program.toUtf8() + " failed: " + process.readAllStandardError()).toStdString());
  return QString::fromUtf8(process.readAllStandardOutput());
}

int Tourist::startAgain(const QStringList& arguments) {
  QProcess second;
  second.setProcessEnvironment(programEnvironment_);
  second.setProcessChannelMode(QProcess::ForwardedChannels);
  second.start(QStringLiteral(SORVAN_STUDIO), arguments);
  return second.waitForFinished(20000) ? second.exitCode() : -1;
}

void Tourist::key(const QString& chord) { xdotool({u"key"_qs, u"--clearmodifiers"_qs, chord}); }

void Tourist::xdotool(const QStringList& arguments) {
  QProcess process;
  process.setProcessEnvironment(desktop_.environment());
  process.start(u"xdotool"_qs, arguments);
  if (!process.waitForFinished(60000) || process.exitCode() != 0)
    throw std::runtime_error(("xdotool failed: " + process.readAllStandardError()).toStdString());
}

QImage Tourist::screen() {
  // The tour itself has no connection to the display: the screen is read by a program of its own.
  const QString file = desktop_.home() + u"/screen.bmp"_qs;
  QProcess process;
  process.setProcessEnvironment(desktop_.environment());
  process.start(u"import"_qs, {u"-window"_qs, u"root"_qs, file});
  if (!process.waitForFinished(20000) || process.exitCode() != 0)
    throw std::runtime_error(("no picture of the screen: " + process.readAllStandardError()).toStdString());
  return QImage(file);
}

// What fades in has arrived; what always moves, as a clip does, is not waited for.
QImage Tourist::screenAtRest() {
  constexpr int mostLooks = 15;
  QImage last = screen();
  for (int look = 1; look < mostLooks; ++look) {
    pauseBetweenLooks();
    const QImage next = screen();
    if (next == last) break;
    last = next;
  }
  return last;
}

int Tourist::picture(const QString& name) {
  const QString folder = qEnvironmentVariable("SORVAN_TOUR_PICTURES");
  const QImage taken = folder.isEmpty() ? screen() : screenAtRest();
  QSet<QRgb> colours;
  for (int y = 0; y < taken.height(); y += 16)
    for (int x = 0; x < taken.width(); x += 16) colours.insert(taken.pixel(x, y));
  if (!folder.isEmpty()) {
    QDir().mkpath(folder);
    taken.save(folder + u'/' + prefix_ + name + u".png"_qs);
  }
  return static_cast<int>(colours.size());
}

}  // namespace tour
