// A clock that stands still until the test moves it.
#pragma once

#include <vector>

#include "base/clock.h"

namespace sorvan::test {

class FakeClock final : public sorvan::base::Clock {
 public:
  sorvan::base::Instant now() const override { return {state->seconds}; }
  sorvan::base::Task<> sleep(std::chrono::milliseconds duration, std::stop_token stop) const override;

  // Moves the clock and wakes, in their order, the sleepers whose time has come. Run the event loop afterwards.
  void advance(std::chrono::milliseconds duration);
  // From now on each sleep moves the clock by itself and ends at once: a polling loop runs without waiting.
  void passSleeps(bool pass = true) { state->passing = pass; }
  int sleepers() const { return static_cast<int>(state->sleeping.size()); }
  // What was slept so far, in order.
  const std::vector<std::chrono::milliseconds>& slept() const { return state->slept; }

 private:
  struct Sleeper {
    double due;
    sorvan::base::Completion woken;
  };
  struct State {
    double seconds = 800000000;
    bool passing = false;
    std::vector<Sleeper> sleeping;
    std::vector<std::chrono::milliseconds> slept;
    void wakeDue();
  };
  std::shared_ptr<State> state = std::make_shared<State>();
};

}  // namespace sorvan::test
