// A one-shot event that coroutines await and any thread may finish.
#pragma once

#include <coroutine>
#include <memory>
#include <mutex>

class QObject;

namespace sorvan::base {

// Copies share the event. An awaiting coroutine is always resumed from the event loop of the thread that awaits, never
// inside `finish`: so the sender that finishes it may be destroyed by what runs next.
// Thread: `finish` any; awaiting needs a thread with an event loop. One that is never finished never resumes anybody.
class Completion {
 public:
  Completion();

  // Does nothing the second time.
  void finish() const;
  bool isFinished() const;

  struct State;
  class Awaiter {
   public:
    explicit Awaiter(std::shared_ptr<State> shared) : state(std::move(shared)) {}
    bool await_ready() const;
    bool await_suspend(std::coroutine_handle<> waiting) const;
    void await_resume() const {}

   private:
    std::shared_ptr<State> state;
  };
  Awaiter operator co_await() const { return Awaiter(state); }

 private:
  std::shared_ptr<State> state;
};

}  // namespace sorvan::base
