#include "base/completion.h"

#include <utility>
#include <vector>

#include <QAbstractEventDispatcher>
#include <QMetaObject>

#include "base/invariant.h"

namespace sorvan::base {

struct Completion::State {
  struct Waiting {
    std::coroutine_handle<> coroutine;
    // The dispatcher of the awaiting thread: it lives as long as that thread's event loop can run anything.
    QAbstractEventDispatcher* home;
  };
  std::mutex lock;
  bool finished = false;
  std::vector<Waiting> waiting;
};

Completion::Completion() : state(std::make_shared<State>()) {}

void Completion::finish() const {
  const std::lock_guard held(state->lock);
  if (std::exchange(state->finished, true)) return;
  for (const auto& [coroutine, home] : std::exchange(state->waiting, {}))
    QMetaObject::invokeMethod(
        home, [resumed = coroutine] { resumed.resume(); }, Qt::QueuedConnection);
}

bool Completion::isFinished() const {
  const std::lock_guard held(state->lock);
  return state->finished;
}

bool Completion::Awaiter::await_ready() const {
  const std::lock_guard held(state->lock);
  return state->finished;
}

bool Completion::Awaiter::await_suspend(std::coroutine_handle<> waiting) const {
  const std::lock_guard held(state->lock);
  if (state->finished) return false;
  QAbstractEventDispatcher* home = QAbstractEventDispatcher::instance();
  invariant(home != nullptr, "a task awaits on a thread with an event loop");
  state->waiting.push_back({waiting, home});
  return true;
}

}  // namespace sorvan::base
