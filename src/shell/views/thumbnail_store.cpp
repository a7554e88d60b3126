#include "shell/views/thumbnail_store.h"

#include <QImageReader>
#include <QThread>

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMostPictures = 250;
constexpr int kMostKibibytes = 100 * 1024;
constexpr int kMostWaiting = 300;  // older requests have left the screen; they are asked for again when they return
constexpr int kSteps[] = {64, 256, 640, 1280, 2560};

// Few sizes, so that a small change of the row height finds its pictures again.
int stepFor(int longSide) {
  for (const int step : kSteps) {
    if (longSide <= step) return step;
  }
  return kSteps[std::size(kSteps) - 1];
}

int costOf(const QPixmap& picture) {
  const qint64 bytes = static_cast<qint64>(picture.width()) * picture.height() * 4;
  return static_cast<int>(std::max<qint64>(bytes / 1024, kMostKibibytes / kMostPictures));
}

}  // namespace

QImage decodeThumbnail(const QStringList& paths, int longSide) {
  for (const QString& path : paths) {
    if (path.isEmpty()) continue;
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (std::max(size.width(), size.height()) > longSide)
      reader.setScaledSize(size.scaled(longSide, longSide, Qt::KeepAspectRatio));
    const QImage image = reader.read();
    if (!image.isNull()) return image;
  }
  return {};
}

ThumbnailStore::ThumbnailStore(QObject* parent) : QObject(parent), kept_(kMostKibibytes) {
  pool_.setMaxThreadCount(std::max(1, QThread::idealThreadCount() - 1));
}

ThumbnailStore::~ThumbnailStore() { pool_.waitForDone(); }

ThumbnailStore::Answer ThumbnailStore::picture(const QString& path, const QString& otherPath, int longSide) {
  if (path.isEmpty() && otherPath.isEmpty()) return {State::missing, {}};
  const int step = stepFor(longSide);
  const QString key = path + u'|' + otherPath + u'|' + QString::number(step);
  if (const QPixmap* found = kept_.object(key)) return {State::ready, *found};
  if (missing_.contains(key)) return {State::missing, {}};
  if (asked_.contains(key)) return {State::loading, {}};
  asked_.insert(key);
  waiting_.push_back({key, {path, otherPath}, step});
  if (waiting_.size() > kMostWaiting) {
    asked_.remove(waiting_.front().key);
    waiting_.erase(waiting_.begin());
  }
  start();
  return {State::loading, {}};
}

void ThumbnailStore::forgetMissing() { missing_.clear(); }

void ThumbnailStore::start() {
  while (running_ < pool_.maxThreadCount() && !waiting_.empty()) {
    const Request request = waiting_.back();
    waiting_.pop_back();
    ++running_;
    pool_.start([this, request] {
      const QImage image = decodeThumbnail(request.paths, request.longSide);
      QMetaObject::invokeMethod(
          this, [this, request, image] { finish(request.key, image); }, Qt::QueuedConnection);
    });
  }
}

void ThumbnailStore::finish(const QString& key, const QImage& image) {
  --running_;
  asked_.remove(key);
  if (image.isNull()) {
    missing_.insert(key);
  } else {
    auto* picture = new QPixmap(QPixmap::fromImage(image));
    kept_.insert(key, picture, costOf(*picture));
  }
  start();
  announce();
}

// Many pictures that arrive together cost one repaint.
void ThumbnailStore::announce() {
  if (announcing_) return;
  announcing_ = true;
  QTimer::singleShot(16, this, [this] {
    announcing_ = false;
    Q_EMIT loaded();
  });
}

}  // namespace sorvan::views
