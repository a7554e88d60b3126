#include "base/clock.h"

#include <QTimer>

namespace sorvan::base {

Instant SystemClock::now() const {
  const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
  return Instant::fromUnixSeconds(std::chrono::duration<double>(sinceEpoch).count());
}

Task<> SystemClock::sleep(std::chrono::milliseconds duration, std::stop_token stop) const {
  throwIfStopped(stop);
  Completion woken;
  QTimer timer;
  timer.setSingleShot(true);
  timer.setTimerType(Qt::PreciseTimer);
  QObject::connect(&timer, &QTimer::timeout, [woken] { woken.finish(); });
  std::stop_callback onStop(stop, [woken] { woken.finish(); });
  timer.start(std::max(duration, std::chrono::milliseconds(0)));
  co_await woken;
  throwIfStopped(stop);
}

}  // namespace sorvan::base
