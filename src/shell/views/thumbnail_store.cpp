#include "shell/views/thumbnail_store.h"

#include <QThread>
#include <QTimer>

#include "shell/views/theme.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

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
  constexpr int least = ThumbnailStore::mostKibibytes / ThumbnailStore::mostPictures + 1;
  return static_cast<int>(std::max<qint64>(bytes / 1024, least));
}

// A fitted picture is known by its files alone: one of another size takes its place.
QString fittedKey(const PictureFiles& files) { return files.thumbnail + u'|' + files.original; }

}  // namespace

ThumbnailStore::ThumbnailStore(QObject* parent) : QObject(parent), kept_(mostKibibytes) {
  pool_.setMaxThreadCount(std::max(1, QThread::idealThreadCount() - 1));
}

ThumbnailStore::~ThumbnailStore() { pool_.waitForDone(); }

ThumbnailStore::Answer ThumbnailStore::picture(const QString& path, const QString& otherPath, int longSide) {
  if (path.isEmpty() && otherPath.isEmpty()) return {State::missing, {}};
  const int step = stepFor(longSide);
  const QString key = path + u'|' + otherPath + u'|' + QString::number(step);
  if (const Kept* found = kept_.object(key)) return {State::ready, found->picture};
  const auto failure = failed_.constFind(key);
  const bool known = failure != failed_.constEnd();
  if (known && failure->doubt == doubt_) return {State::missing, {}};
  const State now = known ? State::missing : State::loading;
  if (asked_.contains(key) || busy_.contains(key)) return {now, {}};
  asked_.insert(key);
  waiting_.push_back({key, {path, otherPath}, step, {}, 1});
  if (waiting_.size() > kMostWaiting) {
    asked_.remove(waiting_.front().key);
    waiting_.erase(waiting_.begin());
  }
  start();
  return {now, {}};
}

ThumbnailStore::Answer ThumbnailStore::fitted(const PictureFiles& files) const {
  const QString key = fittedKey(files);
  if (const Kept* found = kept_.object(key)) return {State::ready, found->picture, found->originalMissing};
  const auto failure = failed_.constFind(key);
  if (failure == failed_.constEnd()) return {};
  const bool gone = failure->stamps.original < 0 && !files.original.isEmpty();
  return {gone ? State::missing : State::unreadable, {}};
}

bool ThumbnailStore::needed(const Request& request) const {
  if (busy_.contains(request.key)) return false;
  if (const Kept* kept = kept_.object(request.key)) return kept->size != request.size;
  const auto failure = failed_.constFind(request.key);
  return failure == failed_.constEnd() || failure->doubt != doubt_;
}

void ThumbnailStore::want(const void* asker, const std::vector<Wish>& wishes) {
  auto queue = std::find_if(queues_.begin(), queues_.end(), [asker](const Queue& q) { return q.asker == asker; });
  if (queue == queues_.end()) queue = queues_.insert(queue, Queue{asker, {}});
  queue->requests.clear();
  for (auto wish = wishes.rbegin(); wish != wishes.rend(); ++wish) {
    Request request{fittedKey(wish->files), wish->files, 0, wish->size, wish->pixelRatio};
    if (needed(request)) queue->requests.push_back(std::move(request));
  }
  start();
}

std::size_t ThumbnailStore::wished() const {
  std::size_t count = 0;
  for (const Queue& queue : queues_) count += queue.requests.size();
  return count;
}

std::optional<ThumbnailStore::Request> ThumbnailStore::takeNext() {
  for (Queue& queue : queues_) {
    if (queue.requests.empty()) continue;
    Request next = std::move(queue.requests.back());
    queue.requests.pop_back();
    return next;
  }
  if (waiting_.empty()) return std::nullopt;
  Request next = std::move(waiting_.back());
  waiting_.pop_back();
  asked_.remove(next.key);
  return next;
}

void ThumbnailStore::start() {
  while (running_ < pool_.maxThreadCount()) {
    const std::optional<Request> next = takeNext();
    if (!next) return;
    run(*next);
  }
}

// Where reading failed before, the files are read again only when they are other files now.
void ThumbnailStore::run(const Request& request) {
  ++running_;
  busy_.insert(request.key);
  const auto failure = failed_.constFind(request.key);
  const std::optional<FileStamps> failedWith =
      failure == failed_.constEnd() ? std::nullopt : std::optional(failure->stamps);
  pool_.start([this, request, failedWith, radius = metrics().radiusPicture * request.pixelRatio] {
    DecodedPicture decoded;
    if (failedWith && stampsOf(request.files) == *failedWith)
      decoded.stamps = *failedWith;
    else if (request.size.isEmpty())
      decoded = decodeLong(request.files, request.longSide);
    else
      decoded = decodeFitted(request.files, request.size, radius);
    QMetaObject::invokeMethod(
        this, [this, request, decoded] { finish(request, decoded); }, Qt::QueuedConnection);
  });
}

void ThumbnailStore::finish(const Request& request, const DecodedPicture& decoded) {
  --running_;
  busy_.remove(request.key);
  if (decoded.image.isNull()) {
    failed_.insert(request.key, {decoded.stamps, doubt_});
  } else {
    failed_.remove(request.key);
    QPixmap picture = QPixmap::fromImage(decoded.image);
    if (!request.size.isEmpty()) picture.setDevicePixelRatio(request.pixelRatio);
    const int cost = costOf(picture);
    kept_.insert(request.key, new Kept{std::move(picture), request.size, decoded.originalMissing}, cost);
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
