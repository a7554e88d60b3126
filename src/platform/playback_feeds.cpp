#include "platform/playback_feeds.h"

#include <condition_variable>
#include <deque>
#include <mutex>

#include <QThreadPool>

#include "base/task.h"
#include "platform/sound_output.h"
#include "platform/sounds.h"

namespace sorvan::platform {
namespace {

constexpr size_t kMostFrames = 8;
constexpr size_t kLeastFrames = 2;
constexpr qint64 kMostFrameBytes = 48 << 20;
constexpr size_t kMostSamples = size_t(SoundOutput::samplesPerSecond) * 3 / 2;  // of each channel
constexpr double kHopelesslyLate = 1.0;                                        // seconds

// Decoding waits most of its time, so its threads are many and not the pool's of the work on values. Whoever lets go of
// a feed does not wait for its thread.
QThreadPool& feedThreads() {
  static QThreadPool pool;
  static const bool once = [] {
    pool.setMaxThreadCount(64);
    return true;
  }();
  Q_UNUSED(once);
  return pool;
}

// Tells that something arrived, unless nobody listens any more.
class Announcement {
 public:
  explicit Announcement(std::function<void()> tell) : tell_(std::move(tell)) {}
  void operator()() {
    const std::lock_guard lock(mutex_);
    if (tell_) tell_();
  }
  void silence() {
    const std::lock_guard lock(mutex_);
    tell_ = nullptr;
  }

 private:
  std::mutex mutex_;
  std::function<void()> tell_;
};

// Unwinds a reading whose place is no longer wanted.
struct PlaceLeft {};

}  // namespace

// PictureFeed

struct PictureFeed::Shared {
  Shared(QString file, QSize size, std::function<void()> arrived)
      : path(std::move(file)), maximum(size), announce(std::move(arrived)) {}

  bool full() const {
    const qint64 bytes = frames.empty() ? 0 : frames.back().image.sizeInBytes() * qint64(frames.size());
    return frames.size() >= kMostFrames || (frames.size() >= kLeastFrames && bytes >= kMostFrameBytes);
  }
  void decode();
  void put(int decodedPlace, std::optional<ClipFrame> frame);
  void goTo(double to) {
    ++place;
    seconds = to;
    frames.clear();
    reach.reset();
    state = FeedState::filling;
    changed.notify_all();
  }

  const QString path;
  std::stop_source stop;
  std::mutex mutex;
  std::condition_variable changed;
  QSize maximum;
  int place = 0;  // counts the places that were asked for
  double seconds = 0;
  std::deque<ClipFrame> frames;
  std::optional<double> reach;
  FeedState state = FeedState::filling;
  Announcement announce;
};

void PictureFeed::Shared::decode() {
  std::optional<ClipFrames> reading;
  try {
    int decoded = -1;
    QSize size;
    for (;;) {
      std::unique_lock lock(mutex);
      changed.wait(lock, [&] {
        return stop.stop_requested() || decoded != place || (state != FeedState::ended && !full());
      });
      throwIfStopped(stop.get_token());
      const bool moved = decoded != place;
      const double to = seconds;
      const int wanted = place;
      const QSize wantedSize = maximum;
      lock.unlock();
      if (!reading || wantedSize != size)
        reading.emplace(path, wantedSize.isEmpty() ? std::nullopt : std::optional(wantedSize), stop.get_token());
      if (moved && (decoded >= 0 || to > 0)) reading->seek(to);
      decoded = wanted;
      size = wantedSize;
      put(decoded, reading->next());
    }
  } catch (const Cancelled&) {
  } catch (...) {
    const std::lock_guard lock(mutex);
    state = FeedState::failed;
  }
  announce();
}

void PictureFeed::Shared::put(int decodedPlace, std::optional<ClipFrame> frame) {
  {
    const std::lock_guard lock(mutex);
    if (decodedPlace != place) return;
    const bool first = state == FeedState::filling;
    state = frame ? FeedState::ready : FeedState::ended;
    if (frame) {
      reach = frame->seconds;
      frames.push_back(std::move(*frame));
    }
    if (!first) return;
  }
  announce();
}

PictureFeed::PictureFeed(const QString& path, QSize maximum, std::function<void()> arrived)
    : shared_(std::make_shared<Shared>(path, maximum, std::move(arrived))) {
  feedThreads().start([shared = shared_] { shared->decode(); });
}

PictureFeed::~PictureFeed() {
  shared_->announce.silence();
  const std::lock_guard lock(shared_->mutex);
  shared_->stop.request_stop();
  shared_->changed.notify_all();
}

void PictureFeed::seek(double seconds) {
  const std::lock_guard lock(shared_->mutex);
  if (shared_->state != FeedState::failed) shared_->goTo(seconds);
}

void PictureFeed::resize(QSize maximum, double seconds) {
  const std::lock_guard lock(shared_->mutex);
  if (shared_->maximum == maximum || shared_->state == FeedState::failed) return;
  shared_->maximum = maximum;
  shared_->goTo(seconds);
}

std::optional<ClipFrame> PictureFeed::takeDue(double seconds) {
  constexpr double rounding = 1e-6;
  const std::lock_guard lock(shared_->mutex);
  std::optional<ClipFrame> due;
  while (!shared_->frames.empty() && shared_->frames.front().seconds <= seconds + rounding) {
    due = std::move(shared_->frames.front());
    shared_->frames.pop_front();
  }
  const bool late = due && shared_->frames.empty() && due->seconds < seconds - kHopelesslyLate;
  // A decoder that cannot keep up goes on where it is needed instead of falling behind for good.
  if (late && shared_->state == FeedState::ready) shared_->goTo(seconds);
  if (due) shared_->changed.notify_all();
  return due;
}

std::optional<ClipFrame> PictureFeed::takeNext() {
  const std::lock_guard lock(shared_->mutex);
  if (shared_->frames.empty()) return std::nullopt;
  ClipFrame frame = std::move(shared_->frames.front());
  shared_->frames.pop_front();
  shared_->changed.notify_all();
  return frame;
}

FeedState PictureFeed::state() const {
  const std::lock_guard lock(shared_->mutex);
  return shared_->state;
}

std::optional<double> PictureFeed::reach() const {
  const std::lock_guard lock(shared_->mutex);
  return shared_->reach;
}

bool PictureFeed::isFull() const {
  const std::lock_guard lock(shared_->mutex);
  return shared_->full() || shared_->state == FeedState::ended || shared_->state == FeedState::failed;
}

// SoundFeed

struct SoundFeed::Shared {
  Shared(QString file, std::function<void()> arrived) : path(std::move(file)), announce(std::move(arrived)) {}

