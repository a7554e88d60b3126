#include "base/completion.h"

#include <utility>

#include <QAbstractEventDispatcher>
#include <QMetaObject>

#include "base/invariant.h"

namespace sorvan::base {

struct Completion::State {
  std::mutex lock;
  bool finished = false;
  std::coroutine_handle<> waiting;
  // The dispatcher of the awaiting thread: it lives as long as that thread's event loop can run anything.
  QAbstractEventDispatcher* home = nullptr;
};

Completion::Completion() : state(std::make_shared<State>()) {}

void Completion::finish() const {
  const std::lock_guard held(state->lock);
  if (std::exchange(state->finished, true) || !state->waiting) return;
  const auto waiting = std::exchange(state->waiting, nullptr);
  QMetaObject::invokeMethod(state->home, [waiting] { waiting.resume(); }, Qt::QueuedConnection);
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
  state->home = QAbstractEventDispatcher::instance();
  invariant(state->home != nullptr, "a task awaits on a thread with an event loop");
  invariant(!state->waiting, "one coroutine awaits a completion");
  state->waiting = waiting;
  return true;
}

}  // namespace sorvan::base
