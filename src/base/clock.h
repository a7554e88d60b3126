// Time as something that can be handed in: tests use a clock of their own.
#pragma once

#include <chrono>
#include <stop_token>

#include "base/instant.h"
#include "base/task.h"

namespace sorvan::base {

// Thread: `now` any; `sleep` on a thread with an event loop.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual Instant now() const = 0;
  // Resumes after the duration on a monotonic clock. Throws Cancelled as soon as a stop is requested.
  virtual Task<> sleep(std::chrono::milliseconds duration, std::stop_token stop) const = 0;
};

class SystemClock final : public Clock {
 public:
  Instant now() const override;
  Task<> sleep(std::chrono::milliseconds duration, std::stop_token stop) const override;
};

}  // namespace sorvan::base
