#include "base/side_by_side.h"

#include <gtest/gtest.h>

#include <QSemaphore>
#include <QThread>
#include <QThreadPool>

#include <atomic>
#include <mutex>
#include <set>
#include <stdexcept>
#include <vector>

namespace sorvan::base {
namespace {

constexpr int pieces = 10'000;

std::vector<int> doneOnce() { return std::vector<int>(pieces, 1); }

std::vector<int> countPieces() {
  std::vector<int> times(pieces, 0);
  std::atomic<int> next = 0;
  sideBySide([&] {
    for (int piece; (piece = next.fetch_add(1)) < pieces;) ++times[size_t(piece)];
  });
  return times;
}

TEST(SideBySide, EveryPieceIsDoneOnce) { EXPECT_EQ(countPieces(), doneOnce()); }

TEST(SideBySide, NeverMoreWorkersThanProcessorsAndEachOnAThreadOfItsOwn) {
  std::mutex mutex;
  std::set<QThread*> threads;
  int workers = 0;
  sideBySide([&] {
    const std::scoped_lock guard(mutex);
    ++workers;
    threads.insert(QThread::currentThread());
  });
  EXPECT_TRUE(threads.contains(QThread::currentThread()));
  EXPECT_GE(workers, 1);
  EXPECT_LE(workers, QThread::idealThreadCount());
}

TEST(SideBySide, APoolWithoutAFreeThreadLeavesAllToTheCaller) {
  QSemaphore release;
  auto& pool = *QThreadPool::globalInstance();
  int busy = 0;
  while (pool.tryStart([&] { release.acquire(); })) ++busy;
  EXPECT_EQ(countPieces(), doneOnce());
  release.release(busy);
  pool.waitForDone();
}

TEST(SideBySide, AFailureOfAnyWorkerIsThrownAfterAllHaveEnded) {
  std::atomic<int> running = 0;
  std::atomic<int> next = 0;
  const auto worker = [&] {
    ++running;
    for (int piece; (piece = next.fetch_add(1)) < pieces;)
      if (piece == pieces / 2) {
        --running;
        throw std::runtime_error("the middle");
      }
    --running;
  };
  EXPECT_THROW(sideBySide(worker), std::runtime_error);
  EXPECT_EQ(running, 0);
}

}  // namespace
}  // namespace sorvan::base
