#include "base/task_scope.h"

#include <QDebug>

namespace sorvan::base {

struct TaskScope::State {
  Report report;
  std::stop_source stop;
  int running = 0;
  std::vector<Completion> waitingForIdle;

  void began() { ++running; }
  void ended() {
    if (--running > 0) return;
    for (const Completion& waiting : std::exchange(waitingForIdle, {})) waiting.finish();
  }
  void failed(const std::exception_ptr& failure) const {
    const QString message = describe(failure);
    if (report)
      report(message);
    else
      qWarning().noquote() << message;
  }
};

TaskScope::TaskScope(Report report) : state(std::make_shared<State>()) { state->report = std::move(report); }

TaskScope::~TaskScope() {
  state->stop.request_stop();
  state->report = {};
}

Task<> TaskScope::watch(std::shared_ptr<State> shared, Task<> task) {
  std::exception_ptr failure;
  try {
    co_await task;
  } catch (const Cancelled&) {
    // A cancelled task ended as it was asked to.
  } catch (...) {
    failure = std::current_exception();
  }
  if (failure) shared->failed(failure);
  shared->ended();
}

Task<> TaskScope::beginLater(std::shared_ptr<State> shared, std::function<Task<>()> begin) {
  co_await yieldToLoop();
  throwIfStopped(shared->stop.get_token());
  co_await begin();
}

void TaskScope::spawn(Task<> task) {
  state->began();
  watch(state, std::move(task));
}

void TaskScope::spawnLater(std::function<Task<>()> begin) { spawn(beginLater(state, std::move(begin))); }

void TaskScope::requestStop() { state->stop.request_stop(); }

std::stop_token TaskScope::token() const { return state->stop.get_token(); }

int TaskScope::running() const { return state->running; }

Task<> TaskScope::awaitIdle(std::shared_ptr<State> shared) {
  while (shared->running > 0) {
    Completion idle;
    shared->waitingForIdle.push_back(idle);
    co_await idle;
  }
}

Task<> TaskScope::drain() {
  requestStop();
  return awaitIdle(state);
}

Task<> TaskScope::whenIdle() { return awaitIdle(state); }

}  // namespace sorvan::base
