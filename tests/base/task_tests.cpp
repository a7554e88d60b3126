#include "base/task.h"

#include <gtest/gtest.h>

#include <thread>

#include "base/clock.h"
#include "base/task_scope.h"
#include "support/fake_clock.h"
#include "support/run_task.h"
#include "support/text_printers.h"

namespace sorvan::test {
using namespace sorvan::base;
using std::chrono::milliseconds;

static Task<int> failAfterYield() {
  co_await yieldToLoop();
  throw SorvanError(QStringLiteral("It broke."));
}

static Task<> sleepOn(const Clock& clock, milliseconds duration, std::stop_token stop, int* woken) {
  co_await clock.sleep(duration, stop);
  ++*woken;
}

TEST(Task, AThrowingTaskThrowsWhereItIsAwaited) { EXPECT_THROW(runTask(failAfterYield()), SorvanError); }

TEST(Pool, ReturnsResultsOnTheCallersThread) {
  const auto work = []() -> Task<bool> {
    const auto before = std::this_thread::get_id();
    const auto inside = co_await onPool([] { return std::this_thread::get_id(); });
    co_return before != inside&& before == std::this_thread::get_id();
  };
  EXPECT_TRUE(runTask(work()));
}

TEST(Pool, PassesMoveOnlyValuesBothWays) {
  auto value = std::make_unique<int>(20);
  auto task = onPool([held = std::move(value)]() mutable { return std::make_unique<int>(*held + 1); });
  EXPECT_EQ(*runTask(std::move(task)), 21);
}

TEST(Pool, RethrowsWhatTheWorkThrows) {
  EXPECT_THROW(runTask(onPool([]() -> int { throw SorvanError(QStringLiteral("x")); })), SorvanError);
  EXPECT_THROW(runTask(onPool([] { throw std::runtime_error("x"); })), std::runtime_error);
}

TEST(Pool, BeginsNothingAfterAStop) {
  std::stop_source stop;
  stop.request_stop();
  bool ran = false;
  EXPECT_THROW(runTask(onPool([&] { ran = true; }, stop.get_token())), Cancelled);
  EXPECT_FALSE(ran);
}

TEST(Pool, DropsTheResultOfWorkThatWasStopped) {
  std::stop_source stop;
  EXPECT_THROW(runTask(onPool([stop]() mutable { return stop.request_stop(); }, stop.get_token())), Cancelled);
}

TEST(Pool, FreesTheWorkBeforeTheCallerGoesOn) {
  const auto shared = std::make_shared<int>(1);
  runTask(onPool([held = shared] { return *held; }));
  EXPECT_EQ(shared.use_count(), 1);
}

TEST(Completion, ResumesOnlyFromTheEventLoop) {
  Completion event;
  bool resumed = false;
  const auto wait = [](Completion awaited, bool* done) -> Task<> {
    co_await awaited;
    *done = true;
  };
  const auto task = wait(event, &resumed);
  event.finish();
  EXPECT_FALSE(resumed);
  runPosted();
  EXPECT_TRUE(resumed);
}

TEST(Completion, ResumesEveryWaiterAndLateOnesAtOnce) {
  Completion event;
  int resumed = 0;
  const auto wait = [](Completion awaited, int* count) -> Task<> {
    co_await awaited;
    ++*count;
  };
  const auto first = wait(event, &resumed);
  const auto second = wait(event, &resumed);
  std::thread([event] { event.finish(); }).join();
  runPosted();
  EXPECT_EQ(resumed, 2);
  const auto late = wait(event, &resumed);
  EXPECT_EQ(resumed, 3);
}

TEST(SystemClock, SleepsAndIsCancelledAtOnce) {
  const SystemClock clock;
  runTask(clock.sleep(milliseconds(1), {}));
  std::stop_source stop;
  auto sleeping = clock.sleep(std::chrono::hours(1), stop.get_token());
  stop.request_stop();
  EXPECT_THROW(runTask(std::move(sleeping)), Cancelled);
}

TEST(SystemClock, TellsTheTimeOfDay) {
  EXPECT_NEAR(SystemClock().now().unixSeconds(), static_cast<double>(QDateTime::currentSecsSinceEpoch()), 5);
}

TEST(FakeClock, WakesSleepersInTheirOrder) {
  FakeClock clock;
  int first = 0;
  int second = 0;
  const auto long_ = sleepOn(clock, milliseconds(2000), {}, &second);
  const auto short_ = sleepOn(clock, milliseconds(1000), {}, &first);
  clock.advance(milliseconds(1000));
  runPosted();
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 0);
  EXPECT_EQ(clock.sleepers(), 1);
  clock.advance(milliseconds(1000));
  runPosted();
  EXPECT_EQ(second, 1);
}

TEST(TaskScope, ReportsWhatATaskThrows) {
  QStringList reports;
  TaskScope scope([&](const QString& message) { reports.append(message); });
  scope.spawn([]() -> Task<> { co_await failAfterYield(); }());
  runTask(scope.whenIdle());
  EXPECT_EQ(reports, QStringList{QStringLiteral("It broke.")});
  EXPECT_EQ(scope.running(), 0);
}

TEST(TaskScope, ReportsATaskThatThrewBeforeItsFirstPause) {
  QStringList reports;
  TaskScope scope([&](const QString& message) { reports.append(message); });
  scope.spawn([]() -> Task<> {
    throw SorvanError(QStringLiteral("At once."));
    co_return;
  }());
  EXPECT_EQ(reports, QStringList{QStringLiteral("At once.")});
}

TEST(TaskScope, DoesNotReportCancellation) {
  QStringList reports;
  const SystemClock clock;
  int woken = 0;
  TaskScope scope([&](const QString& message) { reports.append(message); });
  scope.spawn(sleepOn(clock, std::chrono::hours(1), scope.token(), &woken));
  EXPECT_EQ(scope.running(), 1);
  runTask(scope.drain());
  EXPECT_EQ(reports, QStringList());
  EXPECT_EQ(woken, 0);
}

TEST(TaskScope, DrainWaitsForTasksThatIgnoreTheStop) {
  FakeClock clock;
  int woken = 0;
  TaskScope scope;
  scope.spawn(sleepOn(clock, milliseconds(10), {}, &woken));
  const auto drained = scope.drain();
  runPosted();
  EXPECT_FALSE(drained.isReady());
  clock.advance(milliseconds(10));
  runPosted();
  EXPECT_TRUE(drained.isReady());
  EXPECT_EQ(woken, 1);
}

TEST(TaskScope, BeginsLaterTasksOutsideTheCaller) {
  TaskScope scope;
  bool begun = false;
  const auto task = [](bool* flag) -> Task<> {
    *flag = true;
    co_return;
  };
  scope.spawnLater([&] { return task(&begun); });
  EXPECT_FALSE(begun);
  EXPECT_EQ(scope.running(), 1);
  runTask(scope.whenIdle());
  EXPECT_TRUE(begun);
}

TEST(TaskScope, BeginsNothingLaterAfterAStop) {
  TaskScope scope;
  bool begun = false;
  const auto task = [](bool* flag) -> Task<> {
    *flag = true;
    co_return;
  };
  scope.spawnLater([&] { return task(&begun); });
  runTask(scope.drain());
  EXPECT_FALSE(begun);
}

TEST(TaskScope, ATaskMayOutliveItsScope) {
  FakeClock clock;
  int woken = 0;
  {
    TaskScope scope;
    scope.spawn(sleepOn(clock, milliseconds(10), {}, &woken));
  }
  clock.advance(milliseconds(10));
  runPosted();
  EXPECT_EQ(woken, 1);
}

}  // namespace sorvan::test
