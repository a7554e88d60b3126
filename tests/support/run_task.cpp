#include "support/run_task.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

namespace sorvan::test {

void runUntil(const std::function<bool()>& done, std::chrono::milliseconds limit) {
  QElapsedTimer elapsed;
  elapsed.start();
  QTimer wake;  // The loop must look at the clock even when nothing happens.
  wake.start(50);
  while (!done()) {
    if (elapsed.hasExpired(limit.count())) throw std::runtime_error("what the test waits for did not happen in time");
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

void runPosted() {
  for (int round = 0; round < 20; ++round) {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

}  // namespace sorvan::test
