// The wall of a large library: from a turn of the wheel to the picture, from top to bottom; and the first picture after
// a library was opened. The window is a real one on a display of its own, in a process of its own.
#include <QApplication>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QScrollBar>
#include <QTimer>
#include <QWheelEvent>
#include <cstdio>
#include <memory>
#include <random>
#include <stdexcept>

#include <unistd.h>

#include "base/clock.h"
#include "base/settings.h"
#include "bench/display.h"
#include "bench/library_data.h"
#include "bench/row.h"
#include "catalogue/catalog_facts.h"
#include "catalogue/fal_catalog.h"
#include "core/library_store.h"
#include "core/thumbnails.h"
#include "core/workspace_opening.h"
#include "generation/job_queue.h"
#include "platform/pictures.h"
#include "shell/gallery_presenter.h"
#include "shell/job_displays.h"
#include "shell/views/gallery_source.h"
#include "shell/views/media_wall.h"
#include "shell/views/theme.h"
#include "shell/workspace_state.h"

namespace sorvan::bench {
namespace {

using namespace sorvan::base;
using namespace sorvan::core;
using namespace sorvan::shell;
using namespace sorvan::views;

constexpr int manyItems = 100'000;
constexpr int differentThumbnails = 2'000;
constexpr unsigned seed = 7;
constexpr QSize wallSize(888, 720);
constexpr double frame = 1.0 / 60;
constexpr double screensASecond = 3;
constexpr int wheelSeconds = 60;
constexpr int barSteps = 600;  // from one end of the bar to the other
constexpr int longestSeconds = 400;

QString libraryFolder(const QDir& data) { return data.filePath(QStringLiteral("library")); }

std::shared_ptr<LibraryStore> newStore() {
  return std::make_shared<LibraryStore>(
      LibraryStore::Services{std::make_shared<Settings>(), std::make_shared<SystemClock>(), {}, {}});
}

// ---- data: every item has a file and a thumbnail; two thousand different ones stand under a hundred thousand names

QByteArray madeThumbnail(std::mt19937& random) {
  QImage image(core::thumbnailEdge, core::thumbnailEdge, QImage::Format_RGB32);
  const double red = random() % 100 / 10.0;
  const double green = random() % 100 / 10.0;
  for (int row = 0; row < image.height(); ++row) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(row));
    for (int column = 0; column < image.width(); ++column) {
      const double x = column / 700.0;
      const double y = row / 700.0;
      const int noise = static_cast<int>(random() & 7);
      line[column] = qRgb(120 + static_cast<int>(100 * std::sin(red * x + 4 * y)) + noise,
                          120 + static_cast<int>(100 * std::cos(green * y * x)) + noise, (row + column) / 6 + noise);
    }
  }
  return platform::encodeJpeg(image, 0.85);
}

void makeThumbnails(const QString& folder) {
  std::mt19937 random(seed);
  for (int number = 0; number < differentThumbnails; ++number) {
    QFile file(QStringLiteral("%1/%2.jpg").arg(folder).arg(number));
    const QByteArray bytes = madeThumbnail(random);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
      throw std::runtime_error("a thumbnail could not be made");
  }
}

