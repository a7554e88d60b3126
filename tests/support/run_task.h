// Runs a task to its end on the test's event loop; what it throws, it throws here.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <stdexcept>

#include "base/task.h"

namespace sorvan::test {

// Processes events until `done` is true. Throws after the limit, so that a hanging test fails with a sentence.
void runUntil(const std::function<bool()>& done, std::chrono::milliseconds limit = std::chrono::seconds(20));
// Lets everything that is already posted run, and what that posts in turn.
void runPosted();

namespace detail {
template <class T>
sorvan::base::Task<> keep(sorvan::base::Task<T> task, std::shared_ptr<sorvan::base::detail::PoolOutcome<T>> outcome) {
  try {
    if constexpr (std::is_void_v<T>) {
      co_await task;
      outcome->value.emplace();
    } else {
      outcome->value.emplace(co_await task);
    }
  } catch (...) {
    outcome->failure = std::current_exception();
  }
}
}  // namespace detail

template <class T>
T runTask(sorvan::base::Task<T> task, std::chrono::milliseconds limit = std::chrono::seconds(20)) {
  const auto outcome = std::make_shared<sorvan::base::detail::PoolOutcome<T>>();
  const auto kept = detail::keep<T>(std::move(task), outcome);
  runUntil([&] { return kept.isReady(); }, limit);
  if (outcome->failure) std::rethrow_exception(std::exchange(outcome->failure, nullptr));
  if constexpr (!std::is_void_v<T>) return std::move(*outcome->value);
}

}  // namespace sorvan::test
