#include "base/side_by_side.h"

#include <QSemaphore>
#include <QThread>
#include <QThreadPool>

#include <exception>
#include <memory>
#include <mutex>

namespace sorvan::base {

namespace {

class Workers {
 public:
  explicit Workers(const std::function<void()>& work) : worker(work) {}

  void run() noexcept {
    try {
      worker();
    } catch (...) {
      const std::scoped_lock guard(mutex);
      if (!failure) failure = std::current_exception();
    }
  }
  QSemaphore ended;
  std::exception_ptr failure;

 private:
  const std::function<void()>& worker;
  std::mutex mutex;
};

}  // namespace

void sideBySide(const std::function<void()>& worker) {
  // Shared, because a helper may still be leaving `release` when this thread goes on.
  const auto workers = std::make_shared<Workers>(worker);
  const auto help = [workers] {
    workers->run();
    workers->ended.release();
  };
  int helpers = 0;
  while (helpers + 1 < QThread::idealThreadCount() && QThreadPool::globalInstance()->tryStart(help)) ++helpers;
  workers->run();
  workers->ended.acquire(helpers);
  if (workers->failure) std::rethrow_exception(workers->failure);
}

}  // namespace sorvan::base
