#include "generation/cancel_watch.h"

#include <cmath>

#include "generation/credit_operations.h"
#include "generation/salvage.h"

namespace sorvan::generation {
namespace {

/// One cancellation, as values: the job may be tried again and cancelled again while its watch sleeps.
struct Watched {
  QUuid job;
  QString operation;
  std::uint64_t opening;
  std::optional<Instant> endedAt;
};

/// Whether the job is still the one that was cancelled. False also while a task of it exists.
bool stillStands(const JobQueue& queue, const Watched& watched) {
  const LibraryStore& store = queue.store();
  if (store.opening() != watched.opening || queue.isRunning(watched.job)) return false;
  const JobRef job = store.job(watched.job);
  return job && job->status == jobStatus::cancelled && job->finishedAt == watched.endedAt;
}

/// 2. The job's detail, which is worth a save but no failure, and a look at the balance.
void tell(JobQueue& queue, const Watched& watched, const QString& state) {
  LibraryStore& store = queue.store();
  store.context().edit(store.job(watched.job)).detail = detailOfCancelled(state);
  try {
    store.save(LibraryTables::none);
  } catch (const SorvanError&) {
    store.rollBack();
  }
  Q_EMIT queue.creditsChanged();
}

/// 3. Looks again and again while the operation goes on. Answers its last state; nothing when the job is no longer
/// the one that was cancelled.
Task<std::optional<QString>> follow(JobQueue* queue, Watched watched, QString state, std::stop_token stop) {
  const auto pause = std::chrono::milliseconds(std::llround(queue->ports().cancelWatchSeconds * 1000));
  for (int check = 0; check < cancelWatchChecks && creditsState::isGoing(state); ++check) {
    co_await queue->clock().sleep(pause, stop);
    if (!stillStands(*queue, watched)) co_return std::nullopt;
    const auto answer = co_await askState(queue, watched.operation, stop);
    if (!stillStands(*queue, watched)) co_return std::nullopt;
    if (!answer || *answer == state) continue;
    state = *answer;
    tell(*queue, watched, state);
  }
  co_return state;
}

/// Waits until the cancelled task has ended, and notes which end it was.
Task<bool> awaitEnd(JobQueue* queue, Watched* watched) {
  co_await queue->whenEnded(watched->job);
  const LibraryStore& store = queue->store();
  const JobRef job = store.opening() == watched->opening ? store.job(watched->job) : nullptr;
  if (job) watched->endedAt = job->finishedAt;
  co_return stillStands(*queue, *watched);
}

Task<> watch(JobQueue* queue, Watched watched, std::stop_token stop) {
  co_await yieldToLoop();
  // 1. The request to stop; a gateway that cannot be reached leaves the job to a later pass.
  const auto answer = co_await askToCancel(queue, watched.operation, stop);
  if (!answer) co_return;
  // The job's own task writes its end first.
  if (!co_await awaitEnd(queue, &watched)) co_return;
  if (!answer->isEmpty()) tell(*queue, watched, *answer);
  const auto last = co_await follow(queue, watched, *answer, stop);
  // 4. What was charged is fetched.
  if (last && creditsState::isComplete(*last)) co_await salvage(*queue, watched.job, stop);
}

}  // namespace

void watchCancelledOperation(JobQueue& queue, const QUuid& id) {
  const JobRef job = queue.store().job(id);
  const auto operation = job ? operationOf(*job) : std::nullopt;
  if (!operation) return;
  const Watched watched{id, *operation, queue.store().opening(), {}};
  queue.spawn(watch(&queue, watched, queue.stopToken()));
}

}  // namespace sorvan::generation