  size_t waiting() const { return samples.size() / SoundOutput::channels; }
  void decode();
  void add(int decodedPlace, std::span<const float> more);
  void end(int decodedPlace, FeedState how);

  const QString path;
  std::stop_source stop;
  std::mutex mutex;
  std::condition_variable changed;
  int place = 0;
  double seconds = 0;  // where the first waiting sample stands
  std::deque<float> samples;
  FeedState state = FeedState::filling;
  Announcement announce;
};

void SoundFeed::Shared::decode() {
  for (int decoded = -1;;) {
    SoundRange range{.samplesPerSecond = SoundOutput::samplesPerSecond, .channels = SoundOutput::channels};
    {
      std::unique_lock lock(mutex);
      changed.wait(lock, [&] { return stop.stop_requested() || decoded != place; });
      if (stop.stop_requested()) return;
      decoded = place;
      range.fromSeconds = seconds;
    }
    try {
      readSound(
          path, range, [&](std::span<const float> more) { add(decoded, more); }, stop.get_token());
      end(decoded, FeedState::ended);
    } catch (const PlaceLeft&) {
    } catch (const Cancelled&) {
      return;
    } catch (...) {
      end(decoded, FeedState::failed);
    }
  }
}

void SoundFeed::Shared::add(int decodedPlace, std::span<const float> more) {
  bool first = false;
  {
    std::unique_lock lock(mutex);
    changed.wait(lock, [&] { return stop.stop_requested() || decodedPlace != place || waiting() < kMostSamples; });
    throwIfStopped(stop.get_token());
    if (decodedPlace != place) throw PlaceLeft();
    samples.insert(samples.end(), more.begin(), more.end());
    first = std::exchange(state, FeedState::ready) == FeedState::filling;
  }
  if (first) announce();
}

void SoundFeed::Shared::end(int decodedPlace, FeedState how) {
  {
    const std::lock_guard lock(mutex);
    if (decodedPlace != place) return;
    state = how;
  }
  announce();
}

SoundFeed::SoundFeed(const QString& path, std::function<void()> arrived)
    : shared_(std::make_shared<Shared>(path, std::move(arrived))) {
  feedThreads().start([shared = shared_] { shared->decode(); });
}

SoundFeed::~SoundFeed() {
  shared_->announce.silence();
  const std::lock_guard lock(shared_->mutex);
  shared_->stop.request_stop();
  shared_->changed.notify_all();
}

void SoundFeed::seek(double seconds) {
  const std::lock_guard lock(shared_->mutex);
  ++shared_->place;
  shared_->seconds = seconds;
  shared_->samples.clear();
  shared_->state = FeedState::filling;
  shared_->changed.notify_all();
}

SoundFeed::Piece SoundFeed::read(std::span<float> samples) {
  const std::lock_guard lock(shared_->mutex);
  const size_t count = std::min(samples.size() / SoundOutput::channels, shared_->waiting());
  const auto end = shared_->samples.begin() + std::ptrdiff_t(count * SoundOutput::channels);
  std::copy(shared_->samples.begin(), end, samples.begin());
  shared_->samples.erase(shared_->samples.begin(), end);
  const Piece piece{count, shared_->seconds,
                    shared_->samples.empty() &&
                        (shared_->state == FeedState::ended || shared_->state == FeedState::failed)};
  shared_->seconds += double(count) / SoundOutput::samplesPerSecond;
  shared_->changed.notify_all();
  return piece;
}

FeedState SoundFeed::state() const {
  const std::lock_guard lock(shared_->mutex);
  return shared_->state;
}

bool SoundFeed::isFull() const {
  const std::lock_guard lock(shared_->mutex);
  return shared_->waiting() >= kMostSamples || shared_->state == FeedState::ended ||
         shared_->state == FeedState::failed;
}

}  // namespace sorvan::platform
