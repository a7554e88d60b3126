// How long the main thread was away from its events.
#pragma once

#include <algorithm>

#include <QElapsedTimer>
#include <QTimer>

namespace sorvan::bench {

/// The longest that the main thread may be busy without a frame being late, in seconds.
constexpr double frame = 0.016;

/// Counts from its making on; needs an event loop.
class Stalls {
 public:
  Stalls() {
    timer_.setInterval(0);
    QObject::connect(&timer_, &QTimer::timeout, [this] {
      longest_ = std::max(longest_, since_.nsecsElapsed() / 1e9);
      since_.start();
    });
    since_.start();
    timer_.start();
  }
  /// Seconds.
  double longest() const { return longest_; }

 private:
  QTimer timer_;
  QElapsedTimer since_;
  double longest_ = 0;
};

}  // namespace sorvan::bench