void link(const QString& from, const QString& to) {
  QDir().mkpath(QFileInfo(to).path());
  if (::link(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
    throw std::runtime_error("a file could not be linked: " + to.toStdString());
}

void makeWall(const QDir& data) {
  makeLibrary(libraryFolder(data), libraryOf(manyItems), seed);
  QDir().mkpath(data.filePath(QStringLiteral("pictures")));
  makeThumbnails(data.filePath(QStringLiteral("pictures")));
  const auto store = newStore();
  openWorkspace(*store, libraryFolder(data), Remember::no);
  int number = 0;
  for (const AssetRef& asset : store->assets()) {
    const QString picture = data.filePath(QStringLiteral("pictures/%1.jpg").arg(number++ % differentThumbnails));
    link(picture, store->fileOf(*asset));
    link(picture, store->thumbnailOf(*asset).value());
  }
}

// ---- the wall, as the window has it

generation::GenerationPorts portsOf(const std::shared_ptr<catalogue::FalCatalog>& catalog) {
  generation::GenerationPorts ports;
  ports.models = std::make_shared<catalogue::CatalogFacts>(catalog);
  return ports;
}

struct Hall {
  Hall() : dressed(dress()), queue(*store, portsOf(catalog)), displays(*store, queue), gallery(*store, state, displays) {
    wall.resize(wallSize);
    wall.show();
  }
  static bool dress() {
    Theme::instance().dress(*qApp);
    return true;
  }
  bool dressed;
  std::shared_ptr<Settings> settings = std::make_shared<Settings>();
  std::shared_ptr<catalogue::FalCatalog> catalog = std::make_shared<catalogue::FalCatalog>(settings);
  std::shared_ptr<LibraryStore> store = newStore();
  generation::JobQueue queue;
  WorkspaceState state;
  JobDisplays displays;
  GalleryPresenter gallery;
  GallerySource source{gallery};
  ThumbnailStore thumbnails;
  MediaWall wall{source, thumbnails};
};

// Tells when the wall has been painted.
class Paints final : public QObject {
 public:
  explicit Paints(QWidget& viewport) : QObject(&viewport) { viewport.installEventFilter(this); }
  int count() const { return count_; }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count_;
    return false;
  }

 private:
  int count_ = 0;
};

void handleUntilPainted(const Paints& paints, int before) {
  QElapsedTimer clock;
  clock.start();
  while (paints.count() == before && clock.elapsed() < 2000) QCoreApplication::processEvents();
}

// ---- scroll-100k

struct Frames {
  std::vector<double> seconds;
  int cells = 0;
  int placeholders = 0;
  int late() const {
    return static_cast<int>(std::count_if(seconds.begin(), seconds.end(), [](double time) { return time > frame; }));
  }
};

class Scrolling {
 public:
  explicit Scrolling(Hall& hall) : hall_(hall), paints_(*hall.wall.viewport()) {}

  // One event a frame, as a fine wheel sends them.
  Frames wheel() {
    QScrollBar& bar = *hall_.wall.verticalScrollBar();
    const double pixels = screensASecond * hall_.wall.viewport()->height() * frame;
    const double notch = bar.singleStep() * QApplication::wheelScrollLines();
    const int angle = qRound(120 * pixels / notch);
    Frames frames;
    pace(wheelSeconds * 60, [&] { frames.seconds.push_back(timedFrame([&] { turn(angle); })); count(frames); });
    return frames;
  }

  Frames drag() {
    QScrollBar& bar = *hall_.wall.verticalScrollBar();
    Frames frames;
    int step = 0;
    pace(barSteps, [&] {
      const int to = static_cast<int>(static_cast<qint64>(bar.maximum()) * ++step / barSteps);
      frames.seconds.push_back(timedFrame([&] { bar.setSliderPosition(to); }));
      count(frames);
    });
    return frames;
  }

 private:
  static void pace(int times, const std::function<void()>& work) {
    QElapsedTimer clock;
    clock.start();
    for (int number = 0; number < times; ++number) {
      work();
      const auto due = static_cast<qint64>((number + 1) * frame * 1e9);
      while (clock.nsecsElapsed() < due) {
        QCoreApplication::processEvents();
        if (due - clock.nsecsElapsed() > 1'500'000) ::usleep(1000);
      }
    }
  }
  double timedFrame(const std::function<void()>& move) {
    return timed([&] {
      const int before = paints_.count();
      move();
      handleUntilPainted(paints_, before);
    });
  }
  void turn(int angle) {
    QWidget* view = hall_.wall.viewport();
    const QPointF middle = QRectF(view->rect()).center();
    QWheelEvent event(middle, view->mapToGlobal(middle), {}, {0, -angle}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(view, &event);
  }
  void count(Frames& frames) {
    const auto [first, end] = hall_.wall.visibleRange();
    frames.cells += end - first;
    frames.placeholders += hall_.wall.placeholders();
  }

  Hall& hall_;
  Paints paints_;
};

QJsonObject told(Frames frames) {
  std::sort(frames.seconds.begin(), frames.seconds.end());
  return {{QStringLiteral("median"), frames.seconds[frames.seconds.size() / 2]},
          {QStringLiteral("longest"), frames.seconds.back()},
          {QStringLiteral("late"), 100.0 * frames.late() / static_cast<double>(frames.seconds.size())},
          {QStringLiteral("placeholders"), 100.0 * frames.placeholders / std::max(1, frames.cells)}};
}

void say(const QJsonObject& object) {
  std::puts(QJsonDocument(object).toJson(QJsonDocument::Compact).constData());
  std::fflush(stdout);
}

int scroll(const QStringList& arguments) {
  Hall hall;
  openWorkspace(*hall.store, arguments.value(0), Remember::no);
  while (hall.wall.rowCount() != manyItems || hall.wall.placeholders() > 0 || !hall.gallery.index().searchIsComplete())
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  Scrolling scrolling(hall);
  const QJsonObject wheel = told(scrolling.wheel());
  const QJsonObject bar = told(scrolling.drag());
  say({{QStringLiteral("wheel"), wheel},
       {QStringLiteral("bar"), bar},
       {QStringLiteral("pictures"), hall.thumbnails.pictures()},
       {QStringLiteral("MiB"), hall.thumbnails.kibibytes() / 1024.0},
       {QStringLiteral("bound"), ThumbnailStore::mostKibibytes / 1024}});
  std::_Exit(0);
}

// ---- first-frame-100k

int firstFrame(const QStringList& arguments) {
  Hall hall;
  Paints paints(*hall.wall.viewport());
  handleUntilPainted(paints, 0);
  QElapsedTimer clock;
  clock.start();
  openWorkspace(*hall.store, arguments.value(0), Remember::no);
  const double opened = static_cast<double>(clock.nsecsElapsed()) / 1e9;
  while (hall.wall.rowCount() != manyItems) QCoreApplication::processEvents();
  handleUntilPainted(paints, paints.count());
  const double painted = static_cast<double>(clock.nsecsElapsed()) / 1e9;
  while (hall.wall.placeholders() > 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  const double pictures = static_cast<double>(clock.nsecsElapsed()) / 1e9;
  say({{QStringLiteral("opened"), opened}, {QStringLiteral("painted"), painted}, {QStringLiteral("pictures"), pictures}});
  std::_Exit(0);
}

const RegisterOrder scrollOrder(QStringLiteral("--scroll"), scroll);
const RegisterOrder firstFrameOrder(QStringLiteral("--first-frame"), firstFrame);

// ---- the rows

// What the order says on a display of its own; nothing where there is none.
std::optional<QJsonObject> carriedOut(const QString& order, const QDir& data) {
  const Display display;
  if (!display.works()) return std::nullopt;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("DISPLAY"), display.name());
  environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
  QProcess process;
  process.setProcessEnvironment(environment);
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(QCoreApplication::applicationFilePath(), {order, libraryFolder(data)});
  if (!process.waitForFinished(longestSeconds * 1000)) process.kill();
  const QByteArray said = process.readAllStandardOutput();
  const QJsonObject object = QJsonDocument::fromJson(said).object();
  if (object.isEmpty()) throw std::runtime_error("the wall said nothing");
  return object;
}

QString framesText(const QString& name, const QJsonObject& frames) {
  const auto value = [&](const char* key) { return frames.value(QLatin1String(key)).toDouble(); };
  return QStringLiteral("%1: median %2 ms, longest %3 ms, %4 % over 16.7 ms, %5 % placeholders")
      .arg(name)
      .arg(value("median") * 1000, 0, 'f', 1)
      .arg(value("longest") * 1000, 0, 'f', 1)
      .arg(value("late"), 0, 'f', 2)
      .arg(value("placeholders"), 0, 'f', 1);
}

QString scrollNote(const QJsonObject& said) {
  return framesText(QStringLiteral("wheel"), said.value(QStringLiteral("wheel")).toObject()) + QStringLiteral("; ") +
         framesText(QStringLiteral("bar"), said.value(QStringLiteral("bar")).toObject()) +
         QStringLiteral("; %1 pictures kept, %2 of %3 MiB")
             .arg(said.value(QStringLiteral("pictures")).toInt())
             .arg(said.value(QStringLiteral("MiB")).toDouble(), 0, 'f', 1)
             .arg(said.value(QStringLiteral("bound")).toInt());
}

// Ours is the longest frame of the wheel, the limit one frame of sixty a second.
Contestants scrolls(const QDir& data) {
  const auto last = std::make_shared<QJsonObject>();
  return {.ours = [=]() -> std::optional<double> {
            const auto said = carriedOut(QStringLiteral("--scroll"), data);
            if (!said) return std::nullopt;
            *last = *said;
            return said->value(QStringLiteral("wheel")).toObject().value(QStringLiteral("longest")).toDouble();
          },
          .peer = {},
          .limit = [] { return std::optional(frame); },
          .note = [=] { return last->isEmpty() ? QString() : scrollNote(*last); }};
}

// Ours is the wall's first picture after the library began to open, the limit the opening alone.
Contestants firstFrames(const QDir& data) {
  const auto last = std::make_shared<QJsonObject>();
  return {.ours = [=]() -> std::optional<double> {
            const auto said = carriedOut(QStringLiteral("--first-frame"), data);
            if (!said) return std::nullopt;
            *last = *said;
            return said->value(QStringLiteral("painted")).toDouble();
          },
          .peer = {},
          .limit = [=]() -> std::optional<double> {
            if (last->isEmpty()) return std::nullopt;
            return last->value(QStringLiteral("opened")).toDouble();
          },
          .note = [=] {
            return QStringLiteral("all pictures in view after %1 ms")
                .arg(last->value(QStringLiteral("pictures")).toDouble() * 1000, 0, 'f', 0);
          }};
}

const RegisterRow scrollRow{
    {.name = QStringLiteral("scroll-100k"), .make = makeWall, .measure = scrolls, .rounds = 1}};
const RegisterRow firstFrameRow{
    {.name = QStringLiteral("first-frame-100k"), .make = makeWall, .measure = firstFrames, .rounds = 7}};

}  // namespace
}  // namespace sorvan::bench
