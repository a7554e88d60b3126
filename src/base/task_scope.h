// The owner of tasks that nobody awaits: it reports what they throw and waits for them at the end.
#pragma once

#include <functional>
#include <memory>
#include <stop_token>

#include <QString>

#include "base/task.h"

namespace sorvan::base {

// Thread: the one that made it. Destroying it requests a stop; tasks that still run then run to their end, and what
// they throw goes to the log. Call and await `drain` first wherever the tasks refer to objects that die with the scope.
class TaskScope {
 public:
  using Report = std::function<void(const QString& message)>;
  // `report` gets one sentence for each task that threw; Cancelled is not reported. Without it they go to the log.
  explicit TaskScope(Report report = {});
  ~TaskScope();
  TaskScope(const TaskScope&) = delete;
  TaskScope& operator=(const TaskScope&) = delete;

  // Takes over a task that has already begun.
  void spawn(Task<> task);
  // Begins the task from the event loop, so that none of its code runs inside the caller. Begins nothing after a stop.
  void spawnLater(std::function<Task<>()> begin);

  void requestStop();
  std::stop_token token() const;
  // Tasks that have not ended, those not begun included.
  int running() const;
  // Requests a stop and resumes when every task has ended.
  Task<> drain();
  // Resumes when every task has ended, without asking them to stop.
  Task<> whenIdle();

 private:
  struct State;
  static Task<> watch(std::shared_ptr<State> shared, Task<> task);
  static Task<> beginLater(std::shared_ptr<State> shared, std::function<Task<>()> begin);
  static Task<> awaitIdle(std::shared_ptr<State> shared);
  std::shared_ptr<State> state;
};

}  // namespace sorvan::base
