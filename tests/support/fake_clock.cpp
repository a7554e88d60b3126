#include "support/fake_clock.h"

namespace sorvan::test {
using namespace sorvan::base;

static double inSeconds(std::chrono::milliseconds duration) { return std::chrono::duration<double>(duration).count(); }

Task<> FakeClock::sleep(std::chrono::milliseconds duration, std::stop_token stop) const {
  throwIfStopped(stop);
  const auto shared = state;
  shared->slept.push_back(duration);
  if (shared->passing) {
    shared->seconds += inSeconds(duration);
    shared->wakeDue();
    co_await yieldToLoop();
    throwIfStopped(stop);
    co_return;
  }
  Completion woken;
  shared->sleeping.push_back({shared->seconds + inSeconds(duration), woken});
  std::stop_callback onStop(stop, [woken] { woken.finish(); });
  co_await woken;
  std::erase_if(shared->sleeping, [](const Sleeper& sleeper) { return sleeper.woken.isFinished(); });
  throwIfStopped(stop);
}

void FakeClock::State::wakeDue() {
  std::vector<Sleeper> due;
  for (const Sleeper& sleeper : sleeping) {
    if (sleeper.due <= seconds + 1e-9) due.push_back(sleeper);
  }
  std::stable_sort(due.begin(), due.end(), [](const Sleeper& a, const Sleeper& b) { return a.due < b.due; });
  std::erase_if(sleeping, [this](const Sleeper& sleeper) { return sleeper.due <= seconds + 1e-9; });
  for (const Sleeper& sleeper : due) sleeper.woken.finish();
}

void FakeClock::advance(std::chrono::milliseconds duration) {
  state->seconds += inSeconds(duration);
  state->wakeDue();
}

}  // namespace sorvan::test
