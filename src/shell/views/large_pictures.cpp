#include "shell/views/large_pictures.h"

#include <cmath>

#include "base/sorvan_error.h"
#include "platform/pictures.h"

namespace sorvan::views {

namespace {

constexpr qint64 kMostPixels = 64'000'000;
constexpr int kThreads = 2;  // large pictures compete for memory, not only for cores

int longestEdgeFor(QSize size, qint64 mostPixels) {
  const double pixels = static_cast<double>(size.width()) * size.height();
  const int longest = std::max(size.width(), size.height());
  if (pixels <= static_cast<double>(mostPixels)) return longest;
  return static_cast<int>(longest * std::sqrt(static_cast<double>(mostPixels) / pixels));
}

}  // namespace

LargePictures::LargePictures(QObject* parent) : QObject(parent) { pool_.setMaxThreadCount(kThreads); }

LargePictures::~LargePictures() {
  pool_.clear();
  pool_.waitForDone();
}

LargePictures::Kept LargePictures::decode(const QString& path, qint64 mostPixels) {
  try {
    const auto facts = probePicture(path);
    if (!facts) return {};
    Kept kept;
    kept.size = facts->size;
    kept.full = decodeWithin(path, longestEdgeFor(facts->size, mostPixels));
    const bool large = std::max(kept.full.width(), kept.full.height()) > 2 * enoughFor;
    kept.small =
        large ? kept.full.scaled(2 * enoughFor, 2 * enoughFor, Qt::KeepAspectRatio, Qt::SmoothTransformation) : kept.full;
    return kept;
  } catch (const SorvanError&) {
    return {};
  }
}

void LargePictures::want(const QStringList& paths) {
  const qint64 share = kMostPixels / std::max<qint64>(1, paths.size());
  // Fewer pictures may each be larger; those that are there stay as they are until another set is wanted.
  if (share < share_ || share_ == 0) {
    share_ = share;
    ++asking_;
    kept_.clear();
    asked_.clear();
    pool_.clear();
  }
  kept_.removeIf([&](const auto& entry) { return !paths.contains(entry.key()); });
  asked_.removeIf([&](const QString& path) { return !paths.contains(path); });
  if (kept_.isEmpty()) share_ = share;
  for (const QString& path : paths) {
    if (kept_.contains(path) || asked_.contains(path)) continue;
    asked_.insert(path);
    pool_.start([this, path, asking = asking_, most = share_] {
      const Kept kept = decode(path, most);
      QMetaObject::invokeMethod(
          this, [this, asking, path, kept] { take(asking, path, kept); }, Qt::QueuedConnection);
    });
  }
}

void LargePictures::take(int asking, const QString& path, const Kept& kept) {
  if (asking != asking_ || !asked_.remove(path)) return;
  kept_.insert(path, kept);
  Q_EMIT arrived(path);
}

}  // namespace sorvan::views
