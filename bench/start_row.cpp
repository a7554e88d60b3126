// From the start of the program with a large library, against an empty window: to the window's first picture, which
// comes before the library is read, and to the library in it.
#include <poll.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <memory>
#include <stdexcept>

#include "bench/display.h"
#include "bench/library_data.h"
#include "bench/row.h"

namespace sorvan::bench {
namespace {

constexpr int manyItems = 100'000;
constexpr unsigned seed = 7;
constexpr int longestStartSeconds = 20;


// Seconds from the start of the program until the screen shows at least that.
std::optional<double> untilShown(Picture wanted, const Display& display, const QString& program,
                                 const QProcessEnvironment& given) {
  if (!display.works()) return std::nullopt;
  QProcessEnvironment environment = given;
  environment.insert(QStringLiteral("DISPLAY"), display.name());
  environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
  QProcess process;
  process.setProcessEnvironment(environment);
  process.setStandardErrorFile(QProcess::nullDevice());
  QElapsedTimer timer;
  timer.start();
  process.start(program, {});
  process.waitForStarted();
  while (display.shown() < wanted) {
    ::poll(nullptr, 0, 1);
    if (timer.elapsed() > longestStartSeconds * 1000) throw std::runtime_error("the program shows no window");
  }
  const double seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
  process.kill();
  process.waitForFinished(5000);
  while (display.shown() != Picture::nothing && timer.elapsed() < 2 * longestStartSeconds * 1000) ::poll(nullptr, 0, 1);
  return seconds;
}

QString besideBench(const QString& path) { return QCoreApplication::applicationDirPath() + path; }

Contestants starts(const QDir& data, Picture wanted) {
  const auto display = std::make_shared<Display>();
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
    environment.insert(QString::fromLatin1(name), data.absolutePath());
  environment.remove(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
  QProcessEnvironment withLibrary = environment;
  withLibrary.insert(QStringLiteral("SORVAN_WORKSPACE"), data.filePath(QStringLiteral("many")));
  const QString studio = besideBench(QStringLiteral("/../src/app/sorvan-studio"));
  const QString empty = besideBench(QStringLiteral("/sorvan-empty-window"));
  return {.ours = [=] { return untilShown(wanted, *display, studio, withLibrary); },
          .peer = {},
          .limit = [=] { return untilShown(Picture::plainWindow, *display, empty, environment); }};
}

void makeManyItems(const QDir& data) { makeLibrary(data.filePath(QStringLiteral("many")), libraryOf(manyItems), seed); }

const RegisterRow window{{.name = QStringLiteral("start-100k"),
                          .make = makeManyItems,
                          .measure = [](const QDir& data) { return starts(data, Picture::plainWindow); },
                          .rounds = 7}};
const RegisterRow library{{.name = QStringLiteral("start-100k-library"),
                           .make = makeManyItems,
                           .measure = [](const QDir& data) { return starts(data, Picture::content); },
                           .rounds = 7}};

}  // namespace
}  // namespace sorvan::bench
