// One piece of work shared among the threads that happen to be free.
#pragma once

#include <functional>

namespace sorvan::base {

// Calls `worker` on this thread and, at the same time, once on every thread of the pool that is free right now; returns
// when all of them have ended. The workers take their pieces from something that they share, an atomic counter for one,
// until there are none: how many workers there are is nobody's business. What a worker throws is thrown here, the first
// failure of several, after all have ended. Never waits for a thread to become free, so it may be called on the pool.
void sideBySide(const std::function<void()>& worker);

}  // namespace sorvan::base
