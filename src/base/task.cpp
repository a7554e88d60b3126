#include "base/task.h"

#include <QAbstractEventDispatcher>
#include <QThreadPool>

namespace sorvan::base {

void throwIfStopped(const std::stop_token& stop) {
  if (stop.stop_requested()) throw Cancelled();
}

void runOnPool(std::function<void()> work) { QThreadPool::globalInstance()->start(std::move(work)); }

Task<> yieldToLoop() {
  struct Yield {
    bool await_ready() const { return false; }
    void await_suspend(std::coroutine_handle<> waiting) const {
      QMetaObject::invokeMethod(
          QAbstractEventDispatcher::instance(), [waiting] { waiting.resume(); }, Qt::QueuedConnection);
    }
    void await_resume() const {}
  };
  co_await Yield{};
}

}  // namespace sorvan::base
