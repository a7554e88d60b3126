// Tasks: coroutines on the caller's event loop, and work on the pool.
//
// The rules: a coroutine takes its parameters by value and a std::stop_token last; after each co_await it tests the
// token, except once something was paid for; a task is awaited or given to a TaskScope, never dropped.
#pragma once

#include <exception>
#include <functional>
#include <optional>
#include <stop_token>
#include <type_traits>
#include <variant>

#include <QCoroTask>

#include "base/completion.h"
#include "base/sorvan_error.h"

namespace sorvan::base {

template <class T = void>
using Task = QCoro::Task<T>;

// Throws Cancelled when a stop was requested.
void throwIfStopped(const std::stop_token& stop);

// Runs the function on a pool thread. It must not throw: `onPool` hands in one that catches everything.
void runOnPool(std::function<void()> work);

namespace detail {
template <class R>
struct PoolOutcome {
  using Value = std::conditional_t<std::is_void_v<R>, std::monostate, R>;
  std::optional<Value> value;
  std::exception_ptr failure;

  template <class F>
  void fill(F& work) {
    try {
      if constexpr (std::is_void_v<R>) {
        work();
        value.emplace();
      } else {
        value.emplace(work());
      }
    } catch (...) {
      failure = std::current_exception();
    }
  }
};
}  // namespace detail

// Runs a plain function on values on the pool and resumes on the caller's thread with its result, or throws there what
// it threw. The function owns what it captures, touches no object of another thread, and tests the token itself if it
// runs long. A stop requested before it starts or while it runs throws Cancelled after it ended: its result is dropped,
// so hand in no token for work whose effects must be known.
template <class F, class R = std::invoke_result_t<F&>>
Task<R> onPool(F work, std::stop_token stop = {}) {
  throwIfStopped(stop);
  const auto outcome = std::make_shared<detail::PoolOutcome<R>>();
  // The work is destroyed on the pool before the caller resumes, so what it captured is free again by then.
  const auto shared = std::make_shared<std::optional<F>>(std::move(work));
  Completion done;
  runOnPool([outcome, shared, done] {
    outcome->fill(**shared);
    shared->reset();
    done.finish();
  });
  co_await done;
  if (outcome->failure) std::rethrow_exception(std::exchange(outcome->failure, nullptr));
  throwIfStopped(stop);
  if constexpr (!std::is_void_v<R>) co_return std::move(*outcome->value);
}

// Resumes from the event loop: everything that is already posted runs first.
Task<> yieldToLoop();

}  // namespace sorvan::base
